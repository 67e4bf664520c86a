// The one place that knows the channel to the native side.

/** Resolves with the native objects: Bridge and Calls. */
export function connect() {
    return new Promise(resolve => {
        new QWebChannel(qt.webChannelTransport, channel => resolve(channel.objects));
    });
}
