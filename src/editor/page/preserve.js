// A changed piece keeps the bytes of all that did not change in it: the quotes of an attribute, an entity, an end tag
// that the writer of the body left out.
//
// `core` is the stored text, `before` the page's serialisation right after loading it, `after` the one of now. Tokens of
// `before` are paired with tokens of `core`; each token of `after` that is an unchanged one of `before` takes its text
// from there.

import {match} from './diff.js';
import {decode, tokenise, withStrayEnds} from './tokens.js';

export class Original {
    /** @param lineEndsMatter whether a line end says more than a space: in plain text and in preformatted text */
    constructor(core, before, lineEndsMatter) {
        this.core = core;
        this.before = before;
        this.alikeSpace = lineEndsMatter ? HARD_SPACE : ANY_SPACE;
        this.tokens = null;
    }

    /** `after`, in the original's own words wherever it says the same. */
    applyTo(after) {
        if (after === this.before)
            return this.core;
        this.tokens ??= pairTokens(withStrayEnds(tokenise(this.core)), tokenise(this.before));
        const text = reword(this.tokens, tokenise(after), this.alikeSpace);
        // Where an end tag was only implied, a change can move what follows into another element. Then the page's own
        // words are the right ones.
        return skeleton(text) === skeleton(after) ? text : after;
    }
}

/** Gives each token of `before` its text in `core`: `own` for itself, `source` with what stands unpaired behind it. */
function pairTokens(coreTokens, beforeTokens) {
    const partners = match(coreTokens.map(token => token.key), beforeTokens.map(token => token.key));
    const pairs = fillGaps(partners, coreTokens, beforeTokens, token => `${token.kind} ${token.name}`);
    const tokens = beforeTokens.map(token => ({...token, own: null, says: null, source: ''}));
    pairs.forEach(([i, j], n) => {
        const start = n === 0 ? 0 : i;
        const end = n + 1 < pairs.length ? pairs[n + 1][0] : coreTokens.length;
        tokens[j].own = coreTokens[i].raw;
        tokens[j].says = coreTokens[i].key;
        tokens[j].source = coreTokens.slice(start, end).map(token => token.raw).join('');
    });
    return tokens;
}

/** Adds, between the pairs there are, pairs of tokens of one kind, in order. Tokens without a kind stay alone. */
function fillGaps(pairs, a, b, kindOf) {
    const result = [];
    let [fromA, fromB] = [0, 0];
    for (const [i, j] of [...pairs, [a.length, b.length]]) {
        const places = placesByKind(a, fromA, i, kindOf);
        for (; fromB < j; fromB += 1) {
            const alike = places.get(kindOf(b[fromB])) ?? [];
            while (alike.at(-1) < fromA)
                alike.pop();
            if (alike.length > 0) {
                fromA = alike.pop();
                result.push([fromA, fromB]);
                fromA += 1;
            }
        }
        if (i < a.length || j < b.length)
            result.push([i, j]);
        [fromA, fromB] = [i + 1, j + 1];
    }
    return result;
}

/** The last place of each kind comes first. */
function placesByKind(tokens, from, to, kindOf) {
    const places = new Map();
    for (let i = to - 1; i >= from; i -= 1) {
        const kind = kindOf(tokens[i]);
        if (kind === null)
            continue;
        if (!places.has(kind))
            places.set(kind, []);
        places.get(kind).push(i);
    }
    return places;
}

function reword(before, after, alikeSpace) {
    const kept = match(before.map(token => token.raw), after.map(token => token.raw));
    const isKept = new Set(kept.map(([, j]) => j));
    const textsOnly = token => (token.kind === 'text' ? 'text' : null);
    const words = after.map(token => token.raw);
    for (const [i, j] of fillGaps(kept, before, after, textsOnly))
        words[j] = isKept.has(j) ? before[i].source : rewordText(before[i], after[j].raw, alikeSpace);
    return words.join('');
}

// A character, as it may be written, and the end tags behind it that end nothing.
const UNITS = /(?:&(?:#\d+|#x[\da-f]+|[a-z]\w*);?|\r\n|[^<]|<(?!\/))(?:<\/[^>]*>)*|(?:<\/[^>]*>)+/gi;
const LONGEST_REFERENCE = 32;
const STRAY_TAGS = /<\/[^>]*>/g;
// Beside a change the browser makes spaces hard ones, to keep them visible, and line ends plain spaces.
const HARD_SPACE = /\u00a0/;
const ANY_SPACE = /[\u00a0\n\t\r]/;

/** A changed run of text: its beginning and end as they stand in the original. */
function rewordText(before, text, alikeSpace) {
    if (before.own === null || before.says !== before.key)
        return text;
    const [start, ownEnd, textEnd] = commonEnds(before.own, text);
    const [old, now] = [before.own.slice(start, ownEnd).match(UNITS) ?? [], text.slice(start, textEnd).match(UNITS) ?? []];
    const saying = unit => decode(unit.replace(STRAY_TAGS, '')).replace(alikeSpace, ' ');
    const same = (i, j) => old[i] === now[j] || saying(old[i]) === saying(now[j]);
    const limit = Math.min(old.length, now.length);
    let head = 0;
    while (head < limit && same(head, head))
        head += 1;
    let tail = 0;
    while (tail < limit - head && same(old.length - 1 - tail, now.length - 1 - tail))
        tail += 1;
    const stray = old.slice(head, old.length - tail).join('').match(STRAY_TAGS) ?? [];
    return [before.own.slice(0, start), ...old.slice(0, head), ...stray, ...now.slice(head, now.length - tail),
        ...old.slice(old.length - tail), before.own.slice(ownEnd)].join('');
}

/** How far two texts are the same from the beginning, and from where in each of them to the end. */
function commonEnds(a, b) {
    const limit = Math.min(a.length, b.length);
    let start = 0;
    while (start < limit && a[start] === b[start])
        start += 1;
    const reference = a.lastIndexOf('&', start - 1);
    if (reference >= start - LONGEST_REFERENCE && reference >= 0 && start > 0)
        start = reference; // it may go on in another way
    let end = 0;
    while (end < limit - start && a[a.length - 1 - end] === b[b.length - 1 - end])
        end += 1;
    if (a[a.length - end] === '\n' && a[a.length - end - 1] === '\r')
        end -= 1; // not between the two of a line end
    return [start, a.length - end, b.length - end];
}

/** Which elements and texts there are and how they are nested, with nothing of what they say. */
function skeleton(html) {
    const template = document.createElement('template');
    template.innerHTML = html;
    const outline = node => {
        let text = '';
        for (const child of node.childNodes) {
            if (child.nodeType === Node.ELEMENT_NODE)
                text += `(${child.localName}${outline(child)})`;
            else if (child.nodeType === Node.TEXT_NODE && child.data.trim() !== '' && !text.endsWith('#'))
                text += '#';
        }
        return text;
    };
    return outline(template.content);
}
