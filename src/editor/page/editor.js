// The editor's state: the element that is edited, the model of the body in it, and the watch over changes.

import {match} from './diff.js';
import {ensureEdges, ensureParagraph, fragmentOf, sourceBox} from './load.js';
import {forgetOriginals} from './originals.js';
import {Body} from './pieces.js';
import {keepSelection} from './selection.js';

const QUICK_MS = 8; // a report that takes no longer goes at once
const REST = 8; // times as long as it took, a slow one waits before the next
const LONGEST_REST_MS = 500; // what is typed meanwhile would be lost with the program
const LONG = 2000; // pieces, from where on those out of sight are not laid out

export class Editor {
    /** @param report is called with the blog's form after each change */
    constructor(content, report) {
        this.content = content;
        this.report = report;
        this.observer = new MutationObserver(records => this.didChange(records));
        this.body = new Body();
        this.composed = null; // the body's text; null once something has changed
        this.lastReport = '';
        this.reportTimer = 0;
        this.isShownAsSource = false;
    }

    /** @param data.isSamePost what of the content is there already stays, with cursor, undo and place */
    load(data) {
        this.tell(); // what there is to say about the content before
        clearTimeout(this.reportTimer);
        this.reportTimer = 0;
        this.observer.disconnect();
        if (!data.isSamePost)
            this.fill(data);
        else if (data.isTooLarge || this.isShownAsSource || !this.refresh(data))
            this.fillAgain(data);
        this.body.seal();
        this.composed = null;
        this.lastReport = this.text();
        this.showPlaceholder();
        this.observe();
    }

    fill(data) {
        forgetOriginals();
        this.content.replaceChildren();
        this.renewContent();
        this.isShownAsSource = Boolean(data.isTooLarge);
        const nodes = this.isShownAsSource ? this.sourceOf(data) : this.fragmentOfAll(data);
        this.content.contentEditable = String(!this.isShownAsSource);
        this.content.classList.toggle('is-long', this.body.pieces.length > LONG);
        this.content.append(nodes);
        ensureParagraph(this.content);
        ensureEdges(this.content);
        window.scrollTo(0, 0);
        this.content.getBoundingClientRect(); // the layout belongs to the time that loading takes
    }

    fillAgain(data) {
        const place = window.scrollY;
        keepSelection(this, () => this.fill(data));
        window.scrollTo(0, place);
    }

    fragmentOfAll(data) {
        this.body = new Body(data);
        const fragment = document.createDocumentFragment();
        for (const piece of this.body.pieces)
            fragment.append(fragmentOf(piece, this.body, data));
        return fragment;
    }

    sourceOf(data) {
        const stored = data.pieces.map(({lead, core, tail}) => lead + core + tail).join('');
        this.body = new Body({...data, pieces: [{lead: '', core: stored, tail: '', html: ''}]});
        return sourceBox(stored, this.body);
    }

    /** Takes a body of the same post: pieces that say what the page has keep their nodes. */
    refresh(data) {
        const before = this.body;
        const parts = before.parts(this.content).filter(part => part.text !== '');
        const body = new Body(data);
        const kept = match(parts.map(part => part.text.trim()), body.pieces.map(piece => piece.stored.trim()));
        const isAllKept = kept.length === parts.length && kept.length === body.pieces.length;
        // What an editing command has wrapped into one element has no place beside it for what is new.
        const isWrapped = parts.some(part => part.nodes.some(node => node.parentNode !== this.content));
        if (!isAllKept && (kept.length === 0 || isWrapped))
            return false;
        const pairs = new Map(kept.map(([i, j]) => [j, parts[i].nodes]));
        const change = () => {
            const staying = new Set([...pairs.values()].flat());
            for (const part of parts)
                part.nodes.filter(node => !staying.has(node)).forEach(node => node.remove());
            let last = null;
            for (const piece of body.pieces) {
                const nodes = pairs.get(piece.index);
                if (nodes)
                    body.adoptShown(piece, nodes, before);
                else if (last)
                    last.after(fragmentOf(piece, body, data));
                else
                    this.content.prepend(fragmentOf(piece, body, data));
                last = this.topLevel(piece.nodes.at(-1)) ?? last;
            }
        };
        if (isAllKept)
            change();
        else
            keepSelection(this, () => { change(); this.renewContent(); }); // undo knows nothing of this
        this.body = body;
        ensureParagraph(this.content);
        ensureEdges(this.content);
        return true;
    }

    /** With a new element the browser forgets its undo history. */
    cleanUndoStack() {
        this.note(this.observer.takeRecords());
        keepSelection(this, () => this.renewContent());
        this.observe();
    }

    renewContent() {
        const fresh = this.content.cloneNode(false);
        const hadFocus = document.activeElement === this.content;
        const place = window.scrollY;
        const nodes = document.createDocumentFragment();
        while (this.content.firstChild)
            nodes.append(this.content.firstChild);
        fresh.append(nodes);
        this.content.replaceWith(fresh);
        this.content = fresh;
        if (hadFocus)
            fresh.focus({preventScroll: true});
        window.scrollTo(0, place);
    }

    observe() {
        this.observer.disconnect();
        this.observer.observe(this.content, {childList: true, characterData: true, attributes: true, subtree: true});
    }

    /** The blog's form of what is in the page now. */
    text() {
        this.note(this.observer.takeRecords());
        this.composed ??= this.body.compose(this.content);
        return this.composed;
    }

    didChange(records) {
        this.note(records);
        this.keepParagraph();
        this.showPlaceholder();
        if (this.reportTimer === 0)
            this.tell();
    }

    /** A report of a long text takes its time, which the next keys need, too. */
    tell() {
        const start = performance.now();
        const text = this.text();
        if (text === this.lastReport)
            return;
        this.lastReport = text;
        this.report(text);
        const took = performance.now() - start;
        if (took > QUICK_MS)
            this.reportTimer = setTimeout(() => { this.reportTimer = 0; this.tell(); }, Math.min(took * REST, LONGEST_REST_MS));
    }

    note(records) {
        for (const {target} of records) {
            this.composed = null;
            const node = this.topLevel(target);
            if (node)
                this.body.markDirty(node);
        }
    }

    /** The child of the content that a node is in. */
    topLevel(node) {
        while (node && node.parentNode !== this.content)
            node = node.parentNode;
        return node;
    }

    keepParagraph() {
        const paragraph = ensureParagraph(this.content);
        if (paragraph)
            getSelection().collapse(paragraph, 0);
    }

    showPlaceholder() {
        const [first, second] = this.content.children;
        const isEmpty = !second && first?.localName === 'p' && this.content.textContent === ''
            && (first.children.length === 0 || (first.children.length === 1 && first.firstChild.localName === 'br'));
        this.content.classList.toggle('is-empty', isEmpty);
    }
}
