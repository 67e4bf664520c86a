// Cuts HTML text into tags, comments and runs of text, by the rules of a browser's tokenizer.

const RAW_TEXT = new Set(['script', 'style', 'textarea', 'title', 'xmp', 'iframe', 'noembed', 'noframes']);
const SPACE = /\s/;

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
        if (token.kind === 'start' && RAW_TEXT.has(token.name))
            at = rawTextEnd(html, at, token.name);
    }
    flush(html.length);
    return tokens;
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
    const match = /^<(\/?)([a-zA-Z][^\s/>]*)/.exec(html.slice(at, at + 80));
    if (match) {
        const kind = match[1] ? 'end' : 'start';
        const name = match[2].toLowerCase();
        return {kind, name, raw: html.slice(at, tagEnd(html, at + match[0].length)), key: kind + name};
    }
    if (!/^<[!?]/.test(html.slice(at, at + 2)))
        return null;
    const closing = html.startsWith('<!--', at) ? '-->' : '>';
    const found = html.indexOf(closing, at + 2);
    const raw = html.slice(at, found < 0 ? html.length : found + closing.length);
    return {kind: 'comment', name: '', raw, key: raw};
}

function tagEnd(html, at) {
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
