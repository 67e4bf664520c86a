// The blog's form of the page's nodes: clean HTML without anything that the page added.

import {
    BLOCK_ELEMENTS, CURRENT_IMAGE_ID, EMBED, FEATURED, HELD_PREFIX, INERT, MORE, OPENED, OWN_PREFIX, RAW_TEXT, STORED,
    VOID_ELEMENTS,
} from './constants.js';
import {isInnerBlocks} from './blocks.js';
import {sourceOfBox} from './inert.js';
import {InnerBlockWriter} from './inner.js';
import {contentAddress} from './media.js';
import {newBlock} from './newblocks.js';
import {isBlank, isComment, isElement, isList, isText, withoutWrappers} from './nodes.js';
import {originalOf} from './originals.js';

/** The parser takes the first line end in these away. */
const KEEPS_LINE_END = new Set(['pre', 'listing', 'textarea']);

/**
 * @param context.isBlockEditor whether inner blocks get their comments
 * @param context.loaded        WeakSet of the elements that the body came with
 * @param context.localImages   Map of local addresses to the remote ones that they stand for
 * @param context.knownStyles   Set of the style attributes that the body came with; all others are the browser's own
 */
export class Serialiser {
    constructor(context) {
        this.context = context;
        this.nested = new WeakMap(); // item of a list, to the lists beside it that belong into it
    }

    form(node) {
        if (isText(node))
            return this.text(node);
        if (isComment(node))
            return `<!--${node.data}-->`;
        return isElement(node) ? this.element(node) : '';
    }

    text({data, parentNode}) {
        if (RAW_TEXT.has(parentNode?.localName))
            return data;
        return data.replaceAll('&', '&amp;').replaceAll('<', '&lt;').replaceAll('>', '&gt;').replaceAll('\u00a0', '&nbsp;');
    }

    element(element) {
        if (element.hasAttribute(INERT))
            return sourceOfBox(element);
        const converted = originalOf(element, STORED);
        if (!converted)
            return this.ownForm(element);
        const form = this.ownForm(element);
        converted.form ??= form; // the first one is that of the loading
        return converted.form === form ? converted.stored : form;
    }

    ownForm(element) {
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
        const line = KEEPS_LINE_END.has(name) && element.firstChild?.data?.startsWith('\n') ? '\n' : '';
        return `<${tag}>${line}${this.inside(element)}</${name}>`;
    }

    inside(element) {
        const nested = this.listsBeside(element);
        const children = isList(element) ? this.nestLists(element) : [...element.childNodes];
        const isBlock = BLOCK_ELEMENTS.has(element.localName);
        if (!this.context.isBlockEditor)
            return this.joined([...children, ...nested], isBlock);
        const form = isInnerBlocks(element) ? this.innerBlocks(children) : this.joined(children, isBlock);
        return form + nested.map(list => newBlock(this, [list])).join('');
    }

    /** Chromium puts an indented item into a list beside the item before; the blog has that list within the item. */
    nestLists(list) {
        const children = [];
        let item = null;
        let isBehindNested = false;
        for (const node of list.childNodes) {
            if (isBehindNested && isBlank(node))
                continue;
            isBehindNested = item !== null && isList(node) && !this.context.loaded.has(node);
            if (isBehindNested) {
                this.nested.get(item).push(node);
                continue;
            }
            children.push(node);
            if (node.localName === 'li') {
                item = node;
                this.nested.set(item, []);
            }
        }
        return children;
    }

    /** The lists that belong into an item, and stand beside it. */
    listsBeside(item) {
        return this.nested.get(item) ?? [];
    }

    /** A line break at the end of a block is there for the cursor only. */
    joined(nodes, isBlock) {
        const shown = withoutWrappers(nodes);
        if (isBlock && shown.at(-1)?.localName === 'br')
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

    innerBlocks(children) {
        const writer = new InnerBlockWriter(this);
        for (const node of withoutWrappers(children))
            writer.add(node);
        writer.flush();
        return writer.text;
    }
}
