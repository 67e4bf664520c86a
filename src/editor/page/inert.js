// Makes markup from outside safe to show. What the page would run is kept aside and stands in a box that says what it
// is; attributes that would do something are kept under another name. unhold() and sourceOfBox() give them back.

import {
    ADDRESS_ATTRIBUTES, BOXED_ELEMENTS, EMBED, FEATURED, HELD_ATTRIBUTES, HELD_PREFIX, INERT, MORE, OWN_PREFIX,
} from './constants.js';

const EXTRACT_LENGTH = 90;
const sources = new Map(); // number of a box, to the markup that it stands for
let lastBox = 0;

export function sourceOfBox(box) {
    return sources.get(box.getAttribute(INERT)) ?? '';
}

export function isKnownBox(element) {
    return sources.has(element.getAttribute(INERT));
}

/** Boxes of an earlier content cannot come back. */
export function forgetBoxes() {
    sources.clear();
}

export function makeBox(label, source, isBlock) {
    const box = document.createElement(isBlock ? 'div' : 'span');
    const number = String(++lastBox);
    sources.set(number, source);
    box.setAttribute(INERT, number);
    fillBox(box, label, source);
    return box;
}

/** The same box as a block. */
export function asBlock(box) {
    const block = document.createElement('div');
    for (const {name, value} of box.attributes)
        block.setAttribute(name, value);
    block.append(...box.childNodes);
    return block;
}

function fillBox(box, label, source) {
    box.className = 'zalmo-inert';
    box.contentEditable = 'false';
    const name = document.createElement('b');
    name.textContent = label;
    const extract = document.createElement('code');
    const line = source.replace(/\s+/g, ' ').trim();
    extract.textContent = line.length > EXTRACT_LENGTH ? line.slice(0, EXTRACT_LENGTH) + '…' : line;
    box.append(name, extract);
}

/** Makes a parsed fragment, which is not in the document yet, safe. */
export function makeInert(fragment) {
    for (const element of fragment.querySelectorAll('*')) {
        if (!fragment.contains(element))
            continue; // inside a box by now
        const label = BOXED_ELEMENTS[element.localName];
        if (label)
            element.replaceWith(makeBox(label, element.outerHTML, element.parentNode === fragment));
        else
            holdAttributes(element);
    }
}

/** For markup from elsewhere: takes away what the body of a post would have kept. */
export function strip(fragment) {
    for (const element of fragment.querySelectorAll('*')) {
        const box = element.closest(`[${INERT}]`);
        if (!fragment.contains(element) || (box && isKnownBox(box)))
            continue;
        if (BOXED_ELEMENTS[element.localName])
            element.remove();
        else
            removeAttributes(element);
    }
}

function removeAttributes(element) {
    for (const attribute of [...element.attributes]) {
        if (mustHold(element, attribute) || ['class', 'id', 'style'].includes(attribute.name))
            element.removeAttributeNode(attribute);
    }
}

function holdAttributes(element) {
    const attributes = [...element.attributes];
    if (!attributes.some(attribute => mustHold(element, attribute)))
        return;
    // All are put back, so that their order stays.
    for (const attribute of attributes)
        element.removeAttributeNode(attribute);
    for (const attribute of attributes) {
        if (mustHold(element, attribute))
            hold(element, attribute);
        else
            element.setAttributeNode(attribute);
    }
}

function hold(element, attribute) {
    try {
        element.setAttribute(HELD_PREFIX + attribute.name, attribute.value);
    } catch {
        // A name that only the parser can make. It is lost if the tag is ever changed, and does nothing till then.
    }
}

function mustHold(element, {name, value}) {
    if (name.startsWith('on') || HELD_ATTRIBUTES.has(name))
        return true;
    if (name.startsWith(OWN_PREFIX))
        return !isOwnMark(element, name);
    if (name === 'id')
        return value === 'content';
    // The names of pictures become properties of the document and would hide its functions.
    if (name === 'name')
        return element.localName === 'img';
    return ADDRESS_ATTRIBUTES.has(name) && isScriptAddress(element, value);
}

const marked = new WeakSet();

/** Notes that the page itself gave this element an attribute of its own. */
export function markOwn(element) {
    marked.add(element);
    return element;
}

function isOwnMark(element, name) {
    return name === FEATURED || (marked.has(element) && (name === MORE || name === EMBED));
}

function isScriptAddress(element, value) {
    const address = value.replace(/[\u0000-\u0020]/g, '').toLowerCase();
    if (address.startsWith('data:'))
        return element.localName !== 'img';
    return /^(java|vb|live)script:/.test(address);
}
