// Keys that mean something else here than in a page.

import {ensureSelection, rangeIn} from './selection.js';

export function watchKeys(editor, calls) {
    // A key can be faster than the focus: what is typed right behind the Tab that leaves the title is not lost.
    document.addEventListener('keydown', () => {
        if (document.activeElement !== editor.content || !rangeIn(editor.content))
            ensureSelection(editor.content);
    }, {capture: true});
    document.addEventListener('keydown', event => {
        if (event.key !== 'Tab' || event.ctrlKey || event.altKey || event.metaKey)
            return;
        event.preventDefault();
        if (event.shiftKey)
            calls.leaveForTitle();
        else
            calls.leaveForTokens();
    });
    document.addEventListener('beforeinput', event => {
        if (event.data?.includes('\u00a0'))
            editor.body.hasHardSpaces = true;
    });
}
