// Sets texts into the fields of a message, with the same records as "zeltrans fill" writes.

const kBlank = 32;
/** Value of next in the last record of a chain. */
const kChainEnd = 63;
/** The setter of a record that the form has. */
const kForm = -1;

/** Characters are set at half of their distances at the closest. */
const kSqueeze = 'squeeze', kCut = 'cut';

/**
 * @typedef {{row: Row, setters: number[]}} OpenRow  a row that is being filled, and for each record the field whose
 *     text it belongs to, or kForm.
 * @typedef {{removed: boolean[], chain: number[], cells: Cell[]}} Replacement  for each record whether it is removed,
 *     the row's records in reading order, and the new records.
 */

/** @param {Row} row */
function copyOfRow(row) {
    return Object.assign({}, row, {cells: row.cells.map(cell => /** @type {Cell} */ (cell.slice()))});
}

/**
 * The records of a row in reading order; null if its chain doesn't lead to each of them once.
 * @param {Row} row
 */
function chainOf(row) {
    /** @type {number[]} */
    const chain = [];
    const seen = new Set();
    for (let at = row.first; chain.length < row.cells.length; at = row.cells[at][5]) {
        if (at >= row.cells.length || seen.has(at)) return null;
        seen.add(at);
        chain.push(at);
    }
    return chain;
}

/**
 * @param {Field} field
 * @param {Cell} cell
 */
function isInField(field, cell) {
    return cell[0] >= field.start && cell[0] <= field.end;
}

/**
 * Positions of a text's characters from the start of a field on; null if there are none. All advances must fit into
 * the field, and each character must begin in it.
 * @param {number[]} advances  of each character to the next; not empty.
 * @param {Field} field
 * @param {number} most  number of characters for which the row has room.
 * @param {string} overflow  kSqueeze or kCut: how a text that is longer is set.
 * @param {Limits} limits
 */
function layOut(advances, field, most, overflow, limits) {
    const first = field.start + limits.xOffset, last = Math.min(field.end, limits.lastX);
    const room = field.end - field.start;
    const natural = [];
    let before = 0;
    for (const advance of advances) {
        if (before + advance > room || first + before > last) break;
        natural.push(first + before);
        before += advance;
    }
    const allowed = Math.min(natural.length, most);
    if (allowed === advances.length) return natural;
    if (overflow === kCut) return allowed > 0 ? natural.slice(0, allowed) : null;
    return advances.length > most ? null : squeezed(advances, first, last, room);
}

/**
 * The positions with all distances reduced in the same proportion; null if they would be less than half.
 * @param {number[]} advances
 * @param {number} first
 * @param {number} last
 * @param {number} room
 */
function squeezed(advances, first, last, room) {
    const lastAdvance = advances[advances.length - 1];
    const natural = advances.reduce((sum, advance) => sum + advance, 0) - lastAdvance;
    const present = Math.min(room - lastAdvance, last - first);
    if (present < 0 || 2 * present < natural) return null;
    let at = 0;
    return advances.map(advance => {
        const x = natural > present ? Math.floor((2 * at * present + natural) / (2 * natural)) : at;
        at += advance;
        return first + x;
    });
}

/** Fills a copy of a form's rows. */
class Filler {
    /** @param {LiveForm} form */
    constructor(form) {
        this.form = form;
        this.rows = form.rows.map(copyOfRow);
        /** @type {number[][]} */
        this.setters = form.rows.map(row => row.cells.map(() => kForm));
        /** @type {FieldNote[]} */
        this.faults = [];
        /** @type {FieldNote[]} */
        this.notes = [];
    }

    /**
     * Sets a text into a field, whose present text stays if there is a fault.
     * @param {number} index
     * @param {string} text  empty: the field is emptied.
     */
    fill(index, text) {
        const row = this.form.fields[index].row;
        const open = {row: this.rows[row], setters: this.setters[row]};
        const fault = text === '' ? this.empty(open, index) : this.set(open, index, text);
        if (fault !== '') this.faults.push({field: index, text: fault});
    }

