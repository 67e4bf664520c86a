// The level of the heading at the cursor, on a quiet badge beside it. The badge lies over the page and is no part of the
// post.

import {rangeIn} from './selection.js';

export function watchHeadings(editor) {
    const badge = document.getElementById('level');
    let isAsked = false;
    const later = () => {
        if (isAsked)
            return;
        isAsked = true;
        requestAnimationFrame(() => {
            isAsked = false;
            show(badge, headingAt(editor.content));
        });
    };
    for (const type of ['selectionchange', 'input'])
        document.addEventListener(type, later);
    window.addEventListener('resize', later);
}

function headingAt(content) {
    const node = rangeIn(content)?.startContainer;
    const element = node?.nodeType === Node.ELEMENT_NODE ? node : node?.parentElement;
    return element?.closest('#content :is(h1, h2, h3, h4, h5, h6)') ?? null;
}

function show(badge, heading) {
    badge.hidden = heading === null;
    if (!heading)
        return;
    const {left, top} = heading.getBoundingClientRect();
    const line = parseFloat(getComputedStyle(heading).lineHeight);
    badge.textContent = heading.localName.toUpperCase();
    badge.style.left = `${left + window.scrollX}px`;
    badge.style.top = `${top + window.scrollY + line / 2}px`;
}
