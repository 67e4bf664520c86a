// Addresses in the markup of a body.

/** Whether following the address would run something. A picture may hold its data itself. */
export function isScriptAddress(address, isPicture = false) {
    const plain = address.replace(/[\u0000-\u0020]/g, '').toLowerCase();
    if (plain.startsWith('data:'))
        return !isPicture;
    return /^(?:java|vb|live)script:/.test(plain);
}

/** Properties whose pictures are fetched like any other; the rest of them tell the server where they are asked from. */
const PLAIN_PICTURES = new Set(['background-image', 'list-style-image', 'border-image-source']);

/** Whether a style attribute would fetch something in a way that gives this program away. */
export function fetchesInCORSMode(style) {
    for (const property of Array.from(style)) {
        const value = style.getPropertyValue(property);
        if (property.startsWith('--') || value === '') // a variable, or what hangs on one
            return true;
        if (/\b(?:url|image|image-set|src)\(/i.test(value) && !PLAIN_PICTURES.has(property))
            return true;
    }
    return false;
}
