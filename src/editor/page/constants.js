// What the page's modules agree on, as data.

/** Attributes of the page's own begin so; they never leave it. */
export const OWN_PREFIX = 'data-zalmo-';
/** An attribute of the body that must not work here: kept under its name with this in front. */
export const HELD_PREFIX = 'data-zalmo-held-';
/** A box that stands for what is not shown; the value is its number. */
export const INERT = 'data-zalmo-inert';
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

/** Stands beside a box at the edge of a paragraph, since the cursor needs a text to be in. */
export const CURSOR_PLACE = '\ufeff';

export const EMPTY_BODY = '<p><br></p>';

const words = text => new Set(text.split(' '));

export const VOID_ELEMENTS = words('area base br col embed hr img input link meta param source track wbr');

export const BLOCK_ELEMENTS = words(
    'address article aside blockquote center details dialog dd dir div dl dt fieldset figcaption figure footer h1 h2 h3 ' +
    'h4 h5 h6 header hgroup hr legend li main menu nav ol p pre section summary table tbody td tfoot th thead tr ul');

/** Elements that are shown as a box, with the name on it. */
export const BOXED_ELEMENTS = {
    script: 'Script', noscript: 'No-script text', template: 'Template', style: 'Style sheet', link: 'Link to a resource',
    meta: 'Page data', base: 'Base address', title: 'Page title', iframe: 'Frame', frame: 'Frame', frameset: 'Frames',
    noframes: 'Frame text', portal: 'Frame', fencedframe: 'Frame', object: 'Object', embed: 'Plug-in', applet: 'Applet',
    param: 'Parameter', noembed: 'Plug-in text', form: 'Form', input: 'Form field', button: 'Button', select: 'Form field',
    textarea: 'Form field', option: 'Form field', optgroup: 'Form field', datalist: 'Form field', output: 'Form field',
    keygen: 'Form field', isindex: 'Form field', video: 'Video', audio: 'Audio', source: 'Media', track: 'Media',
    svg: 'Drawing', math: 'Formula', canvas: 'Canvas', xmp: 'Plain text', listing: 'Plain text', plaintext: 'Plain text',
    slot: 'Slot', dialog: 'Dialog', marquee: 'Marquee', bgsound: 'Audio',
};

/** Attributes that hold an address. */
export const ADDRESS_ATTRIBUTES = words(
    'href src srcset action formaction xlink:href poster background data cite longdesc lowsrc dynsrc ping');

/** Attributes that would change how the page itself behaves. */
export const HELD_ATTRIBUTES = words('contenteditable autofocus tabindex accesskey popover inert is slot');
