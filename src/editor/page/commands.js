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

/** Where it makes a list, Chromium takes the cursor to the beginning of the item. The text stays the same. */
function keepingPlace({content}, command) {
    const {anchorNode, anchorOffset, focusNode, focusOffset} = getSelection();
    const anchor = charactersBefore(content, anchorNode, anchorOffset);
    const focus = charactersBefore(content, focusNode, focusOffset);
    const done = command();
    const places = [anchor, focus].map(count => placeAfter(content, count));
    if (places.every(place => place !== null))
        getSelection().setBaseAndExtent(...places[0], ...places[1]);
    return done;
}

function charactersBefore(content, node, offset) {
    const range = document.createRange();
    range.selectNodeContents(content);
    range.setEnd(node, offset);
    return range.toString().length;
}

/** The end of that many characters, as the node and the offset in it. */
function placeAfter(content, count) {
    const texts = document.createTreeWalker(content, NodeFilter.SHOW_TEXT);
    while (texts.nextNode()) {
        const {length} = texts.currentNode;
        if (count <= length && count > 0)
            return [texts.currentNode, count];
        count -= length;
    }
    return null;
}
