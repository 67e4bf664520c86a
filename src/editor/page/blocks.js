// The block editor's comments.

const SINGLE_ROOT = new Set([
    'paragraph', 'heading', 'list', 'list-item', 'quote', 'image', 'preformatted', 'code', 'verse', 'pullquote', 'separator',
    'table', 'group', 'column', 'columns', 'buttons', 'button', 'gallery', 'cover', 'media-text', 'spacer',
]);

/** @returns {{name: string, isCloser: boolean, isVoid: boolean} | null} null when it is another comment */
export function parseComment(data) {
    const match = /^\s*(\/)?wp:([\w/-]*\w)/.exec(data);
    if (!match)
        return null;
    return {name: match[2], isCloser: Boolean(match[1]), isVoid: !match[1] && /\/\s*$/.test(data)};
}

/** Blocks that hold exactly one element. */
export function isSingleRoot(name) {
    return SINGLE_ROOT.has(name);
}

export function isInnerBlocks(element) {
    return [...element.childNodes].some(node => node.nodeType === Node.COMMENT_NODE && parseComment(node.data));
}

const KINDS = {
    p: 'paragraph', div: 'paragraph', h1: 'heading', h2: 'heading', h3: 'heading', h4: 'heading', h5: 'heading',
    h6: 'heading', ul: 'list', ol: 'list', li: 'list-item', blockquote: 'quote', hr: 'separator', img: 'image',
    table: 'table',
};

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
    if (node.nodeType === Node.TEXT_NODE || !(name in KINDS))
        return isPhrase(node) ? 'paragraph' : 'html';
    return KINDS[name];
}

function isOnlyMore(paragraph) {
    return paragraph.children.length === 1 && paragraph.firstElementChild.hasAttribute('data-zalmo-more')
        && paragraph.textContent.trim() === paragraph.firstElementChild.textContent.trim();
}

function isPhrase(node) {
    return node.nodeType === Node.TEXT_NODE
        || /^(a|abbr|b|bdi|bdo|br|cite|code|del|dfn|em|font|i|ins|kbd|mark|q|s|samp|small|span|strike|strong|sub|sup|time|tt|u|var)$/
            .test(node.localName);
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
