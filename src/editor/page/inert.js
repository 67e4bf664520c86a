// Makes markup from outside safe to show. What the page would run is kept aside and stands in a box that says what it
// is; attributes that would do something are kept under another name. The serialiser gives them back.

import {
    ADDRESS_ATTRIBUTES, BOXED_ELEMENTS, EMBED, FEATURED, HELD_ATTRIBUTES, HELD_PREFIX, INERT, MORE, OWN_PREFIX, STORED,
} from './constants.js';
import {fetchesInCORSMode, isScriptAddress} from './addresses.js';
import {keep, originalOf} from './originals.js';

const EXTRACT_LENGTH = 90;
const BOXED = Object.keys(BOXED_ELEMENTS).join();

export function sourceOfBox(box) {
    return originalOf(box, INERT) ?? '';
}

export function makeBox(label, source, isBlock, extractLength = EXTRACT_LENGTH) {
    const box = document.createElement(isBlock ? 'div' : 'span');
    box.setAttribute(INERT, keep(source));
    box.className = 'zalmo-inert';
    box.contentEditable = 'false';
    const name = document.createElement('b');
    name.textContent = label;
    const extract = document.createElement('code');
    extract.textContent = source.length > extractLength ? source.slice(0, extractLength) + '…' : source;
    box.append(name, extract);
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

/** Makes a parsed fragment, which is not in the document yet, safe. */
export function makeInert(fragment) {
    for (const element of fragment.querySelectorAll('*')) {
        if (!fragment.contains(element))
            continue; // inside a box by now
        const label = BOXED_ELEMENTS[element.localName];
        if (label)
            element.replaceWith(makeBox(label, sourceOf(element), element.parentNode === fragment));
        else
            holdAttributes(element);
    }
}

/** The markup of an element, with the stored text of what the program converted in it. */
function sourceOf(element) {
    const stored = new Map();
    for (const converted of element.querySelectorAll(`[${STORED}]`)) {
        const original = originalOf(converted, STORED);
        if (original) {
            const place = crypto.randomUUID();
            stored.set(place, original.stored);
            converted.replaceWith(place);
        }
    }
    let source = element.outerHTML;
    for (const [place, text] of stored)
        source = source.replace(place, () => text);
    return source;
}

/** For markup from elsewhere: takes away what the body of a post would have kept. */
export function strip(root) {
    for (const element of root.querySelectorAll(`${BOXED},[${INERT}]`))
        element.remove();
    for (const element of root.querySelectorAll('*'))
        removeAttributes(element);
}

/** Whether there is an element that strip() or makeInert() would not have left. */
export function hasActive(root) {
    return root.querySelector(BOXED) !== null;
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
    const held = attributes.map(attribute => mustHold(element, attribute));
    for (const attribute of attributes)
        element.removeAttributeNode(attribute);
    attributes.forEach((attribute, n) => {
        if (held[n])
            hold(element, attribute);
        else
            element.setAttributeNode(attribute);
    });
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
        return value === 'content' || value === 'level';
    // The names of pictures become properties of the document and would hide its functions.
    if (name === 'name')
        return element.localName === 'img';
    if (name === 'style')
        return fetchesInCORSMode(element.style);
    return ADDRESS_ATTRIBUTES.has(name) && isScriptAddress(value, element.localName === 'img');
}

const marked = new WeakSet();

/** Notes that the page itself gave this element an attribute of its own. */
export function markOwn(element) {
    marked.add(element);
}

function isOwnMark(element, name) {
    return name === FEATURED || (marked.has(element) && [MORE, EMBED, STORED].includes(name));
}
