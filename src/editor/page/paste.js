// Markup that is pasted or dropped is inserted as the browser does, but stripped of all that would do something.

import {strip} from './inert.js';
import {showLocalPictures} from './media.js';
import {select} from './selection.js';

const FROM_OUTSIDE = new Set(['insertFromPaste', 'insertFromDrop', 'insertFromYank']);

export function watchPaste(editor) {
    document.addEventListener('beforeinput', event => {
        if (!FROM_OUTSIDE.has(event.inputType) || !editor.content.contains(event.target))
            return;
        const html = event.dataTransfer?.getData('text/html');
        if (!html)
            return; // plain text goes in by the browser's own road
        event.preventDefault();
        const [target] = event.getTargetRanges();
        if (target)
            selectStatic(target);
        document.execCommand('insertHTML', false, clean(html));
    });
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
    template.innerHTML = /<!--StartFragment-->([\s\S]*)<!--EndFragment-->/.exec(html)?.[1] ?? html;
    const comments = document.createTreeWalker(template.content, NodeFilter.SHOW_COMMENT);
    const found = [];
    while (comments.nextNode())
        found.push(comments.currentNode);
    for (const comment of found)
        comment.remove();
    strip(template.content);
    showLocalPictures(template.content);
    return template.innerHTML;
}
