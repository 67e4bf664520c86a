// The blog's form of the page's nodes: clean HTML without anything that the page added.

import {
    BLOCK_ELEMENTS, CURRENT_IMAGE_ID, CURSOR_PLACE, EMBED, FEATURED, HELD_PREFIX, INERT, MORE, OPENED, OWN_PREFIX, VOID_ELEMENTS,
} from './constants.js';
import {sourceOfBox} from './inert.js';
import {contentAddress} from './media.js';
import {closeBlock, isInnerBlocks, isSingleRoot, kindOf, openBlock, parseComment} from './blocks.js';

const RAW_TEXT = new Set(['style', 'script', 'xmp', 'iframe', 'noembed', 'noframes', 'plaintext']);
const NOT_EMPTY = `img,hr,table,figure,[${INERT}],[${EMBED}],[${MORE}],br+br`;

export function isText(node) {
    return node.nodeType === Node.TEXT_NODE;
}

export function isElement(node) {
    return node.nodeType === Node.ELEMENT_NODE;
}

export function isBlank(node) {
    return isText(node) && /^[ \n\t\r\f]*$/.test(node.data);
}

export function isInline(node) {
    if (isElement(node))
        return !BLOCK_ELEMENTS.has(node.localName);
    return isText(node);
}

/** Whether a reader would see nothing of these nodes. */
export function isVoidOfContent(nodes) {
    return nodes.every(node => node.nodeType === Node.COMMENT_NODE
        || (node.textContent.replace(/[\s\u00a0\u200b\ufeff]/g, '') === '' && !(isElement(node)
            && (node.matches(NOT_EMPTY) || node.querySelector(NOT_EMPTY)))));
}

/**
 * @param context.isBlockEditor whether inner blocks get their comments
 * @param context.loaded        WeakSet of the elements that the body came with
 * @param context.localImages   Map of local addresses to the remote ones that they stand for
 * @param context.knownStyles   Set of the style attributes that the body came with; all others are the browser's own
 */
export class Serialiser {
    constructor(context) {
        this.context = context;
    }

    form(node) {
        if (isText(node))
            return this.text(node);
        if (node.nodeType === Node.COMMENT_NODE)
            return `<!--${node.data}-->`;
        return isElement(node) ? this.element(node) : '';
    }

    text(node) {
        const data = node.data.replaceAll(CURSOR_PLACE, '');
        if (RAW_TEXT.has(node.parentNode?.localName))
            return data;
        return data.replaceAll('&', '&amp;').replaceAll('<', '&lt;').replaceAll('>', '&gt;').replaceAll('\u00a0', '&nbsp;');
    }

    element(element) {
        if (element.hasAttribute(INERT))
            return sourceOfBox(element);
        if (element.hasAttribute(MORE))
            return '<!--more-->';
        if (element.hasAttribute(EMBED))
            return element.firstElementChild ? this.inside(element) : element.textContent;
        if (this.isBrowsersSpan(element))
            return this.inside(element);
        const name = element.localName;
        const tag = name + this.attributes(element);
        if (VOID_ELEMENTS.has(name))
            return name === 'br' || name === 'wbr' ? `<${tag}>` : `<${tag} />`;
        return `<${tag}>${this.inside(element)}</${name}>`;
    }

    inside(element) {
        if (this.context.isBlockEditor && isInnerBlocks(element))
            return this.innerBlocks(element);
        return this.joined(element.childNodes, BLOCK_ELEMENTS.has(element.localName));
    }

    /** A line break at the end of a block is there for the cursor only. */
    joined(nodes, isBlock) {
        const shown = [...nodes];
        if (isBlock && shown.length > 0 && shown.at(-1).localName === 'br')
            shown.pop();
        return shown.map(node => this.form(node)).join('');
    }

    attributes(element) {
        let text = '';
        for (const attribute of element.attributes) {
            const name = this.nameOf(element, attribute);
            if (name)
                text += ` ${name}="${this.valueOf(element, attribute)}"`;
        }
        return text;
    }

    nameOf(element, {name, value}) {
        if (name.startsWith(HELD_PREFIX))
            return name.slice(HELD_PREFIX.length);
        if (name.startsWith(OWN_PREFIX) && name !== FEATURED)
            return '';
        if (name === 'open' && element.hasAttribute(OPENED))
            return '';
        if (name === 'id' && value === CURRENT_IMAGE_ID)
            return '';
        if (name === 'style' && !this.context.knownStyles.has(value))
            return '';
        return name;
    }

    valueOf(element, {name, value}) {
        let text = name === 'src' ? contentAddress(element) : value;
        if (name === 'src' || name === 'href')
            text = this.context.localImages.get(text) ?? text;
        return text.replaceAll('&', '&amp;').replaceAll('"', '&quot;').replaceAll('\u00a0', '&nbsp;');
    }

    /** The browser wraps joined text into spans (and font elements) that carry the look it had before. */
    isBrowsersSpan(element) {
        if (element.localName !== 'span' && element.localName !== 'font')
            return false;
        const style = element.getAttribute('style');
        return style !== null && element.attributes.length === 1 && !this.context.knownStyles.has(style);
    }

