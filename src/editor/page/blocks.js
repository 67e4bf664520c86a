// The block editor's comments.

import {BLOCK_OF, MORE, PHRASING, SINGLE_ROOT_BLOCKS} from './constants.js';
import {isComment, isText} from './nodes.js';

/** @returns {{name: string, attributes: string, isCloser: boolean, isVoid: boolean} | null} null: another comment */
export function parseComment(data) {
    const match = /^\s*(\/)?wp:([\w/-]*\w)/.exec(data);
    if (!match)
        return null;
    const attributes = data.slice(match[0].length);
    return {name: match[2], attributes, isCloser: Boolean(match[1]), isVoid: !match[1] && data.trimEnd().endsWith('/')};
}

/** Blocks that hold exactly one element. */
export function isSingleRoot(name) {
    return SINGLE_ROOT_BLOCKS.has(name);
}

export function isInnerBlocks(element) {
    return [...element.childNodes].some(node => isComment(node) && parseComment(node.data));
}

/** Which block an element makes. */
export function kindOf(node) {
    const name = node.localName;
    if (name === 'pre')
        return node.querySelector(':scope > code') ? 'code' : 'preformatted';
    if (name === 'figure')
        return node.querySelector('table') ? 'table' : node.querySelector('img') ? 'image' : 'html';
    if (name === 'div' && node.querySelector('p,div,h1,h2,h3,h4,h5,h6,ul,ol,table,blockquote,pre,figure'))
        return 'html';
    if (name === 'p' && isOnlyMore(node))
        return 'more';
    if (name === 'a' && node.querySelector('img') && node.textContent.trim() === '')
        return 'image';
    if (isText(node) || !(name in BLOCK_OF))
        return isText(node) || PHRASING.has(name) ? 'paragraph' : 'html';
    return BLOCK_OF[name];
}

function isOnlyMore(paragraph) {
    return paragraph.children.length === 1 && paragraph.firstElementChild.hasAttribute(MORE)
        && paragraph.textContent.trim() === paragraph.firstElementChild.textContent.trim();
}

/** Whether a comment that opens a block speaks of such a node. */
export function fits(comment, node) {
    const kind = kindOf(node);
    if (comment.name !== kind)
        return false;
    if (kind === 'heading')
        return Number(/"level":\s*(\d)/.exec(comment.attributes)?.[1] ?? 2) === Number(node.localName[1]);
    return kind !== 'list' || /"ordered":\s*true/.test(comment.attributes) === (node.localName === 'ol');
}

function attributesOf(kind, node) {
    if (kind === 'heading' && node.localName !== 'h2')
        return ` {"level":${node.localName[1]}}`;
    if (kind === 'list' && node.localName === 'ol')
        return ' {"ordered":true}';
    if (kind === 'image' && node.classList?.contains('aligncenter'))
        return ' {"align":"center"}';
    return '';
}

export function openBlock(kind, node) {
    return `<!-- wp:${kind}${attributesOf(kind, node)} -->\n`;
}

export function closeBlock(kind) {
    return `\n<!-- /wp:${kind} -->`;
}
