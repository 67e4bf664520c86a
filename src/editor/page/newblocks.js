// Nodes that a body of the block editor did not come with, as blocks of their kind.

import {closeBlock, kindOf, openBlock} from './blocks.js';
import {isBlank, isInline, isList, withoutWrappers} from './nodes.js';

export function newBlock(serialiser, nodes) {
    const [node] = nodes;
    const kind = kindOf(node);
    return openBlock(kind, node) + markup(serialiser, kind, nodes) + closeBlock(kind);
}

function markup(serialiser, kind, nodes) {
    const [node] = nodes;
    const inside = () => serialiser.joined(node.childNodes, true);
    switch (kind) {
    case 'paragraph':
        return `<p>${node.localName === 'p' || node.localName === 'div' ? inside() : serialiser.joined(nodes, true)}</p>`;
    case 'list':
        return list(serialiser, node);
    case 'list-item':
        return listItem(serialiser, node);
    case 'quote':
        return `<blockquote class="wp-block-quote">${quoteContent(serialiser, node)}</blockquote>`;
    case 'preformatted':
        return `<pre class="wp-block-preformatted">${inside()}</pre>`;
    case 'code':
        return `<pre class="wp-block-code">${inside()}</pre>`;
    case 'separator':
        return '<hr class="wp-block-separator has-alpha-channel-opacity"/>';
    case 'image':
        return node.localName === 'figure' ? serialiser.form(node) : `<figure class="wp-block-image">${serialiser.form(node)}</figure>`;
    case 'table':
        return node.localName === 'table' ? `<figure class="wp-block-table">${serialiser.form(node)}</figure>` : serialiser.form(node);
    default:
        return serialiser.joined(nodes, false);
    }
}

function list(serialiser, element) {
    const items = serialiser.nestLists(element).filter(node => !isBlank(node)).map(item => {
        const inner = item.localName === 'li' ? listItem(serialiser, item) : `<li>${serialiser.form(item)}</li>`;
        return openBlock('list-item', item) + inner + closeBlock('list-item');
    });
    return `<${element.localName}>${items.join('\n\n')}</${element.localName}>`;
}

function listItem(serialiser, item) {
    const nodes = [...item.childNodes, ...serialiser.listsBeside(item)];
    if (item.lastChild?.localName === 'br')
        nodes.splice(item.childNodes.length - 1, 1);
    return `<li>${nodes.map(node => isList(node) ? newBlock(serialiser, [node]) : serialiser.form(node)).join('')}</li>`;
}

function quoteContent(serialiser, quote) {
    const runs = [];
    for (const node of withoutWrappers(quote.childNodes)) {
        if (isInline(node) && runs.length > 0 && isInline(runs.at(-1)[0]))
            runs.at(-1).push(node);
        else if (!isBlank(node))
            runs.push([node]);
    }
    return runs.map(nodes => newBlock(serialiser, nodes)).join('\n\n');
}