    /** @param {number} slot */
    fontOf(slot) {
        const font = slot < this.form.slots.length ? this.form.slots[slot] : -1;
        return font >= 0 ? this.form.fonts[font] : null;
    }

    /**
     * The change that removes the characters of a field; null if the row's records can't be put in order.
     * @param {OpenRow} open
     * @param {Field} field
     * @returns {Replacement | null}
     */
    begin(open, field) {
        const chain = chainOf(open.row);
        if (chain === null) return null;
        return {removed: open.row.cells.map(cell => isInField(field, cell)), chain, cells: []};
    }

    /**
     * Empties a field. A text that was set into an overlapping field stays.
     * @param {OpenRow} open
     * @param {number} index
     * @returns {string}
     */
    empty(open, index) {
        const field = this.form.fields[index];
        if (!open.row.cells.some(cell => isInField(field, cell))) return '';
        const change = this.begin(open, field);
        if (change === null) return damagedChain(field);
        change.removed = change.removed.map((removed, n) => removed && open.setters[n] === kForm);
        if (change.removed.indexOf(true) >= 0) this.apply(open, change, index);
        return '';
    }

    /**
     * @param {OpenRow} open
     * @param {number} index
     * @param {string} text
     * @returns {string}
     */
    set(open, index, text) {
        const field = this.form.fields[index], font = this.fontOf(field.slot);
        if (field.fault !== '' || font === null || !font.advances) return field.fault || 'the font is missing';
        const codes = this.codesOf(index, text, font);
        return codes.length === 0 ? this.empty(open, index) : this.setCodes(open, index, codes, font);
    }

    /**
     * The codes of a text, without the characters that the font lacks.
     * @param {number} index
     * @param {string} text
     * @param {Font} font
     */
    codesOf(index, text, font) {
        const settable = new Set(font.settable);
        /** @type {number[]} */
        const codes = [];
        /** @type {Set<string>} */
        const lacking = new Set();
        for (const character of Array.from(text)) {
            const code = /** @type {number} */ (character.codePointAt(0));
            if (settable.has(code)) {
                codes.push(code);
            } else {
                lacking.add(character);
            }
        }
        if (lacking.size > 0) this.notes.push({field: index, text: lackingText(lacking, font)});
        return codes;
    }

    /**
     * @param {OpenRow} open
     * @param {number} index
     * @param {number[]} codes  not empty.
     * @param {Font} font
     * @returns {string}
     */
    setCodes(open, index, codes, font) {
        const field = this.form.fields[index], limits = this.form.limits;
        const change = this.begin(open, field);
        if (change === null) return damagedChain(field);
        const advances = codes.map(code => /** @type {number[]} */ (font.advances)[code]);
        const kept = change.removed.filter(removed => !removed).length;
        const most = limits.rowCharacters - kept;
        const x = layOut(advances, field, most, kSqueeze, limits) || layOut(advances, field, most, kCut, limits);
        if (x === null) return 'there is no room for a character';
        const rowLimits = limitsOf(open.row, font);
        const y = this.baselineOf(open.row, field, rowLimits, font);
        if (y < 0 || y > limits.lastY) return 'its characters would have the vertical position ' + y;
        change.cells = x.map((at, n) => /** @type {Cell} */ ([at, y, field.set, field.slot, codes[n], kChainEnd]));
        if (x.length < codes.length) {
            const cut = 'cut to the first ' + x.length + ' of ' + codes.length + ' characters';
            this.notes.push({field: index, text: cut});
        }
        open.row.top = rowLimits.top;
        open.row.bottom = rowLimits.bottom;
        this.apply(open, change, index);
        return '';
    }

    /**
     * The character that has the baseline of a field's text: one of the field, or else of the row, in the field's
     * font; or else one whose font is known; null if there is none.
     * @param {Row} row
     * @param {Field} field
     * @param {Font} font
     */
    neighbourOf(row, field, font) {
        /** @type {Cell | null} */
        let best = null;
        let bestRank = 0;
        for (const cell of row.cells) {
            const own = this.fontOf(cell[3]);
            if (own === null) continue;
            const rank = (own.number === font.number ? 2 : 0) + (isInField(field, cell) ? 1 : 0) + 1;
            if (rank > bestRank) best = cell;
            bestRank = Math.max(bestRank, rank);
        }
        return best;
    }

