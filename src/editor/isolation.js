// Runs first in the isolated world in which a body is evaluated. Elements and events are shared with the page, so what
// could reach them, the network or a later moment is taken out of this world; the page's own world is not touched.
(() => {
    const language = new Set(Object.getOwnPropertyNames(globalThis).filter(name =>
        /^(Object|Function|Array|Number|String|Boolean|Symbol|Date|RegExp|Math|JSON|BigInt|(\w*Error)|NaN|Infinity|undefined|globalThis|eval|parse(Int|Float)|is(NaN|Finite)|(en|de)codeURI(Component)?|Map|Set|WeakMap|WeakSet|Reflect|Proxy|Intl|(Big)?(Ui|I)nt\d+(Clamped)?Array|Float\d+Array|ArrayBuffer|DataView)$/.test(name)));
    const empty = object => {
        for (const key of Reflect.ownKeys(object))
            Reflect.deleteProperty(object, key);
    };
    for (const name of Object.getOwnPropertyNames(globalThis)) {
        if (language.has(name))
            continue;
        const value = Reflect.getOwnPropertyDescriptor(globalThis, name).value;
        if (typeof value === 'function' && value.prototype)
            empty(value.prototype);
        Reflect.deleteProperty(globalThis, name);
    }
    empty(Promise.prototype);
})();
