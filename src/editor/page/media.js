// Pictures of this computer. The content names them by file:// addresses; the page shows them from zalmo://media, where
// the native side serves only what it allows.

import {SOURCE} from './constants.js';

const FILE = /^file:\/\/(localhost)?(?=\/)/i;

export function shownAddress(source) {
    return FILE.test(source) ? source.replace(FILE, 'zalmo://media') : source;
}

export function showLocalPictures(root) {
    for (const image of root.querySelectorAll('img[src]')) {
        const source = image.getAttribute('src');
        if (FILE.test(source))
            setPicture(image, source);
    }
}

export function setPicture(image, source) {
    const shown = shownAddress(source);
    if (shown === source)
        image.removeAttribute(SOURCE);
    else
        image.setAttribute(SOURCE, source);
    image.setAttribute('src', shown);
}

/** The address that the content has for this picture. A copied picture has lost the note of it. */
export function contentAddress(image) {
    const source = image.getAttribute(SOURCE);
    return source ?? (image.getAttribute('src') ?? '').replace(/^zalmo:\/\/media(?=\/)/, 'file://localhost');
}
