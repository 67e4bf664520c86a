// Wires the page together. Everything the native side can call is in one table.

import {connect} from './bridge.js';
import {answerCalls, publish} from './calls.js';
import {execCommand, prepareCommands} from './commands.js';
import {Editor} from './editor.js';
import {addImage} from './images.js';
import {
    addLinkMarkToCurrentSelection, addLinkToSelection, removeLinkMarkForCurrentSelection, watchLinks,
} from './links.js';
import {watchKeys} from './keys.js';
import {watchPaste} from './paste.js';
import {ensureSelection, SelectionWatch} from './selection.js';
import {setTheme} from './theme.js';

function functionsOf(editor, bridge, watch) {
    return {
        loadHTMLContent: data => editor.load(typeof data === 'string' ? {html: data} : data),
        getBodyContent: () => editor.text(),
        getRawContent: () => editor.text(),
        execCommand: name => {
            execCommand(editor, name);
            watch.later();
        },
        addImage: async (...args) => {
            const {body} = editor;
            const target = await bridge.targetForLinkImage();
            if (editor.body === body) // and not another post by now
                addImage(editor, target, args);
        },
        addLinkMarkToCurrentSelection: () => addLinkMarkToCurrentSelection(editor),
        addLinkToSelection: (...args) => addLinkToSelection(editor, ...args),
        removeLinkMarkForCurrentSelection: () => removeLinkMarkForCurrentSelection(editor),
        removeCurrentSelections: () => getSelection().removeAllRanges(),
        cleanUndoStack: () => editor.cleanUndoStack(),
        focusContent: () => ensureSelection(editor.content),
        setTheme,
    };
}

const {Bridge: bridge, Calls: calls} = await connect();
window.Bridge = bridge;
prepareCommands();
const editor = new Editor(document.getElementById('content'), html => bridge.setPostContent_(html));
editor.load({});
const functions = functionsOf(editor, bridge, new SelectionWatch(editor, bridge, calls));
publish(functions);
answerCalls(calls, functions);
watchLinks(editor, bridge);
watchPaste(editor);
watchKeys(editor, calls);
bridge.jqueryReadyFired();
