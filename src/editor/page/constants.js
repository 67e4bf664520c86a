// What the page's modules agree on, as data.

import elements from '../../text/elements.json';

/** Attributes of the page's own begin so; they never leave it. */
export const OWN_PREFIX = 'data-zalmo-';
/** An attribute of the body that must not work here: kept under its name with this in front. */
export const HELD_PREFIX = 'data-zalmo-held-';
/** A box that stands for what is not shown; the value is its key. */
export const INERT = 'data-zalmo-inert';
/** What the program turned into something else for the editor; the value is the key of the stored text. */
export const STORED = 'data-zalmo-stored';
/** A top-level element that was copied; the value is the key of the piece that it was. */
export const BLOCK = 'data-zalmo-block';
/** The fold. */
export const MORE = 'data-zalmo-more';
/** A video or other embed; its text is the shortcode. */
export const EMBED = 'data-zalmo-embed';
/** Details that are closed on the blog; here one has to see what is in them. */
export const OPENED = 'data-zalmo-opened';
/** The address that the content has for a picture which is shown from another one. */
export const SOURCE = 'data-zalmo-src';
/** Part of the contract with the native side, and kept in the blog's form. */
export const FEATURED = 'data-zalmo-featured-image';

/** The picture that is being inserted or edited. */
export const CURRENT_IMAGE_ID = 'current_editing_image';
/** What stands for "no link" in addImage. */
export const NO_LINK = '(null)';

export const VOID_ELEMENTS = new Set(elements.void);
export const BLOCK_ELEMENTS = new Set(elements.block);
/** Elements that no paragraph can hold. */
export const CLOSES_PARAGRAPH = new Set(elements.closesParagraph);
/** Elements that stand within a line. */
export const PHRASING = new Set(elements.phrasing);
/** Elements whose text the tokenizer takes as it is. */
export const RAW_TEXT = new Set(elements.rawText);
/** The same, but for character references. */
export const ESCAPABLE_RAW_TEXT = new Set(elements.escapableRawText);
/** Elements that are shown as a box, with the name on it. */
export const BOXED_ELEMENTS = elements.boxed;
/** Attributes that hold an address. */
export const ADDRESS_ATTRIBUTES = new Set(elements.addressAttributes);
/** Attributes that would change how the page itself behaves, or what it tells about itself. */
export const HELD_ATTRIBUTES = new Set(elements.heldAttributes);
/** Which block an element makes. */
export const BLOCK_OF = elements.blockOf;
/** Blocks that hold exactly one element. */
export const SINGLE_ROOT_BLOCKS = new Set(elements.singleRootBlocks);
