// Tells the native side what is selected and how the text there is styled.

import {MORE} from './constants.js';

const QUIET_MS = 60;
const STATES = {
    bold: 'bold', italic: 'italic', underline: 'underline', strikethrough: 'strikeThrough',
    orderedList: 'insertOrderedList', unorderedList: 'insertUnorderedList',
};

export class SelectionWatch {
    constructor(editor, bridge) {
        this.editor = editor;
        this.bridge = bridge;
        this.hadText = false;
        this.lastStyle = '';
        this.timer = 0;
        document.addEventListener('selectionchange', () => this.didChange());
        // Commands by keyboard change the style at the cursor without moving it.
        document.addEventListener('keyup', () => this.later());
    }

    didChange() {
        remember(this.editor.content);
        this.later();
    }

    /** Once the keys rest: to ask for the style costs too much for every key press. */
    later() {
        clearTimeout(this.timer);
        this.timer = setTimeout(() => this.tell(), QUIET_MS);
    }

    tell() {
        const range = rangeIn(this.editor.content);
        if (!range)
            return;
        const style = styleOf(range);
        this.tellStyle(style);
        const text = getSelection().toString();
        if (text !== '')
            this.tellText(text, range, style);
        else if (this.hadText)
            this.bridge.selectionWasUnselected_('');
        this.hadText = text !== '';
    }

    tellText(text, range, style) {
        const {left, width, top} = range.getBoundingClientRect();
        this.bridge.selectionChangedWithText_X_Y_Bold_Italic_Underline_Strikethrough_(text,
            Math.round(left + width / 2), Math.round(top), style.bold, style.italic, style.underline, style.strikethrough);
    }

    tellStyle(style) {
        const key = JSON.stringify(style);
        if (key === this.lastStyle)
            return;
        this.lastStyle = key;
        this.bridge.selectionStyleChanged_(style);
    }
}

function styleOf(range) {
    const link = linkAt(range.commonAncestorContainer);
    const style = {link: Boolean(link)};
    for (const [name, command] of Object.entries(STATES))
        style[name] = document.queryCommandState(command);
    if (link && !elementOf(range.commonAncestorContainer).closest('u'))
        style.underline = false; // the line is the link's
    return style;
}

/** The selected range, if it is in the content. */
export function rangeIn(content) {
    const selection = getSelection();
    if (selection.rangeCount === 0)
        return null;
    const range = selection.getRangeAt(0);
    return content.contains(range.commonAncestorContainer) ? range : null;
}

function elementOf(node) {
    return node.nodeType === Node.ELEMENT_NODE ? node : node.parentElement;
}

export function linkAt(node) {
    return elementOf(node)?.closest(`#content a[href]:not([${MORE}])`) ?? null;
}

export function select(range) {
    const selection = getSelection();
    selection.removeAllRanges();
    selection.addRange(range);
}

/** The cursor stays, so that typing goes on there when the page has the keys again. */
export function collapseSelection() {
    const selection = getSelection();
    if (selection.rangeCount > 0)
        selection.collapseToEnd();
}

/** Makes a change that takes nodes of the content from the document and puts them, or others in their place, back. */
export function keepSelection(editor, change) {
    const range = rangeIn(editor.content);
    const {startContainer, startOffset, endContainer, endOffset} = range ?? {};
    const length = range && textBefore(editor.content, endContainer, endOffset);
    change();
    if (!range)
        return;
    if (startContainer.isConnected && endContainer.isConnected)
        getSelection().setBaseAndExtent(startContainer, startOffset, endContainer, endOffset);
    else
        select(placeBehind(editor.content, length));
}

function textBefore(content, node, offset) {
    const range = document.createRange();
    range.setStart(content, 0);
    range.setEnd(node, offset);
    return range.toString().length;
}

/** The place in the content that has so much text before it. */
function placeBehind(content, length) {
    const walker = document.createTreeWalker(content, NodeFilter.SHOW_TEXT);
    let left = length;
    while (walker.nextNode()) {
        if (left <= walker.currentNode.length) {
            const range = document.createRange();
            range.setStart(walker.currentNode, left);
            return range;
        }
        left -= walker.currentNode.length;
    }
    return endOf(content);
}

export function showSelection() {
    const selection = getSelection();
    const node = selection.focusNode;
    if (!node)
        return;
    const range = document.createRange();
    range.setStart(node, selection.focusOffset);
    const [line] = range.getClientRects();
    const element = node.nodeType === Node.ELEMENT_NODE ? node.childNodes[selection.focusOffset] ?? node : node.parentElement;
    const {top, bottom} = line ?? (element.getBoundingClientRect ? element : element.parentElement).getBoundingClientRect();
    if (top < 0 || bottom > window.innerHeight)
        window.scrollBy(0, (top + bottom - window.innerHeight) / 2);
}

let lastRange = null; // survives that the selection is taken away, so that the next command knows its place

function remember(content) {
    lastRange = rangeIn(content)?.cloneRange() ?? lastRange;
}

/** The cursor: where it is, else where it was last, else the end of the content. */
export function ensureSelection(content) {
    const current = rangeIn(content);
    content.focus({preventScroll: true});
    if (current)
        return;
    const isThere = lastRange && content.contains(lastRange.commonAncestorContainer);
    select(isThere ? lastRange.cloneRange() : endOf(content));
}

function endOf(content) {
    const range = document.createRange();
    range.selectNodeContents(content.lastElementChild ?? content);
    range.collapse(false);
    return range;
}
