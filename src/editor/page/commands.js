// The browser's own editing commands, as far as the program uses them.

import {ensureSelection, showSelection} from './selection.js';

const COMMANDS = new Set([
    'bold', 'italic', 'underline', 'strikethrough', 'insertorderedlist', 'insertunorderedlist', 'removeformat', 'undo', 'redo',
]);

export function prepareCommands() {
    document.execCommand('defaultParagraphSeparator', false, 'p');
    document.execCommand('styleWithCSS', false, false);
    document.addEventListener('input', event => {
        if (event.inputType === 'historyUndo' || event.inputType === 'historyRedo')
            showSelection(); // what it changed may be far from where one looks
    });
}

export function execCommand(editor, name) {
    if (!COMMANDS.has(String(name).toLowerCase()))
        return false;
    ensureSelection(editor.content);
    return /list$/i.test(name) ? keepingPlace(editor, () => document.execCommand(name)) : document.execCommand(name);
}

/**
 * Where it makes a list, Chromium takes the cursor to the beginning of the item. The text stays the same; where as much
 * of it is before the cursor as there was, the cursor is right, and in an empty item there is no other place.
 */
function keepingPlace({content}, command) {
    const before = charactersBefore(content);
    const done = command();
    const place = charactersBefore(content) < before ? placeAfter(content, before) : null;
    if (place && getSelection().isCollapsed)
        getSelection().collapse(...place);
    return done;
}

function charactersBefore(content) {
    const {focusNode, focusOffset} = getSelection();
    const range = document.createRange();
    range.selectNodeContents(content);
    range.setEnd(focusNode, focusOffset);
    return range.toString().length;
}

/** The end of that many characters, as the node and the offset in it. */
function placeAfter(content, count) {
    const texts = document.createTreeWalker(content, NodeFilter.SHOW_TEXT);
    while (texts.nextNode()) {
        const {length} = texts.currentNode;
        if (count <= length)
            return [texts.currentNode, count];
        count -= length;
    }
    return null;
}
