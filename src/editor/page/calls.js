// Calls from the native side: a name, which is looked up in the table, and arguments, which stay data.

import {afterKeys} from './keys.js';

export function answerCalls(calls, functions) {
    calls.requested.connect(async (id, name, args, keysBefore) => {
        let value = null;
        await afterKeys(keysBefore);
        try {
            if (Object.hasOwn(functions, name))
                value = await functions[name](...args) ?? null;
        } catch (error) {
            console.error(`${name}: ${error.name}`);
        }
        calls.answered(id, value);
    });
}

/** The same functions under their names on the window, as the script contract has them. */
export function publish(functions) {
    for (const [name, value] of Object.entries(functions))
        Object.defineProperty(window, name, {value, enumerable: true});
}
