// White space at the ends of a text, as HTML knows it. Patterns that end in "$" would try from each blank anew.

const isSpace = code => code === 32 || (code >= 9 && code <= 13 && code !== 11);

/** Where the text ends without its trailing white space. */
export function endOfText(text) {
    let end = text.length;
    while (end > 0 && isSpace(text.charCodeAt(end - 1)))
        end -= 1;
    return end;
}

export function trailingSpace(text) {
    return text.slice(endOfText(text));
}

export function leadingSpace(text) {
    let start = 0;
    while (start < text.length && isSpace(text.charCodeAt(start)))
        start += 1;
    return text.slice(0, start);
}

export function withoutLineEnds(text) {
    let end = text.length;
    while (end > 0 && text[end - 1] === '\n')
        end -= 1;
    return text.slice(0, end);
}
