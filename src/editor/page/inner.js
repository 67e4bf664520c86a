// The children of an element that holds inner blocks. A block that is as it was keeps its comments; a new child gets
// comments of its own, and what stands beside the one element of a block becomes a block beside it.

import {fits, isSingleRoot, parseComment} from './blocks.js';
import {newBlock} from './newblocks.js';
import {isBlank, isComment, isInline} from './nodes.js';
import {endOfText} from './spaces.js';

export class InnerBlockWriter {
    constructor(serialiser) {
        this.serialiser = serialiser;
        this.text = '';
        this.open = null; // the block that the next node belongs to: its opening comment, and its nodes
        this.isAtDropped = false; // nothing stands before the next node but a block that is gone
    }

    add(node) {
        const comment = isComment(node) ? parseComment(node.data) : null;
        if (comment && !comment.isVoid && !comment.isCloser) {
            this.flush();
            this.isAtDropped = false;
            this.open = {comment, opener: node, nodes: []};
        } else if (this.open && comment?.isCloser) {
            this.close(node);
        } else if (this.open) {
            this.open.nodes.push(node);
        } else if (isNew(node, this.serialiser)) {
            this.separate(node);
        } else if (!this.isAtDropped || !isBlank(node)) {
            this.text += this.serialiser.form(node);
        }
    }

    /** A block without an end. */
    flush() {
        if (this.open)
            this.text += [this.open.opener, ...this.open.nodes].map(node => this.serialiser.form(node)).join('');
        this.open = null;
    }

    close(closer) {
        const {comment, opener, nodes} = this.open;
        const shown = nodes.filter(node => !isBlank(node) && !isComment(node));
        this.open = null;
        const keeper = shown.find(node => !isNew(node, this.serialiser)) ?? shown.find(node => fits(comment, node));
        if (shown.length === 0 && isSingleRoot(comment.name))
            return this.drop();
        const isAsItWas = !isSingleRoot(comment.name) || shown.some(isInline) || (shown.length === 1 && keeper);
        if (isAsItWas)
            this.text += [opener, ...nodes, closer].map(node => this.serialiser.form(node)).join('');
        else
            shown.forEach((node, n) => node === keeper ? this.kept(opener, node, closer, n > 0) : this.separate(node));
    }

    /** What was inside has been deleted: neither the comments stay nor the space before them. */
    drop() {
        this.text = this.text.slice(0, endOfText(this.text));
        this.isAtDropped = this.text === '';
    }

    kept(opener, node, closer, isBehindNew) {
        if (isBehindNew)
            this.gap();
        this.text += [opener, '\n', node, '\n', closer].map(part => part === '\n' ? part : this.serialiser.form(part)).join('');
    }

    separate(node) {
        this.gap();
        this.text += newBlock(this.serialiser, [node]);
    }

    /** Between a block and a new one beside it. */
    gap() {
        if (this.text !== '' && !this.text.endsWith('\n'))
            this.text += '\n\n';
    }
}

function isNew(node, serialiser) {
    return !isInline(node) && !isBlank(node) && !isComment(node) && !serialiser.context.loaded.has(node);
}
