// Links. While the link sheet has the focus, the page keeps the range that the link is for, and the link that is there.

import {isScriptAddress} from './addresses.js';
import {linkAt, rangeIn, select} from './selection.js';

let marked = null;

/** @returns what the sheet shows: the link under the cursor, and the text that is or becomes the link */
export function addLinkMarkToCurrentSelection(editor) {
    const range = rangeIn(editor.content);
    return range ? mark(editor, range) : null;
}

function mark(editor, range) {
    const link = linkAt(range.commonAncestorContainer);
    const place = range.cloneRange();
    if (link) // the whole of it
        place.selectNodeContents(link);
    marked = {body: editor.body, range: place, link, text: place.toString()};
    return {...describe(link), isLink: link !== null, text: marked.text};
}

function describe(link) {
    return {
        url: link?.getAttribute('href') ?? '', tooltip: link?.title ?? '', newWindow: link?.getAttribute('target') === '_blank',
    };
}

/** Selects what was marked. False when it is no longer there: another text came meanwhile. */
function restore(editor) {
    const {range, text} = marked ?? {};
    const isThere = marked !== null && editor.content.contains(range.commonAncestorContainer) && range.toString() === text;
    marked = null;
    if (!isThere)
        return false;
    editor.content.focus({preventScroll: true});
    select(range);
    return true;
}

export function addLinkToSelection(editor, url, tooltip, newWindow) {
    const link = marked?.link;
    if (!restore(editor) || isScriptAddress(url))
        return;
    const range = rangeIn(editor.content);
    if (link?.isConnected)
        setLink(link, {url, tooltip, newWindow});
    else if (range.collapsed)
        insertLink({url, tooltip, newWindow});
    else
        linkRange(editor, {url, tooltip, newWindow});
}

/** Changes what is different only: an untouched link keeps the words of its tag. */
function setLink(link, wanted) {
    const {url, tooltip, newWindow} = describe(link);
    if (wanted.url !== url)
        link.setAttribute('href', wanted.url);
    if (wanted.tooltip === '')
        link.removeAttribute('title');
    else if (wanted.tooltip !== tooltip)
        link.setAttribute('title', wanted.tooltip);
    if (wanted.newWindow !== newWindow)
        link.setAttribute('target', wanted.newWindow ? '_blank' : '_self');
}

function setNewLink(link, {url, tooltip, newWindow}) {
    link.setAttribute('href', url);
    if (tooltip !== '')
        link.setAttribute('title', tooltip);
    link.setAttribute('target', newWindow ? '_blank' : '_self');
}

function insertLink(wanted) {
    const link = document.createElement('a');
    link.textContent = wanted.url;
    setNewLink(link, wanted);
    document.execCommand('insertHTML', false, link.outerHTML);
}

function linkRange(editor, wanted) {
    const before = new Set(editor.content.querySelectorAll('a'));
    document.execCommand('createLink', false, wanted.url);
    for (const link of editor.content.querySelectorAll('a')) {
        if (!before.has(link) || getSelection().containsNode(link, true))
            setNewLink(link, wanted);
    }
}

export function removeLinkMarkForCurrentSelection(editor) {
    restore(editor);
}

/** The text of the marked link, or of the one under the cursor, without the link. */
export function removeLink(editor) {
    if (marked !== null ? restore(editor) : selectLinkAtCursor(editor))
        document.execCommand('unlink');
}

function selectLinkAtCursor(editor) {
    const range = rangeIn(editor.content);
    const link = range && linkAt(range.commonAncestorContainer);
    if (link && range.collapsed)
        selectContents(link);
    return range !== null;
}

function selectContents(link) {
    const range = document.createRange();
    range.selectNodeContents(link);
    select(range);
    return range;
}

/** A click on a link does nothing (nor does one on anything else that answers to clicks); a double click opens the sheet. */
export function watchLinks(editor, bridge) {
    document.addEventListener('click', event => {
        if (event.target.closest?.('a, area, summary, label'))
            event.preventDefault();
    });
    document.addEventListener('auxclick', event => event.preventDefault());
    document.addEventListener('dblclick', event => {
        const link = linkAt(event.target);
        if (!link)
            return;
        const {url, tooltip} = mark(editor, selectContents(link));
        bridge.openAddLinkPopoverWithURL_Tooltip_OpenInNewTab_(url, tooltip, link.getAttribute('target') ?? '');
    });
}
