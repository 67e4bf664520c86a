// The window's colours.

export function setTheme({paper, ink, accent, link, dark} = {}) {
    // An unset link colour arrives as the plain blue of old, which no theme wants.
    const linkColor = link === '#0000ff' ? undefined : link;
    const style = document.documentElement.style;
    const colors = {'--paper': paper, '--ink': ink, '--accent': accent, '--link': linkColor};
    for (const [name, color] of Object.entries(colors)) {
        if (color)
            style.setProperty(name, color);
    }
    if (ink)
        style.setProperty('--ink-rgb', channels(ink));
    if (accent)
        style.setProperty('--accent-rgb', channels(accent));
    style.colorScheme = dark ? 'dark' : 'light';
    document.documentElement.classList.toggle('is-dark', Boolean(dark));
}

function channels(color) {
    return [1, 3, 5].map(at => parseInt(color.slice(at, at + 2), 16)).join(' ');
}
