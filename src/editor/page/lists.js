// The levels of lists.

import {keepSelection, rangeIn} from './selection.js';

function itemAt(content) {
    const start = rangeIn(content)?.startContainer;
    const element = start?.nodeType === Node.ELEMENT_NODE ? start : start?.parentElement;
    const item = element?.closest('li');
    return item && content.contains(item) ? item : null;
}

export function isInList(content) {
    return itemAt(content) !== null;
}

/** The first item of a list has none before it that it could go under. */
export function indent({content}) {
    if (itemAt(content)?.previousElementSibling)
        document.execCommand('indent');
}

export function outdent(editor) {
    const item = itemAt(editor.content);
    if (item.parentNode.parentNode.localName === 'li')
        keepSelection(editor, () => moveOut(item, editor.body));
    else
        document.execCommand('outdent');
}

/** Behind the item that its list is in, with the items that followed it below it. Chromium leaves it within that one. */
function moveOut(item, body) {
    const list = item.parentNode;
    const outer = list.parentNode;
    const following = [...list.children].slice([...list.children].indexOf(item) + 1);
    if (following.length > 0) {
        const rest = list.cloneNode(false);
        rest.append(...following);
        item.append(rest);
    }
    outer.after(item);
    if (list.children.length === 0)
        list.remove();
    body.forgetPlaces([item, ...following]);
}
