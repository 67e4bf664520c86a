// The editor's state: the element that is edited, the model of the body in it, and the watch over changes.

import {ensureParagraph, fill} from './load.js';

export class Editor {
    /** @param report is called with the blog's form after each change */
    constructor(content, report) {
        this.content = content;
        this.report = report;
        this.observer = new MutationObserver(records => this.didChange(records));
        this.body = null;
        this.lastReport = '';
    }

    load(data) {
        this.content.replaceChildren();
        this.renewContent();
        this.observer.disconnect();
        this.body = fill(this.content, data);
        this.lastReport = this.body.compose(this.content);
        this.showPlaceholder();
        this.observe();
        window.scrollTo(0, 0);
    }

    /** With a new element the browser forgets its undo history. */
    cleanUndoStack() {
        this.note(this.observer.takeRecords());
        this.renewContent();
        this.observe();
    }

    renewContent() {
        const fresh = this.content.cloneNode(false);
        const hadFocus = document.activeElement === this.content;
        fresh.append(...this.content.childNodes);
        this.content.replaceWith(fresh);
        this.content = fresh;
        if (hadFocus)
            fresh.focus();
    }

    observe() {
        this.observer.disconnect();
        this.observer.observe(this.content, {childList: true, characterData: true, attributes: true, subtree: true});
    }

    /** The blog's form of what is in the page now. */
    text() {
        this.note(this.observer.takeRecords());
        return this.body.compose(this.content);
    }

    didChange(records) {
        this.note(records);
        this.keepParagraph();
        const text = this.text();
        this.showPlaceholder();
        if (text === this.lastReport)
            return;
        this.lastReport = text;
        this.report(text);
    }

    note(records) {
        for (const {target} of records) {
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
        const isEmpty = !second && this.content.textContent === '' && first?.localName === 'p'
            && (first.children.length === 0 || (first.children.length === 1 && first.firstChild.localName === 'br'));
        this.content.classList.toggle('is-empty', isEmpty);
    }
}
