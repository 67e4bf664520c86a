// The browser's own editing commands, as far as the program uses them.

import {ensureSelection} from './selection.js';

const COMMANDS = new Set([
    'bold', 'italic', 'underline', 'strikethrough', 'insertorderedlist', 'insertunorderedlist', 'removeformat', 'undo', 'redo',
    'unlink',
]);

export function prepareCommands() {
    document.execCommand('defaultParagraphSeparator', false, 'p');
    document.execCommand('styleWithCSS', false, false);
}

export function execCommand(editor, name) {
    if (!COMMANDS.has(String(name).toLowerCase()))
        return false;
    ensureSelection(editor.content);
    return document.execCommand(name);
}
