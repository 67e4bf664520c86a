// Copies and what comes in from the clipboard or a drag. A copy of the page's own keeps its form (boxes, pictures of the
// blog, comments of blocks): it stays here under a number that goes to the clipboard with it. All other markup is
// inserted as the browser does, but stripped of what would do something.

import {BLOCK, FEATURED, INERT, OWN_PREFIX} from './constants.js';
import {hasActive, strip} from './inert.js';
import {contentAddress, showLocalPictures} from './media.js';
import {isList} from './nodes.js';
import {keep, originalsIn, renewOriginals} from './originals.js';
import {rangeIn, select, showSelection} from './selection.js';

const OWN_COPY = 'application/x-zalmo-copy';
const FROM_OUTSIDE = new Set(['insertFromPaste', 'insertFromDrop', 'insertFromYank']);
const WRAPPERS = 'a,abbr,b,cite,code,del,em,i,ins,kbd,mark,q,s,small,span,strike,strong,sub,sup,u,ul,ol,table,tbody,thead,tfoot,tr';

let lastCopy = null; // {number, html, originals}

export function watchClipboard(editor, bridge) {
    document.addEventListener('copy', event => copy(editor, event, event.clipboardData));
    document.addEventListener('cut', event => {
        if (copy(editor, event, event.clipboardData))
            document.execCommand('delete');
    });
    document.addEventListener('dragstart', event => copy(editor, null, event.dataTransfer));
    document.addEventListener('paste', event => {
        if (!isPicture(event.clipboardData))
            return;
        event.preventDefault();
        bridge.pastePicture();
    });
    document.addEventListener('beforeinput', event => {
        if (FROM_OUTSIDE.has(event.inputType) && editor.content.contains(event.target))
            insert(editor, event);
    });
}

/** Puts the selection on the clipboard; false when there is none. */
function copy(editor, event, data) {
    const range = rangeIn(editor.content);
    if (!range || range.collapsed)
        return false;
    const number = crypto.randomUUID();
    const fragment = copyOf(editor, range);
    const html = htmlOf(fragment);
    lastCopy = {number, html, originals: originalsIn(fragment)};
    data.setData(OWN_COPY, number);
    data.setData('text/html', cleanForOthers(html));
    data.setData('text/plain', getSelection().toString());
    event?.preventDefault();
    return true;
}

/** The nodes of a range with the elements around them that give them their meaning. */
function copyOf(editor, range) {
    const fragment = range.cloneContents();
    const common = range.commonAncestorContainer;
    noteBlocks(editor, range, fragment);
    let element = common.nodeType === Node.ELEMENT_NODE ? common : common.parentElement;
    for (; element !== editor.content; element = element.parentElement) {
        const isLoose = !isList(element) || fragment.firstElementChild?.localName === 'li';
        if (!element.matches(WRAPPERS) || !isLoose)
            continue;
        const wrapper = element.cloneNode(false);
        wrapper.append(fragment);
        fragment.append(wrapper);
    }
    return fragment;
}

/** Copies of top-level elements remember which pieces they were. */
function noteBlocks(editor, range, fragment) {
    if (range.commonAncestorContainer !== editor.content)
        return;
    const nodes = [...editor.content.childNodes].filter(node => range.intersectsNode(node));
    [...fragment.childNodes].forEach((copied, n) => {
        const piece = nodes[n] && editor.body.pieceForCopy(nodes[n]);
        if (piece && copied.nodeType === Node.ELEMENT_NODE)
            copied.setAttribute(BLOCK, keep(piece));
    });
}

function htmlOf(fragment) {
    const template = document.createElement('template');
    template.content.append(fragment.cloneNode(true));
    return template.innerHTML;
}

function cleanForOthers(html) {
    const template = document.createElement('template');
    template.innerHTML = html;
    for (const box of template.content.querySelectorAll(`[${INERT}]`))
        box.remove();
    for (const image of template.content.querySelectorAll('img[src]'))
        image.setAttribute('src', contentAddress(image));
    for (const element of template.content.querySelectorAll('*')) {
        for (const {name} of [...element.attributes]) {
            if ((name.startsWith(OWN_PREFIX) && name !== FEATURED) || name === 'contenteditable')
                element.removeAttribute(name);
        }
    }
    return template.innerHTML;
}

/** Whether there is a picture and no text: a screenshot, a file. One that a page shows comes by its address. */
function isPicture(data) {
    const hasFile = [...data.items].some(item => item.kind === 'file' && item.type.startsWith('image/'));
    const html = data.getData('text/html');
    if (!hasFile || html === '')
        return hasFile;
    const template = document.createElement('template');
    template.innerHTML = html;
    const images = [...template.content.querySelectorAll('img')];
    return template.content.textContent.trim() === '' && images.every(image => !/^https?:/i.test(image.getAttribute('src') ?? ''));
}

function insert(editor, event) {
    const html = insertable(event.dataTransfer);
    if (html === null)
        return; // plain text goes in by the browser's own road
    event.preventDefault();
    const [target] = event.getTargetRanges();
    if (target)
        selectStatic(target);
    document.execCommand('insertHTML', false, html);
    if (hasActive(editor.content))
        document.execCommand('undo'); // the markup became something else on its way
    showSelection();
}

function insertable(data) {
    if (lastCopy !== null && data?.getData(OWN_COPY) === lastCopy.number)
        return ownCopy();
    const html = data?.getData('text/html');
    return html ? clean(html) : null;
}

function ownCopy() {
    const template = document.createElement('template');
    template.innerHTML = lastCopy.html;
    renewOriginals(template.content, lastCopy.originals);
    return template.innerHTML;
}

function selectStatic({startContainer, startOffset, endContainer, endOffset}) {
    const range = document.createRange();
    range.setStart(startContainer, startOffset);
    range.setEnd(endContainer, endOffset);
    select(range);
}

/** @returns {string} markup that is safe to insert */
export function clean(html) {
    const template = document.createElement('template');
    // The clipboard holds a whole page; what is meant stands between these comments, where they are.
    template.innerHTML = fragmentIn(html);
    const comments = document.createTreeWalker(template.content, NodeFilter.SHOW_COMMENT);
    const found = [];
    while (comments.nextNode())
        found.push(comments.currentNode);
    for (const comment of found)
        comment.remove();
    strip(template.content);
    for (const image of template.content.querySelectorAll('img')) {
        if (!/^(?:https?|file|zalmo):/i.test(image.getAttribute('src') ?? ''))
            image.remove(); // its data would go to the blog within the text
    }
    showLocalPictures(template.content);
    return template.innerHTML;
}

function fragmentIn(html) {
    const [begin, end] = ['<!--StartFragment-->', '<!--EndFragment-->'];
    const from = html.indexOf(begin);
    const to = html.lastIndexOf(end);
    return from >= 0 && to > from ? html.slice(from + begin.length, to) : html;
}
