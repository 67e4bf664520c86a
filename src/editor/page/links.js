// Links. While the link sheet has the focus, the page keeps the range that the link is for.

import {ensureSelection, linkAt, rangeIn, select} from './selection.js';

let marked = null;

export function addLinkMarkToCurrentSelection(editor) {
    const range = rangeIn(editor.content);
    marked = range ? widened(range).cloneRange() : null;
}

/** A cursor within a link stands for the whole link. */
function widened(range) {
    const link = linkAt(range.commonAncestorContainer);
    if (link && range.collapsed)
        range.selectNodeContents(link);
    return range;
}

function restore(editor) {
    ensureSelection(editor.content);
    if (marked && editor.content.contains(marked.commonAncestorContainer))
        select(marked);
    marked = null;
    return rangeIn(editor.content);
}

export function addLinkToSelection(editor, url, tooltip, newWindow) {
    const range = restore(editor);
    if (!range || isScript(url))
        return;
    const link = linkAt(range.commonAncestorContainer);
    if (link)
        return setLink(link, url, tooltip, newWindow);
    if (range.collapsed)
        insertLink(url, tooltip, newWindow);
    else
        linkRange(editor, range, url, tooltip, newWindow);
}

function isScript(url) {
    return /^(java|vb)script:/i.test(url.replace(/[\u0000-\u0020]/g, ''));
}

function setLink(link, url, tooltip, newWindow) {
    link.setAttribute('href', url);
    if (tooltip)
        link.setAttribute('title', tooltip);
    else
        link.removeAttribute('title');
    link.setAttribute('target', newWindow ? '_blank' : '_self');
}

function insertLink(url, tooltip, newWindow) {
    const link = document.createElement('a');
    link.textContent = url;
    setLink(link, url, tooltip, newWindow);
    document.execCommand('insertHTML', false, link.outerHTML);
}

function linkRange(editor, range, url, tooltip, newWindow) {
    const before = new Set(editor.content.querySelectorAll('a'));
    document.execCommand('createLink', false, url);
    for (const link of editor.content.querySelectorAll('a')) {
        if (!before.has(link) || getSelection().containsNode(link, true))
            setLink(link, url, tooltip, newWindow);
    }
}

export function removeLinkMarkForCurrentSelection(editor) {
    restore(editor);
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
        const range = document.createRange();
        range.selectNodeContents(link);
        select(range);
        marked = range;
        bridge.openAddLinkPopoverWithURL_Tooltip_OpenInNewTab_(
            link.getAttribute('href'), link.title, link.getAttribute('target') ?? '');
    });
}
