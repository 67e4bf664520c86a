// bundle.mjs OUT: makes the one file that the editor page is: each file more would cost a turn of the main thread. The
// channel's own script comes with Qt, and is put in when the page is served. The content policy names the style sheet and the
// script by their digests, so that nothing else in the page can be either.

import {build} from 'esbuild';
import {createHash} from 'node:crypto';
import {readFileSync, writeFileSync} from 'node:fs';

async function bundled(file) {
    const {outputFiles: [{text}]} = await build({
        entryPoints: [new URL(file, import.meta.url).pathname], bundle: true, format: 'iife', charset: 'utf8',
        target: 'chrome102', write: false, logLevel: 'warning',
    });
    return text;
}

const digest = text => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;

const STYLE = await bundled('editor.css');
const SCRIPT = `${await bundled('main.js')}//# sourceURL=zalmo://editor/main.js\n`;
const places = {STYLE, SCRIPT, STYLE_DIGEST: digest(STYLE), SCRIPT_DIGEST: digest(SCRIPT)};
const page = readFileSync(new URL('index.html', import.meta.url), 'utf8');
writeFileSync(process.argv[2], page.replace(/(?:STYLE|SCRIPT)(?:_DIGEST)?/g, name => places[name]));