    /** Children that stand between comments of the block editor; a new child gets comments of its own. */
    innerBlocks(element) {
        const writer = new InnerBlockWriter(this);
        for (const node of element.childNodes)
            writer.add(node);
        return writer.text;
    }

    /** A new element in a body of the block editor, with the comments of its kind. */
    newBlock(nodes) {
        const first = nodes[0];
        const kind = kindOf(first);
        return openBlock(kind, first) + this.blockMarkup(kind, nodes) + closeBlock(kind);
    }

    blockMarkup(kind, nodes) {
        const [node] = nodes;
        const inside = () => this.joined(node.childNodes, true);
        switch (kind) {
        case 'paragraph':
            return `<p>${node.localName === 'p' || node.localName === 'div' ? inside() : this.joined(nodes, true)}</p>`;
        case 'list':
            return this.newList(node);
        case 'list-item':
            return this.listItem(node);
        case 'quote':
            return `<blockquote class="wp-block-quote">${this.newQuoteContent(node)}</blockquote>`;
        case 'preformatted':
            return `<pre class="wp-block-preformatted">${inside()}</pre>`;
        case 'code':
            return `<pre class="wp-block-code">${inside()}</pre>`;
        case 'separator':
            return '<hr class="wp-block-separator has-alpha-channel-opacity"/>';
        case 'image':
            return this.newImage(node);
        case 'table':
            return node.localName === 'table' ? `<figure class="wp-block-table">${this.form(node)}</figure>` : this.form(node);
        default:
            return this.joined(nodes, false);
        }
    }

    newList(list) {
        const items = [...list.children].map(item => {
            const inner = item.localName === 'li' ? this.listItem(item) : `<li>${this.form(item)}</li>`;
            return openBlock('list-item', item) + inner + closeBlock('list-item');
        });
        return `<${list.localName}>${items.join('\n\n')}</${list.localName}>`;
    }

    listItem(item) {
        const content = [...item.childNodes].map(node => /^[uo]l$/.test(node.localName) ? this.newBlock([node]) : this.form(node));
        if (item.lastChild?.localName === 'br')
            content.pop();
        return `<li>${content.join('')}</li>`;
    }

    newQuoteContent(quote) {
        const runs = [];
        for (const node of quote.childNodes) {
            if (isInline(node) && runs.length > 0 && isInline(runs.at(-1)[0]))
                runs.at(-1).push(node);
            else if (!isBlank(node))
                runs.push([node]);
        }
        return runs.map(nodes => this.newBlock(nodes)).join('\n\n');
    }

    newImage(node) {
        if (node.localName === 'figure')
            return this.form(node);
        return `<figure class="wp-block-image">${this.form(node)}</figure>`;
    }
}

/** Writes the children of an element that holds inner blocks. */
class InnerBlockWriter {
    constructor(serialiser) {
        this.serialiser = serialiser;
        this.text = '';
        this.open = null; // the block that the next node belongs to
    }

    add(node) {
        const comment = node.nodeType === Node.COMMENT_NODE ? parseComment(node.data) : null;
        if (comment?.isCloser)
            this.closer(node);
        else if (comment && !comment.isVoid)
            this.opener(node, comment);
        else if (isBlank(node) || node.nodeType === Node.COMMENT_NODE)
            this.text += this.serialiser.form(node);
        else
            this.content(node);
    }

    opener(node, comment) {
        this.open = {name: comment.name, start: this.text.length, isFilled: false, isNew: false};
        this.text += this.serialiser.form(node);
    }

    closer(node) {
        if (this.open && !this.open.isFilled && isSingleRoot(this.open.name))
            this.text = this.text.slice(0, this.open.start); // what was inside has been deleted
        else if (this.open?.isNew)
            this.text = this.text.trimEnd() + closeBlock(this.open.name);
        else
            this.text += this.serialiser.form(node);
        this.open = null;
    }

    content(node) {
        const isNew = !isInline(node) && !this.serialiser.context.loaded.has(node);
        if (!this.open && isNew)
            return this.separate(node);
        if (!this.open || !isNew) {
            this.text += this.serialiser.form(node);
        } else if (this.open.isFilled && isSingleRoot(this.open.name)) {
            this.text = this.text.trimEnd() + closeBlock(this.open.name) + '\n\n';
            const kind = kindOf(node);
            this.open = {name: kind, start: this.text.length, isFilled: false, isNew: true};
            this.text += openBlock(kind, node) + this.serialiser.blockMarkup(kind, [node]) + '\n';
        } else {
            this.text += this.serialiser.form(node);
        }
        if (this.open)
            this.open.isFilled = true;
    }

    separate(node) {
        const gap = this.text === '' || this.text.endsWith('\n') ? '' : '\n\n';
        const kind = kindOf(node);
        this.text += gap + openBlock(kind, node) + this.serialiser.blockMarkup(kind, [node]) + closeBlock(kind);
    }
}
