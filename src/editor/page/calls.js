// The road from the program to the page: a name, which is looked up in the table of main.js, and arguments, which stay
// data.

import {afterKeys} from './keys.js';

export function answerCalls(calls, functions) {
    calls.requested.connect(async (id, name, args, keysBefore) => {
        let value = null;
        await afterKeys(keysBefore);
        try {
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
