// Markup of a body becomes nodes of the page. Everything enters through parse().

import {EMBED, INERT, MORE, OPENED, STORED} from './constants.js';
import {parseComment} from './blocks.js';
import {asBlock, makeBox, makeInert, markOwn} from './inert.js';
import {showLocalPictures} from './media.js';
import {isBlank, isComment, isElement, isInline} from './nodes.js';
import {keep} from './originals.js';

const NO_CURSOR = `[${INERT}],[${EMBED}],a[${MORE}],hr,table,figure,details`;
const SHOWN_SOURCE_LENGTH = 20_000;

/** A fragment that is safe to put into the page. `load` has the mark and the stored texts of converted things. */
function parse(html, load, knownStyles) {
    const template = document.createElement('template');
    template.innerHTML = html;
    const fragment = template.content;
    takeMarks(fragment, load);
    makeInert(fragment);
    showLocalPictures(fragment);
    for (const details of fragment.querySelectorAll('details:not([open])')) {
        details.setAttribute(OPENED, '');
        details.open = true;
    }
    for (const element of fragment.querySelectorAll('[style]'))
        knownStyles.add(element.getAttribute('style'));
    return fragment;
}

/** What the program made of the body bears the mark of this load, which nobody could put into the body before. */
function takeMarks(fragment, {mark, kept}) {
    if (!mark)
        return;
    for (const element of fragment.querySelectorAll(`[${STORED}^="${mark}-"]`)) {
        const stored = kept[Number(element.getAttribute(STORED).slice(mark.length + 1))];
        element.setAttribute(STORED, keep({stored, form: null}));
        markOwn(element);
        if (element.localName === 'img')
            continue;
        element.setAttribute(element.localName === 'a' ? MORE : EMBED, '');
        element.removeAttribute('contenteditable');
    }
}

/** The nodes of a piece, which the body adopts. */
export function fragmentOf(piece, body, load) {
    const fragment = parse(piece.html, load, body.knownStyles);
    const isChunk = !body.isBlockEditor && /^\s*<p>/.test(piece.html) && !/^\s*<p[\s>]/i.test(piece.core);
    trim(fragment);
    makeRoomForCursor(fragment);
    if (![...fragment.childNodes].some(node => isElement(node) || !(isBlank(node) || isComment(node))))
        showComment(fragment, piece.core);
    for (const mark of fragment.querySelectorAll(`[${MORE}],[${EMBED}]`))
        mark.contentEditable = 'false';
    body.adopt(piece, [...fragment.childNodes], isChunk);
    return fragment;
}

/** A body that is too much for an editor: its source, or the beginning of it, in one box. */
export function sourceBox(stored, body) {
    const box = makeBox('This post is too large to be shown. It stays as it is.', stored, true, SHOWN_SOURCE_LENGTH);
    box.classList.add('whole');
    body.adopt(body.pieces[0], [box], false);
    return box;
}

/** A box alone becomes a block; at the end of a paragraph the line is kept open behind it, for the cursor. */
function makeRoomForCursor(fragment) {
    for (const box of fragment.querySelectorAll(`span[${INERT}]`)) {
        const parent = box.parentNode;
        if (parent.localName === 'p' && parent.parentNode === fragment && parent.childNodes.length === 1)
            parent.replaceWith(asBlock(box));
        else if (parent !== fragment && !isInline(parent) && !box.nextSibling)
            box.after(document.createElement('br'));
    }
}

function trim(fragment) {
    while (fragment.firstChild && isBlank(fragment.firstChild))
        fragment.firstChild.remove();
    while (fragment.lastChild && isBlank(fragment.lastChild))
        fragment.lastChild.remove();
}

/** A piece that shows nothing, such as a block that the blog fills, still has a place where one sees it. */
function showComment(fragment, core) {
    const comment = [...fragment.childNodes].find(isComment);
    if (!comment) {
        fragment.append(document.createComment(''));
        return;
    }
    const block = parseComment(comment.data);
    fragment.replaceChildren(makeBox(block ? `Block: ${block.name}` : 'Comment', core, true));
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
    return isBlank(node) || isComment(node);
}

/** Before and behind a box or a picture there has to be a place for the cursor. It is nothing to the blog while empty. */
export function ensureEdges(content) {
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
