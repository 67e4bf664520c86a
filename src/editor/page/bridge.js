// The one place that knows the channel to the program.

/** Resolves with the program's objects: `Bridge`, which takes the page's reports, and `Calls`, which asks the page. */
export function connect() {
    return new Promise(resolve => {
        new QWebChannel(qt.webChannelTransport, channel => resolve(channel.objects));
    });
}
