// The shortest edit between two lists of keys (the greedy algorithm of Myers), as the list of kept pairs.

const MOST_EDITS = 400;

/** @returns {[number, number][]} pairs of indices of equal keys, both rising */
export function match(a, b) {
    let from = 0;
    while (from < a.length && from < b.length && a[from] === b[from])
        from += 1;
    let endA = a.length;
    let endB = b.length;
    while (endA > from && endB > from && a[endA - 1] === b[endB - 1]) {
        endA -= 1;
        endB -= 1;
    }
    const pairs = Array.from({length: from}, (_, i) => [i, i]);
    for (const [i, j] of middle(a.slice(from, endA), b.slice(from, endB)))
        pairs.push([i + from, j + from]);
    for (let i = 0; endA + i < a.length; i += 1)
        pairs.push([endA + i, endB + i]);
    return pairs;
}

function middle(a, b) {
    if (a.length === 0 || b.length === 0)
        return [];
    const trace = []; // for each number of edits: how far into `a` one comes on each diagonal
    let furthest = new Map([[1, 0]]);
    for (let edits = 0; edits <= Math.min(MOST_EDITS, a.length + b.length); edits += 1) {
        trace.push(furthest);
        furthest = new Map(furthest);
        for (let k = -edits; k <= edits; k += 2) {
            let {x} = origin(furthest, k, edits);
            while (x < a.length && x - k < b.length && a[x] === b[x - k])
                x += 1;
            furthest.set(k, x);
            if (x >= a.length && x - k >= b.length)
                return walkBack(trace, a.length, b.length);
        }
    }
    return []; // too different to be worth the search
}

/** The diagonal from which the last edit came to diagonal k, and where on k it arrived. */
function origin(furthest, k, edits) {
    const [left, right] = [furthest.get(k - 1) ?? -1, furthest.get(k + 1) ?? -1];
    const isInsertion = k === -edits || (k !== edits && left < right);
    return isInsertion ? {from: k + 1, x: right} : {from: k - 1, x: left + 1};
}

function walkBack(trace, x, y) {
    const pairs = [];
    for (let edits = trace.length - 1; edits >= 0; edits -= 1) {
        const {from, x: start} = origin(trace[edits], x - y, edits);
        while (x > start && x > 0 && y > 0) {
            x -= 1;
            y -= 1;
            pairs.push([x, y]);
        }
        x = trace[edits].get(from);
        y = x - from;
    }
    return pairs.reverse();
}
