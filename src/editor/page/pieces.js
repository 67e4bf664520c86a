// The body as pieces. Each piece knows its stored text and the nodes that show it; a piece whose nodes are all there,
// in order and unchanged, goes back as it was stored.

import {BLOCK} from './constants.js';
import {newBlock} from './newblocks.js';
import {elementsIn, isBlank, isComment, isElement, isInline, isList, isVoidOfContent, withoutWrappers} from './nodes.js';
import {originalOf} from './originals.js';
import {Original} from './preserve.js';
import {Serialiser} from './serialise.js';
import {endOfText, leadingSpace, trailingSpace, withoutLineEnds} from './spaces.js';

const BREAK = '\n\n';

export class Body {
    constructor({pieces = [], isBlockEditor = false, localImages = {}} = {}) {
        this.isBlockEditor = isBlockEditor;
        this.knownStyles = new Set();
        this.loaded = new WeakSet();
        this.serialiser = new Serialiser({
            isBlockEditor, knownStyles: this.knownStyles, loaded: this.loaded, localImages: new Map(Object.entries(localImages)),
        });
        this.owners = new WeakMap(); // top-level node, to its piece
        this.forms = new WeakMap(); // top-level node, to its blog form; absent while it is dirty
        this.pieces = pieces.map(({lead, core, tail, html = core}, index) => ({
            stored: lead + core + tail, lead, core, tail, html, index, nodes: [], isChunk: false, original: null,
        }));
        this.trailing = this.pieces.length > 0 ? trailingSpace(this.pieces.at(-1).stored) : '';
        this.hasHardSpaces = this.pieces.some(piece => /\u00a0|&nbsp;|&#160;|&#xa0;/i.test(piece.stored));
        this.separator = this.commonSeparator();
        this.hasParagraphElements = false;
    }

    /** Notes the nodes that show a piece. `isChunk`: the piece is plain text, and its paragraph the editor's. */
    adopt(piece, nodes, isChunk) {
        piece.nodes = nodes;
        piece.isChunk = isChunk;
        for (const node of nodes)
            this.owners.set(node, piece);
        for (const element of elementsIn(nodes)) {
            if (!isList(element) || !element.parentNode || !isList(element.parentNode) || !piece.isShownAlready)
                this.loaded.add(element);
        }
    }

    /** The same for a piece whose nodes are in the page already; `before` is the body that they were of. */
    adoptShown(piece, nodes, before) {
        piece.isShownAlready = true; // its lists may stand as Chromium puts them
        for (const style of before.knownStyles)
            this.knownStyles.add(style);
        this.adopt(piece, nodes, !this.isBlockEditor && /^\s*<p>/.test(piece.html) && !/^\s*<p[\s>]/i.test(piece.core));
    }

    /** Elements that stand elsewhere now get comments of their own there. */
    forgetPlaces(elements) {
        elements.forEach(element => this.loaded.delete(element));
    }

    /** Call when all nodes are in the page: from here on, what differs is a change. */
    seal() {
        for (const piece of this.pieces)
            piece.original = this.originalOf(piece);
        const elements = this.pieces.filter(piece => /^<p[\s>]/i.test(piece.core)).length;
        this.hasParagraphElements = elements > this.pieces.filter(piece => piece.isChunk).length;
    }

    originalOf(piece) {
        const lineEndsMatter = piece.isChunk || /<(pre|textarea)/i.test(piece.core);
        return new Original(piece.core, this.formOfNodes(piece, piece.nodes), lineEndsMatter);
    }

    markDirty(node) {
        [node, ...withoutWrappers([node])].forEach(each => this.forms.delete(each));
    }

    compose(content) {
        return this.join(this.parts(content).filter(part => part.text !== ''));
    }

    /** The body as it is now: runs of nodes, their text, and the piece that they are of. */
    parts(content) {
        return this.group(content.childNodes).map(group => this.part(group));
    }

    /** Runs of top-level nodes that make one part of the body: those of one piece, or one new block. */
    group(nodes) {
        const groups = [];
        const seen = new Set();
        for (const node of withoutWrappers(nodes)) {
            const piece = this.owners.get(node) ?? null;
            const last = groups.at(-1);
            if (last && (piece ? last.piece === piece : isBlank(node) || this.sharesLine(node, last))) {
                last.nodes.push(node);
            } else if (last && piece && !last.piece && !seen.has(piece) && this.sharesLine(node, last)) {
                last.piece = piece;
                last.nodes.push(node);
            } else if (piece || !(isBlank(node) || isComment(node))) {
                groups.push({piece: seen.has(piece) ? null : piece, nodes: [node]});
            }
            seen.add(piece);
        }
        return groups;
    }

    sharesLine(node, group) {
        return isInline(node) && isInline(group.nodes.at(-1));
    }

    part({piece, nodes}) {
        if (!piece)
            return {piece, nodes, isNew: true, isChunk: this.isNewChunk(nodes), text: this.newText(nodes)};
        return {piece, nodes, isNew: false, isChunk: piece.isChunk, text: this.pieceText(piece, nodes)};
    }

    pieceText(piece, nodes) {
        const form = this.formOfNodes(piece, nodes);
        if (form === piece.original.before)
            return piece.stored;
        if (isVoidOfContent(nodes))
            return '';
        if (piece.lastForm !== form) {
            piece.lastForm = form;
            piece.lastText = piece.lead + piece.original.applyTo(form) + piece.tail;
        }
        return piece.lastText;
    }

    formOfNodes(piece, nodes) {
        const text = this.withPlainSpaces(nodes.map(node => this.formOfNode(node, piece.isChunk)).join(''));
        return piece.isChunk ? withoutLineEnds(text) : text;
    }

    formOfNode(node, isChunk) {
        let form = this.forms.get(node);
        if (form === undefined) {
            form = isChunk && node.localName === 'p' ? this.chunk(node) : this.serialiser.form(node);
            this.forms.set(node, form);
        }
        return form;
    }

    /** Plain text, in which a line end is a line break. Two in a row would end the paragraph, so they stay elements. */
    chunk(paragraph) {
        const text = this.serialiser.inside(paragraph);
        return text.replace(/\n?((?:<br>)+)/g, (_, breaks) => breaks === '<br>' ? '\n' : breaks.replaceAll('<br>', '<br />'));
    }

    newText(nodes) {
        return isVoidOfContent(nodes) ? '' : this.copiedText(nodes) ?? this.withoutBrowsersSpaces(this.newMarkup(nodes));
    }

    /** A copy of a piece, in the words of that piece. */
    copiedText([node]) {
        const copied = isElement(node) ? originalOf(node, BLOCK) : undefined;
        if (!copied || copied.isBlockEditor !== this.isBlockEditor)
            return null;
        return copied.lead + copied.original.applyTo(this.serialiser.form(node)) + copied.tail.trimEnd();
    }

    /** What a copy of this top-level node has to know to come back as this piece; null when it is plain text. */
    pieceForCopy(node) {
        const piece = this.owners.get(node);
        const isWhole = piece && isElement(node) && !piece.isChunk && piece.nodes.filter(each => !isBlank(each)).length === 1;
        if (!isWhole)
            return null;
        return {lead: piece.lead, tail: piece.tail, original: piece.original, isBlockEditor: this.isBlockEditor};
    }

    /** The browser keeps a space visible by making it a hard one. Where no one wrote hard spaces, all are of that kind. */
    withoutBrowsersSpaces(html) {
        if (this.hasHardSpaces)
            return html;
        return this.withPlainSpaces(html.replace(/(^|<(?:p|li|h\d|blockquote|td|th)\b[^<>]*>)(?:&nbsp;| )(?=[^<\s])/g, '$1'));
    }

    withPlainSpaces(html) {
        if (this.hasHardSpaces || !html.includes('&nbsp;'))
            return html;
        return html.replace(/(?<![\s>]|&nbsp;)&nbsp;(?!\s|&nbsp;)|(?<=>)&nbsp;(?=[^\s<&])/g, ' ');
    }

    newMarkup(nodes) {
        if (this.isBlockEditor)
            return newBlock(this.serialiser, nodes);
        const [node] = nodes;
        if (!this.isNewChunk(nodes))
            return nodes.map(each => this.serialiser.form(each)).join('');
        return nodes.length === 1 && /^(p|div)$/.test(node.localName)
            ? this.chunk(node) : this.serialiser.joined(nodes, true);
    }

    /** New paragraphs of a loose body are plain text, unless the body has its paragraphs as elements. */
    isNewChunk(nodes) {
        const [node] = nodes;
        if (this.isBlockEditor || !(isInline(node) || /^(p|div)$/.test(node.localName)))
            return false;
        if (isInline(node))
            return true;
        return !this.hasParagraphElements && !node.getAttribute('class') && !node.querySelector?.('p,div,ul,ol,table,h1,h2,h3');
    }

    join(parts) {
        const texts = []; // one by one, so that a cut at the end does not copy the whole
        const cutEnd = () => {
            const text = texts.pop();
            texts.push(text.slice(0, endOfText(text)));
        };
        parts.forEach((part, n) => {
            const before = parts[n - 1];
            const gap = before && !this.areNeighbours(before, part) ? this.breakBetween(before, part) : null;
            if (gap !== null) {
                cutEnd();
                texts.push(gap);
            }
            texts.push(part.text);
        });
        const last = parts.at(-1);
        if (last && last.piece !== this.pieces.at(-1)) {
            cutEnd();
            texts.push(this.trailing);
        }
        return texts.join('');
    }

    areNeighbours(a, b) {
        return !a.isNew && !b.isNew && b.piece.index === a.piece.index + 1;
    }

    /** What has to stand between two parts in place of the space at the end of the first; null when that will do. */
    breakBetween(before, part) {
        const needsBlankLine = before.isChunk || part.isChunk;
        const gap = trailingSpace(before.text) + leadingSpace(part.text);
        const isBlankLine = /\n[ \t\r]*\n/.test(gap);
        if (isBlankLine || (!needsBlankLine && gap.includes('\n')))
            return null;
        return needsBlankLine ? BREAK : this.separator;
    }

    /** What this body has between its pieces. */
    commonSeparator() {
        const counts = new Map();
        for (const piece of this.pieces.slice(0, -1)) {
            const space = trailingSpace(piece.stored);
            counts.set(space, (counts.get(space) ?? 0) + 1);
        }
        const [most] = [...counts].sort((a, b) => b[1] - a[1]);
        return most && most[0] !== '' ? most[0] : BREAK;
    }
}
