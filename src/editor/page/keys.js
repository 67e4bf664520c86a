// Keys that mean something else here than in a page.

import {indent, isInList, outdent} from './lists.js';
import {ensureSelection, rangeIn} from './selection.js';

const LIMIT_MS = 300; // a key that the page never sees must not stop the calls
const RECENT_MS = 100;

let keysSeen = 0;
let lastKeyTime = -Infinity;
let lastCall = Promise.resolve();

/** Resolves once the page has had that many keys, and in the order of the calls. */
export function afterKeys(count) {
    lastCall = lastCall.then(async () => {
        const limit = performance.now() + LIMIT_MS;
        let isPending = performance.now() - lastKeyTime < RECENT_MS; // the text of a key comes right behind it
        while (isPending || (keysSeen < count && performance.now() < limit)) {
            await pause();
            isPending = false;
        }
        keysSeen = count;
    });
    return lastCall;
}

function pause() {
    return new Promise(resolve => setTimeout(resolve));
}

function countKeys() {
    for (const type of ['keydown', 'keyup'])
        document.addEventListener(type, () => {
            ++keysSeen;
            lastKeyTime = performance.now();
        }, {capture: true});
}

export function watchKeys(editor, bridge) {
    countKeys();
    // A key can be faster than the focus: what is typed right behind the Tab that leaves the title is not lost.
    document.addEventListener('keydown', () => {
        if (document.activeElement !== editor.content || !rangeIn(editor.content))
            ensureSelection(editor.content);
    }, {capture: true});
    document.addEventListener('keydown', event => {
        if (event.key !== 'Tab' || event.ctrlKey || event.altKey || event.metaKey)
            return;
        event.preventDefault();
        tab(editor, bridge, event.shiftKey);
    });
    document.addEventListener('beforeinput', event => {
        if (event.data?.includes('\u00a0'))
            editor.body.hasHardSpaces = true;
    });
}

/** In a list it changes the level of the items; elsewhere it leaves the page. */
function tab(editor, bridge, isBack) {
    if (isInList(editor.content)) {
        const change = isBack ? outdent : indent;
        change(editor);
    } else if (isBack) {
        bridge.leaveForTitle();
    } else {
        bridge.leaveForTokens();
    }
}