    /**
     * The y of a text's characters. In a row without characters the highest glyph of the font begins at the row's
     * upper limit.
     * @param {Row} row
     * @param {Field} field
     * @param {{top: number, bottom: number}} rowLimits
     * @param {Font} font
     */
    baselineOf(row, field, rowLimits, font) {
        const neighbour =
            this.neighbourOf(this.form.rows[field.row], field, font) || this.neighbourOf(row, field, font);
        const own = neighbour !== null ? this.fontOf(neighbour[3]) : null;
        if (neighbour === null || own === null) return rowLimits.top + font.highestTop;
        return neighbour[1] + own.topOffset - font.topOffset;
    }

    /**
     * Replaces records where they are, in the file's order and in the reading order; without any, the new ones come
     * last in both.
     * @param {OpenRow} open
     * @param {Replacement} change
     * @param {number} index
     */
    apply(open, change, index) {
        /** @type {Cell[]} */
        const cells = [];
        /** @type {number[]} */
        const setters = [];
        /** @type {number[]} */
        const places = [];
        let firstNew = -1;
        const insert = () => {
            if (firstNew >= 0) return;
            firstNew = cells.length;
            for (const cell of change.cells) {
                cells.push(cell);
                setters.push(index);
            }
        };
        open.row.cells.forEach((cell, n) => {
            if (change.removed[n]) {
                insert();
                return;
            }
            places[n] = cells.length;
            cells.push(cell);
            setters.push(open.setters[n]);
        });
        insert();

        /** @type {number[]} */
        const chain = [];
        let hasNew = false;
        const linkNew = () => {
            if (!hasNew) change.cells.forEach((_, n) => chain.push(firstNew + n));
            hasNew = true;
        };
        for (const at of change.chain) {
            if (change.removed[at]) {
                linkNew();
            } else {
                chain.push(places[at]);
            }
        }
        linkNew();

        chain.forEach((at, n) => { cells[at][5] = n + 1 === chain.length ? kChainEnd : chain[n + 1]; });
        open.row.first = chain.length === 0 ? 0 : chain[0];
        open.row.cells = cells;
        open.row.empty = cells.length === 0;
        this.setters[this.form.fields[index].row] = setters;
    }
}

/** Characters that a note names. */
const kMostNamed = 5;

/**
 * @param {Set<string>} lacking
 * @param {Font} font
 */
function lackingText(lacking, font) {
    const names = Array.from(lacking).slice(0, kMostNamed).map(character => JSON.stringify(character)).join(', ');
    const more = lacking.size > kMostNamed ? ' and ' + (lacking.size - kMostNamed) + ' more' : '';
    return 'font ' + font.number + ' "' + font.name + '" has no glyph for ' + names + more;
}

/** @param {Field} field */
function damagedChain(field) {
    return 'the characters of row ' + field.row + ' aren\'t linked one after another';
}

/**
 * An empty row takes its limits from the font.
 * @param {Row} row
 * @param {Font} font
 */
function limitsOf(row, font) {
    if (!row.empty || font.rowTop === 0 || font.rowBottom === 0 || font.keepsLimits)
        return {top: row.top, bottom: row.bottom};
    return {top: font.rowTop & 0x3FF, bottom: Math.min(row.bottom, font.rowBottom & 0x3FF)};
}

/**
 * Sets texts into the fields of a form, in the order of the fields. All other fields stay as they are.
 * @param {LiveForm} form
 * @param {Map<number, string>} values  by the field's index.
 */
function fillFields(form, values) {
    const filler = new Filler(form);
    form.fields.forEach((_, index) => {
        const text = values.get(index);
        if (text !== undefined) filler.fill(index, text);
    });
    return filler;
}
