// What nodes are to the editor.

import {BLOCK_ELEMENTS, CLOSES_PARAGRAPH, EMBED, INERT, MORE} from './constants.js';

const NOT_EMPTY = `img,hr,table,figure,[${INERT}],[${EMBED}],[${MORE}],br+br`;

export const isText = node => node.nodeType === Node.TEXT_NODE;
export const isElement = node => node.nodeType === Node.ELEMENT_NODE;
export const isComment = node => node.nodeType === Node.COMMENT_NODE;
export const isBlank = node => isText(node) && !/[^ \n\t\r\f]/.test(node.data);
export const isList = node => node.localName === 'ul' || node.localName === 'ol';

export function isInline(node) {
    return isElement(node) ? !BLOCK_ELEMENTS.has(node.localName) : isText(node);
}

/** Whether a reader would see nothing of these nodes. */
export function isVoidOfContent(nodes) {
    return nodes.every(node => isComment(node) || (!/[^ \n\t\r\f\u00a0]/.test(node.textContent)
        && !(isElement(node) && (node.matches(NOT_EMPTY) || node.querySelector(NOT_EMPTY)))));
}

/**
 * Chromium leaves the paragraph around a list that it makes of it, and undoes the list only while that is there. What
 * is written on behind the list is in that paragraph, too, and no markup has a block in a paragraph.
 */
function isWrapper(node) {
    return node.localName === 'p' && CLOSES_PARAGRAPH.has(node.firstElementChild?.localName);
}

/** The nodes without such paragraphs. */
export function withoutWrappers(nodes) {
    return [...nodes].flatMap(node => isWrapper(node) ? withoutWrappers(node.childNodes) : [node]);
}

export function elementsIn(nodes) {
    return nodes.filter(isElement).flatMap(element => [element, ...element.querySelectorAll('*')]);
}
