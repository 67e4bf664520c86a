// What nodes of the page stand for, by keys that are attributes of theirs. The browser copies attributes when it splits
// or moves an element, so that a key lasts where the node itself would not. Keys cannot be guessed: what comes in from
// elsewhere never has one that is known here.

import {BLOCK, INERT, STORED} from './constants.js';

const KEYS = [INERT, STORED, BLOCK];
const originals = new Map();

export function keep(original, key = crypto.randomUUID()) {
    originals.set(key, original);
    return key;
}

/** What the element's attribute stands for; undefined when it has none, or one that is not from here. */
export function originalOf(element, attribute) {
    const key = element.getAttribute(attribute);
    return key === null ? undefined : originals.get(key);
}

/** Those of an earlier content cannot come back. */
export function forgetOriginals() {
    originals.clear();
}

/** All that stands in a fragment, for a copy of it that outlives the content. */
export function originalsIn(fragment) {
    return KEYS.flatMap(attribute => [...fragment.querySelectorAll(`[${attribute}]`)]
        .map(element => [element.getAttribute(attribute), originalOf(element, attribute)]));
}

/** Gives the elements of a fragment keys of their own, for what `known` has under their present ones. */
export function renewOriginals(fragment, known) {
    const entries = new Map(known);
    for (const attribute of KEYS) {
        for (const element of fragment.querySelectorAll(`[${attribute}]`)) {
            const original = entries.get(element.getAttribute(attribute));
            if (original)
                element.setAttribute(attribute, keep(original));
            else
                element.removeAttribute(attribute);
        }
    }
}
