// Pictures that the program puts into the text.

import {FEATURED, NO_LINK} from './constants.js';
import {emptyParagraph} from './load.js';
import {setPicture} from './media.js';
import {ensureSelection, rangeIn, select} from './selection.js';

/** All texts are data: they go into attributes and text nodes, never into markup. */
export function addImage(editor, target, [src, link, alt, caption, tooltip, featured]) {
    const image = makeImage(src, alt, tooltip, Number(featured) === 1);
    const linked = link === NO_LINK || link === '' ? image : makeLink(link, target, image);
    const {isBlockEditor} = editor.body;
    const block = isBlockEditor || caption !== '' ? makeFigure(linked, caption, isBlockEditor) : makeParagraph(linked);
    if (block.localName === 'figure')
        image.removeAttribute('class');
    insertBlock(editor, block);
}

function makeImage(src, alt, tooltip, isFeatured) {
    const image = document.createElement('img');
    setPicture(image, src);
    image.alt = alt;
    if (tooltip !== '')
        image.title = tooltip;
    image.className = 'aligncenter full';
    if (isFeatured)
        image.setAttribute(FEATURED, 'true');
    return image;
}

function makeLink(address, target, image) {
    const link = document.createElement('a');
    link.setAttribute('href', address);
    link.setAttribute('target', target);
    link.append(image);
    return link;
}

function makeFigure(content, caption, isBlockEditor) {
    const figure = document.createElement('figure');
    figure.className = isBlockEditor ? 'wp-block-image aligncenter' : 'wp-caption aligncenter';
    figure.append(content);
    if (caption !== '') {
        const text = document.createElement('figcaption');
        text.className = isBlockEditor ? 'wp-element-caption' : 'wp-caption-text';
        text.textContent = caption;
        figure.append(text);
    }
    return figure;
}

function makeParagraph(content) {
    const paragraph = document.createElement('p');
    paragraph.append(content);
    return paragraph;
}

/** Behind the top-level element of the cursor, or in its place when it is empty; the cursor goes behind the picture. */
function insertBlock(editor, block) {
    ensureSelection(editor.content);
    const current = editor.topLevel(rangeIn(editor.content)?.endContainer);
    if (!current)
        editor.content.append(block);
    else if (current.localName === 'p' && current.textContent === '' && !current.querySelector('img,[contenteditable]'))
        current.replaceWith(block);
    else
        current.after(block);
    const next = block.nextElementSibling ?? appendParagraph(block);
    const range = document.createRange();
    range.setStart(next, 0);
    select(range);
    block.scrollIntoView({block: 'nearest'});
}

function appendParagraph(block) {
    const paragraph = emptyParagraph();
    block.after(paragraph);
    return paragraph;
}
