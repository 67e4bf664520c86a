// The body as pieces. Each piece knows its stored text and the nodes that show it; a piece whose nodes are all there,
// in order and unchanged, goes back as it was stored.

import {Original} from './preserve.js';
import {isBlank, isElement, isInline, isVoidOfContent, Serialiser} from './serialise.js';

const BREAK = '\n\n';
const trailingSpace = text => /[ \n\t\r\f]*$/.exec(text)[0];
const leadingSpace = text => /^[ \n\t\r\f]*/.exec(text)[0];

/** Chromium leaves the paragraph around a list that it makes of it, and undoes the list only while that is there. */
function isListWrapper(node) {
    return node.localName === 'p' && /^[uo]l$/.test(node.firstElementChild?.localName);
}

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
        this.pieces = pieces.map((piece, index) => ({...piece, stored: piece.lead + piece.core + piece.tail, index, nodes: [], isChunk: false, original: null}));
        const stored = this.pieces.map(piece => piece.stored).join('');
        this.trailing = trailingSpace(stored);
        this.hasHardSpaces = /\u00a0|&nbsp;|&#160;|&#xa0;/i.test(stored);
        this.separator = this.commonSeparator();
    }

    /** Notes the nodes that show a piece. `isChunk`: the piece is plain text, and its paragraph the editor's. */
    adopt(piece, nodes, isChunk) {
        piece.nodes = nodes;
        piece.isChunk = isChunk;
        for (const node of nodes)
            this.owners.set(node, piece);
        for (const element of nodes.filter(isElement).flatMap(node => [node, ...node.querySelectorAll('*')]))
            this.loaded.add(element);
    }

    /** Call when all nodes are in the page: from here on, what differs is a change. */
    seal() {
        for (const piece of this.pieces)
            piece.original = this.originalOf(piece);
    }

    originalOf(piece) {
        const lineEndsMatter = piece.isChunk || /<(pre|textarea)/i.test(piece.core);
        return new Original(piece.core, this.formOfNodes(piece, piece.nodes), lineEndsMatter);
    }

    markDirty(node) {
        this.forms.delete(node);
    }

    compose(content) {
        const parts = this.group(content.childNodes).map(group => this.part(group)).filter(part => part.text !== '');
        return this.join(parts);
    }

    /** Runs of top-level nodes that make one part of the body: those of one piece, or one new block. */
    group(nodes) {
        const groups = [];
        const seen = new Set();
        for (const node of [...nodes].flatMap(each => isListWrapper(each) ? [...each.childNodes] : each)) {
            const piece = this.owners.get(node) ?? null;
            const last = groups.at(-1);
            if (last && (piece ? last.piece === piece : isBlank(node) || this.sharesLine(node, last))) {
                last.nodes.push(node);
            } else if (last && piece && !last.piece && !seen.has(piece) && this.sharesLine(node, last)) {
                last.piece = piece;
                last.nodes.push(node);
            } else if (piece || !(isBlank(node) || node.nodeType === Node.COMMENT_NODE)) {
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
            return {piece, isNew: true, isChunk: this.isNewChunk(nodes), text: this.newText(nodes)};
        return {piece, isNew: false, isChunk: piece.isChunk, text: this.pieceText(piece, nodes)};
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
        const text = nodes.map(node => this.formOfNode(node, piece.isChunk)).join('');
        return piece.isChunk ? text.replace(/\n+$/, '') : text;
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
        return isVoidOfContent(nodes) ? '' : this.withoutBrowsersSpaces(this.newMarkup(nodes));
    }

    /** The browser keeps a space visible by making it a hard one. Where no one wrote hard spaces, all are of that kind. */
    withoutBrowsersSpaces(html) {
        if (this.hasHardSpaces)
            return html;
        return html.replace(/(^|<(?:p|li|h\d|blockquote|td|th)\b[^>]*>)(?:&nbsp;| )(?=[^<\s])/g, '$1')
            .replace(/(?<![\s>]|&nbsp;)&nbsp;(?!\s|&nbsp;)|(?<=>)&nbsp;(?=[^\s<&])/g, ' ');
    }

    newMarkup(nodes) {
        if (this.isBlockEditor)
            return this.serialiser.newBlock(nodes);
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

    get hasParagraphElements() {
        const elements = this.pieces.filter(piece => /^<p[\s>]/i.test(piece.core)).length;
        return elements > this.pieces.filter(piece => piece.isChunk).length;
    }

    join(parts) {
        let text = '';
        parts.forEach((part, n) => {
            const before = parts[n - 1];
            if (before && !this.areNeighbours(before, part))
                text = this.withBreak(text, part.text, before.isChunk || part.isChunk);
            text += part.text;
        });
        const last = parts.at(-1);
        if (last && last.piece !== this.pieces.at(-1))
            text = text.slice(0, text.length - trailingSpace(text).length) + this.trailing;
        return text;
    }

    areNeighbours(a, b) {
        return !a.isNew && !b.isNew && b.piece.index === a.piece.index + 1;
    }

    withBreak(text, next, needsBlankLine) {
        const gap = trailingSpace(text) + leadingSpace(next);
        const isBlankLine = /\n[ \t\r]*\n/.test(gap);
        if (isBlankLine || (!needsBlankLine && gap.includes('\n')))
            return text;
        return text.slice(0, text.length - trailingSpace(text).length) + (needsBlankLine ? BREAK : this.separator);
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
