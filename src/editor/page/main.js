// Wires the page together. Everything that the program can call is in one table.

import {connect} from './bridge.js';
import {answerCalls, publish} from './calls.js';
import {watchClipboard} from './clipboard.js';
import {execCommand, prepareCommands} from './commands.js';
import {Editor} from './editor.js';
import {watchHeadings} from './headings.js';
import {addImage} from './images.js';
import {watchKeys} from './keys.js';
import {
    addLinkMarkToCurrentSelection, addLinkToSelection, removeLink, removeLinkMarkForCurrentSelection, watchLinks,
} from './links.js';
import {collapseSelection, ensureSelection, SelectionWatch} from './selection.js';
import {setTheme} from './theme.js';

function functionsOf(editor, bridge, watch) {
    return {
        loadHTMLContent: data => editor.load(data),
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
        removeLink: () => removeLink(editor),
        removeLinkMarkForCurrentSelection: () => removeLinkMarkForCurrentSelection(editor),
        removeCurrentSelections: collapseSelection,
        cleanUndoStack: () => editor.cleanUndoStack(),
        focusContent: () => ensureSelection(editor.content),
        setTheme,
    };
}

async function start() {
    const {Bridge: bridge, Calls: calls} = await connect();
    prepareCommands();
    const editor = new Editor(document.getElementById('content'), html => bridge.setPostContent_(html));
    editor.load({pieces: []});
    const functions = functionsOf(editor, bridge, new SelectionWatch(editor, bridge));
    publish(functions);
    answerCalls(calls, functions);
    watchLinks(editor, bridge);
    watchClipboard(editor, bridge);
    watchKeys(editor, bridge);
    watchHeadings(editor);
    bridge.jqueryReadyFired();
}

start();
