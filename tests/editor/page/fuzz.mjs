// fuzz.mjs [SECONDS [SEED]]: the page's model of a body under random edits, without a browser. What is not edited must
// stay as the blog has it, byte for byte; what is edited and put back must be again what it was.

import assert from 'node:assert';
import {mkdtempSync, rmSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import {build} from 'esbuild';
import {JSDOM} from 'jsdom';

const seconds = Number(process.argv[2] ?? 3);
const firstSeed = Number(process.argv[3] ?? 1);

const {window} = new JSDOM('<!doctype html><div id="content" contenteditable="true"></div>', {pretendToBeVisual: true});
window.scrollTo = () => {};
for (const name of ['document', 'Node', 'NodeFilter', 'MutationObserver', 'getSelection'])
    globalThis[name] = window[name];
globalThis.window = window;

const folder = mkdtempSync(join(tmpdir(), 'zalmo-fuzz-'));
const page = new URL('../../../src/editor/page/', import.meta.url).pathname;
await build({
    stdin: {contents: `export * from './editor.js'; export * from './tokens.js'; export * from './diff.js';
        export * from './pieces.js'`, resolveDir: page},
    bundle: true, format: 'esm', outfile: join(folder, 'page.mjs'), logLevel: 'warning',
});
const {Body, Editor, tokenise, match} = await import(join(folder, 'page.mjs'));
rmSync(folder, {recursive: true});

let state = 0;
const random = limit => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor(state / 2 ** 32 * limit);
};
const oneOf = list => list[random(list.length)];
const several = (most, make) => Array.from({length: 1 + random(most)}, make).join('');

const word = () => oneOf(['one', 'two', 'Zürich', 'a&b', '&amp;', '&mdash;', '&nbsp;', '<', '& c', '\ufeff', '\u00a0', '😀', '"q"', '>', "it's"]);
const space = () => oneOf([' ', ' ', ' ', '  ', '\t']);
const text = () => several(4, () => word() + space()).trim();
const attribute = () => oneOf(['', ' class=a', " id='b'", ' title="x &amp; y"', ' DATA-x', ' style="color:red"', ' onclick="x()"']);
const inline = () => oneOf([
    text, text, () => `<b>${text()}</b>`, () => `<A href='#'${attribute()}>${text()}</a>`, () => '<br/>', () => '<img src=x>',
    () => `<em${attribute()}>${text()}`, () => '</b>', () => '</span>', () => '<!-- c -->', () => '<input name=q>', () => '<script>x && y</script>',
])();
const phrase = () => several(3, () => inline() + space()).trim();
const element = () => oneOf([
    () => `<p${attribute()}>${phrase()}</p>`, () => `<h2>${text()}</h2>`, () => `<pre>\n\n\t${text()}\r\n\n${text()}</pre>`,
    () => `<ul>\n<li>${phrase()}</li>\n\n<li${attribute()}>${text()}\n</ul>`, () => `<blockquote><p>${phrase()}</p></blockquote>`,
    () => `<div${attribute()}>${phrase()}<p>${text()}</div>`, () => `<table><tr><td>${text()}</td></table>`, () => `<P>${phrase()}`,
    () => '<hr>', () => `<iframe src='x'></iframe>`, () => `<form>${text()}</form>`,
])();
const chunk = () => `${word()} ${text()}${oneOf(['', '\n', '\r\n'])}${phrase()}`;

function makePiece(isBlockEditor, isLast) {
    const tail = isLast ? oneOf(['', '\n', '\r\n']) : oneOf(['\n\n', '\n\n', '\r\n\r\n', '\n\n\n']);
    if (isBlockEditor) {
        const core = random(8) === 0 ? '<!-- wp:latest-posts /-->' : element();
        return {lead: '<!-- wp:x {"a":1} -->\n', core, tail: '\n<!-- /wp:x -->' + tail};
    }
    if (random(2) === 0)
        return {lead: '', core: element(), tail};
    const core = chunk();
    return {lead: '', core, tail, html: `<p>${core.replace(/\r\n|\n/g, '<br>')}</p>`};
}

const storedOf = ({lead, core, tail}) => lead + core + tail;

function textsIn(content) {
    const walker = document.createTreeWalker(content, NodeFilter.SHOW_TEXT);
    const texts = [];
    while (walker.nextNode()) {
        if (!walker.currentNode.parentElement.closest('[contenteditable="false"]') && walker.currentNode.data.trim() !== '')
            texts.push(walker.currentNode);
    }
    return texts;
}

