// Markup from the native side becomes nodes of the page. Everything enters through parse().

import {CURSOR_PLACE, EMBED, EMPTY_BODY, INERT, MORE, OPENED} from './constants.js';
import {asBlock, forgetBoxes, makeBox, makeInert, markOwn} from './inert.js';
import {parseComment} from './blocks.js';
import {showLocalPictures} from './media.js';
import {Body} from './pieces.js';
import {isBlank, isElement} from './serialise.js';

const NO_CURSOR = `[${INERT}],[${EMBED}],a[${MORE}],hr,table,figure,details`;
const PADDING = /<br \/><br \/><\/p>\s*$/;

/** A fragment that is safe to put into the page. */
export function parse(html, knownStyles) {
    const template = document.createElement('template');
    template.innerHTML = html;
    const fragment = template.content;
    markContractForms(fragment);
    makeInert(fragment);
    showLocalPictures(fragment);
    for (const details of fragment.querySelectorAll('details:not([open])')) {
        details.setAttribute(OPENED, '');
        details.open = true;
    }
    for (const element of fragment.querySelectorAll('[style]'))
        knownStyles?.add(element.getAttribute('style'));
    return fragment;
}

/** Gives the marks of the editor's form (fold, embeds, headings) to what the page knows them by. */
function markContractForms(fragment) {
    for (const anchor of fragment.querySelectorAll('a.readmore[href="#"]'))
        setMark(anchor, MORE);
    for (const embed of fragment.querySelectorAll('div[draggable="true"]')) {
        if (embed.attributes.length === 2 && /^(youtube|vimeo|embed)$/.test(embed.className))
            setMark(embed, EMBED);
    }
    for (const container of fragment.querySelectorAll('div.heading-container'))
        unwrapHeading(container);
}

function setMark(element, mark) {
    markOwn(element);
    element.setAttribute(mark, '');
    element.removeAttribute('contenteditable');
}

function unwrapHeading(container) {
    const box = container.querySelector(':scope > img.heading-box');
    if (!box)
        return;
    box.remove();
    for (const heading of container.querySelectorAll('.headingAlreadyInsideContainer')) {
        heading.classList.remove('headingAlreadyInsideContainer');
        if (heading.className === '')
            heading.removeAttribute('class');
    }
    container.replaceWith(...container.childNodes);
}

/** Fills an empty element with a body, and gives the model of it. */
export function fill(content, {html = '', pieces = [], isBlockEditor = false, localImages = {}}) {
    forgetBoxes();
    const isEmpty = pieces.length === 0 && html === EMPTY_BODY;
    const list = pieces.length > 0 || isEmpty || html === '' ? pieces : [wholePiece(html)];
    const body = new Body({pieces: list, isBlockEditor, localImages});
    for (const piece of body.pieces)
        content.append(fragmentOf(piece, body));
    body.seal();
    protectMarks(content);
    ensureParagraph(content);
    ensureEdges(content);
    return body;
}

function wholePiece(html) {
    return {stored: html, lead: '', core: html, tail: '', html};
}

function fragmentOf(piece, body) {
    const fragment = parse(piece.html, body.knownStyles);
    const isChunk = !body.isBlockEditor && /^\s*<p>/.test(piece.html) && !/^\s*<p[\s>]/i.test(piece.core);
    trim(fragment);
    if (PADDING.test(piece.html) && !PADDING.test(piece.core))
        removePadding(fragment);
    makeRoomForCursor(fragment);
    if (![...fragment.childNodes].some(node => isElement(node) || !(isBlank(node) || node.nodeType === Node.COMMENT_NODE)))
        showComment(fragment, piece.core);
    body.adopt(piece, [...fragment.childNodes], isChunk);
    return fragment;
}

/** A box alone becomes a block; at the edge of a paragraph it gets a place for the cursor beside it. */
function makeRoomForCursor(fragment) {
    for (const box of fragment.querySelectorAll(`span[${INERT}]`)) {
        const parent = box.parentNode;
        if (parent.localName === 'p' && parent.parentNode === fragment && parent.childNodes.length === 1)
            parent.replaceWith(asBlock(box));
        else if (parent !== fragment && !box.nextSibling)
            box.after(CURSOR_PLACE);
    }
}

function trim(fragment) {
    while (fragment.firstChild && isBlank(fragment.firstChild))
        fragment.firstChild.remove();
    while (fragment.lastChild && isBlank(fragment.lastChild))
        fragment.lastChild.remove();
}

/** The paragraph builder ends each paragraph with two line breaks; here the style sheet makes the distance. */
function removePadding(fragment) {
    for (const paragraph of fragment.querySelectorAll(':scope > p'))
        removeBreaks(paragraph);
    removeBreaks(fragment);
    while (fragment.childNodes.length > 1 && fragment.lastChild.localName === 'p' && !fragment.lastChild.hasChildNodes()) {
        fragment.lastChild.remove();
        removeBreaks(fragment);
    }
}

function removeBreaks(parent) {
    for (let n = 0; n < 2 && parent.lastChild?.localName === 'br'; n += 1)
        parent.lastChild.remove();
}

/** A piece that shows nothing, such as a block that the blog fills, still has a place where one sees it. */
function showComment(fragment, core) {
    const [comment] = [...fragment.childNodes].filter(node => node.nodeType === Node.COMMENT_NODE);
    if (!comment) {
        fragment.append(document.createComment(''));
        return;
    }
    const block = parseComment(comment.data);
    fragment.replaceChildren(makeBox(block ? `Block: ${block.name}` : 'Comment', core, true));
}

function protectMarks(content) {
    for (const mark of content.querySelectorAll(`[${MORE}],[${EMBED}]`))
        mark.contentEditable = 'false';
}

/** The editor never is without a paragraph to type into. */
export function ensureParagraph(content) {
    if (![...content.childNodes].every(isNothing))
        return null;
    const paragraph = emptyParagraph();
    content.append(paragraph);
    return paragraph;
}

function isNothing(node) {
    return isBlank(node) || node.nodeType === Node.COMMENT_NODE;
}

/** Before and behind a box or a picture there has to be a place for the cursor. It is nothing to the blog while empty. */
function ensureEdges(content) {
    const shown = [...content.childNodes].filter(node => !isNothing(node));
    if (isElement(shown.at(-1)) && shown.at(-1).matches(NO_CURSOR))
        content.append(emptyParagraph());
    if (isElement(shown[0]) && shown[0].matches(NO_CURSOR))
        content.prepend(emptyParagraph());
}

export function emptyParagraph() {
    const paragraph = document.createElement('p');
    paragraph.append(document.createElement('br'));
    return paragraph;
}
