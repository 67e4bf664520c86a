// Cuts HTML text into tags, comments and runs of text, by the rules of a browser's tokenizer.

import {ESCAPABLE_RAW_TEXT, RAW_TEXT, VOID_ELEMENTS} from './constants.js';

const SPACE = /\s/;
const NAME = /<(\/?)([a-zA-Z][^\s/>]*)/y;
/** These end tags say something even where there is nothing to end. */
const NEVER_STRAY = /^(?:p|br|h[1-6])$/;
/** The parser takes the first line end in these away. */
const DROPS_LINE_END = new Set(['pre', 'listing', 'textarea']);

/** @returns {{kind: string, name: string, raw: string, key: string}[]} whose `raw` joined are the text */
export function tokenise(html) {
    const tokens = [];
    let textStart = 0;
    let at = 0;
    const flush = end => {
        if (end > textStart)
            tokens.push(textToken(html.slice(textStart, end)));
    };
    while ((at = html.indexOf('<', at)) >= 0) {
        const token = tokenAt(html, at);
        if (!token) {
            at += 1;
            continue;
        }
        flush(at);
        tokens.push(token);
        at += token.raw.length;
        textStart = at;
        if (token.kind === 'start' && (RAW_TEXT.has(token.name) || ESCAPABLE_RAW_TEXT.has(token.name)))
            at = rawTextEnd(html, at, token.name);
    }
    flush(html.length);
    return tokens;
}

/** Puts end tags that end nothing, of which a parser makes nothing, to the text or the tag before them. */
export function withStrayEnds(tokens) {
    const open = new Map();
    const count = (name, change) => open.set(name, (open.get(name) ?? 0) + change);
    const result = [];
    let pending = ''; // stray tags at the very beginning
    for (const token of tokens) {
        const last = result.at(-1);
        if (token.kind === 'end' && !open.get(token.name) && !NEVER_STRAY.test(token.name)) {
            if (last)
                last.raw += token.raw;
            else
                pending += token.raw;
            continue;
        }
        if (token.kind === 'start' && !VOID_ELEMENTS.has(token.name))
            count(token.name, 1);
        else if (token.kind === 'end' && open.get(token.name))
            count(token.name, -1);
        if (token.kind === 'text' && last?.kind === 'text') {
            last.raw += token.raw;
            last.key += token.key.slice(1);
        } else {
            result.push({...token, raw: pending + token.raw});
            pending = '';
        }
    }
    return result;
}

/** What a run of text says; a parser knows no other line end than "\n". */
export function decode(text) {
    const lines = text.includes('\r') ? text.replace(/\r\n?/g, '\n') : text;
    if (!lines.includes('&'))
        return lines;
    const template = document.createElement('template');
    template.innerHTML = lines.replaceAll('<', '&lt;');
    return template.content.textContent;
}

function textToken(raw) {
    return {kind: 'text', name: '', raw, key: 't' + decode(raw)};
}

function tokenAt(html, at) {
    NAME.lastIndex = at;
    const match = NAME.exec(html);
    if (match) {
        const kind = match[1] ? 'end' : 'start';
        const name = match[2].toLowerCase();
        return {kind, name, raw: html.slice(at, tagEnd(html, at + match[0].length, kind, name)), key: kind + name};
    }
    if (html[at + 1] !== '!' && html[at + 1] !== '?')
        return null;
    const closing = html.startsWith('<!--', at) ? '-->' : '>';
    const found = html.indexOf(closing, at + 2);
    const raw = html.slice(at, found < 0 ? html.length : found + closing.length);
    return {kind: 'comment', name: '', raw, key: raw};
}

function tagEnd(html, at, kind, name) {
    const end = closingBracket(html, at);
    if (kind !== 'start' || !DROPS_LINE_END.has(name))
        return end;
    return html.startsWith('\r\n', end) ? end + 2 : html[end] === '\n' || html[end] === '\r' ? end + 1 : end;
}

function closingBracket(html, at) {
    let afterEquals = false; // a quote opens a value only behind "="
    for (; at < html.length; at += 1) {
        const c = html[at];
        if (c === '>')
            return at + 1;
        if (afterEquals && (c === '"' || c === '\'')) {
            at = html.indexOf(c, at + 1);
            if (at < 0)
                return html.length;
        }
        if (!SPACE.test(c))
            afterEquals = c === '=';
    }
    return html.length;
}

function rawTextEnd(html, at, name) {
    const match = new RegExp('</' + name, 'i').exec(html.slice(at));
    return match ? at + match.index : html.length;
}