/** Changes something within a node that shows a piece, and gives what undoes it. */
function edit(content) {
    const node = oneOf(textsIn(content));
    if (!node)
        return null;
    const before = node.data;
    const at = random(before.length + 1);
    const kind = random(3);
    if (kind === 0) {
        node.data = before.slice(0, at) + 'XYZ' + before.slice(at);
    } else if (kind === 1) {
        node.data = before.slice(0, at) + before.slice(at + 1 + random(3));
    } else {
        const bold = document.createElement('b');
        node.replaceWith(bold);
        bold.append(node);
        return {node, undo: () => bold.replaceWith(node)};
    }
    return {node, undo: () => { node.data = before; }};
}

function checkBody(seed) {
    state = seed;
    const isBlockEditor = random(3) === 0;
    const count = 1 + random(6);
    const pieces = Array.from({length: count}, (_, n) => makePiece(isBlockEditor, n === count - 1));
    const stored = pieces.map(storedOf).join('');
    const editor = new Editor(document.getElementById('content'), () => {});
    editor.load({pieces, isBlockEditor});
    assert.strictEqual(editor.text(), stored, 'a body comes back as it was');

    const done = [];
    const touched = new Set();
    for (let n = random(4); n >= 0; n -= 1) {
        const change = edit(editor.content);
        if (!change)
            break;
        touched.add(editor.body.owners.get(editor.topLevel(change.node)));
        done.push(change);
        editor.text();
    }
    if (random(4) === 0) { // and a new paragraph somewhere
        const paragraph = document.createElement('p');
        paragraph.textContent = 'new';
        oneOf([...editor.content.children]).after(paragraph);
        done.push({undo: () => paragraph.remove()});
    }
    const now = editor.text();
    let from = 0;
    for (const piece of editor.body.pieces.filter(each => !touched.has(each))) {
        const at = now.indexOf(storedOf(piece).trimEnd(), from);
        assert.ok(at >= 0, `an untouched piece is gone or changed: ${JSON.stringify(storedOf(piece))} in ${JSON.stringify(now)}`);
        from = at + storedOf(piece).trimEnd().length;
    }
    for (const {undo} of done.reverse())
        undo();
    assert.strictEqual(editor.text(), stored, 'what is put back is as it was');
}

function checkTokens(seed) {
    state = seed;
    const html = several(8, () => oneOf([inline, element, () => oneOf(['<', '</', '<!--', '<!x', '=\'', '">', '<title>', '<textarea>\n', '</p', '-->'])])());
    assert.strictEqual(tokenise(html).map(token => token.raw).join(''), html, 'tokens are the text');
}

function checkDiff(seed) {
    state = seed;
    const list = () => Array.from({length: random(12)}, () => 'abc'[random(3)]);
    const [a, b] = [list(), list()];
    const pairs = match(a, b);
    pairs.forEach(([i, j], n) => {
        assert.strictEqual(a[i], b[j], 'pairs are alike');
        assert.ok(n === 0 || (i > pairs[n - 1][0] && j > pairs[n - 1][1]), 'pairs rise');
    });
    assert.strictEqual(pairs.length, longestCommon(a, b), 'no pair is missed');
}

function longestCommon(a, b) {
    const lengths = Array.from({length: a.length + 1}, () => new Array(b.length + 1).fill(0));
    for (let i = a.length - 1; i >= 0; i -= 1) {
        for (let j = b.length - 1; j >= 0; j -= 1)
            lengths[i][j] = a[i] === b[j] ? 1 + lengths[i + 1][j + 1] : Math.max(lengths[i + 1][j], lengths[i][j + 1]);
    }
    return lengths[0][0];
}

const begin = performance.now();
new Body().withoutBrowsersSpaces(`<p title="${'<p '.repeat(40_000)}">a</p>`);
assert.ok(performance.now() - begin < 1000, 'attributes may hold markup without end');

const end = performance.now() + seconds * 1000;
let seed = firstSeed;
for (; performance.now() < end; seed += 1) {
    try {
        checkBody(seed);
        checkTokens(seed);
        checkDiff(seed);
    } catch (error) {
        console.error(`seed ${seed}: ${error.message}`);
        process.exit(1);
    }
}
console.log(`${seed - firstSeed} bodies, tokens and lists held`);
process.exit(0);
