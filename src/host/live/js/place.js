// The places of a message's glyphs in the picture, as an import of the message gives them.

/** Codes from here on have no glyph. */
const kCodes = 192;
/** Largest number of records of a row. */
const kRowCells = 63;
/** A record beyond the last one of its row. */
const kNoCell = /** @type {Cell} */ ([0, 0, 0, 0, 0, 0]);

/**
 * @param {number} value
 * @param {number} offset
 */
function inSixteenBits(value, offset) {
    return ((value + offset) & 0xFFFF) - offset;
}

/** Puts a blank into each field that has no character, as an import does for a template. */
class BlankMaker {
    /** @param {LiveForm} form */
    constructor(form) {
        this.form = form;
        /** @type {{slot: number, font: Font}[]}  the first slot of each font. */
        this.groups = [];
        /** @type {{slot: number, font: Font} | null} */
        this.lastMatch = null;
        form.slots.forEach((index, slot) => {
            const font = index >= 0 ? form.fonts[index] : null;
            if (font !== null && this.groups.every(group => group.font.number !== font.number))
                this.groups.push({slot, font});
        });
    }

    /**
     * The slot of the blank, and the font whose limits an empty row gets.
     * @param {Field} field
     * @param {Row} row
     */
    fontOf(field, row) {
        const hasSlot = field.tabSlot < this.form.slots.length;
        const own = this.groups.find(group => hasSlot ? group.slot === field.tabSlot
                                                      : group.font.rowTop === row.top &&
                                                            group.font.rowBottom === row.bottom);
        if (own) this.lastMatch = own;
        const group = this.lastMatch;
        return {slot: hasSlot || group === null ? field.tabSlot : group.slot, font: group === null ? null : group.font};
    }

    /**
     * @param {Field} field
     * @param {Row} row
     */
    make(field, row) {
        const offset = this.form.limits.xOffset;
        const {slot, font} = this.fontOf(field, row);
        const blank = /** @type {Cell} */ (
            [(field.start + offset) & this.form.limits.lastX, 0, field.set, slot & 63, kBlank, kChainEnd]);
        if (row.empty) {
            row.first = 0;
            row.cells = [blank];
            row.empty = false;
            if (font !== null) openRow(row, font);
            return;
        }
        const start = inSixteenBits(field.start, offset), end = inSixteenBits(field.end, offset);
        if (row.cells.length >= kRowCells || row.cells.some(cell => cell[0] >= start && cell[0] <= end)) return;
        row.cells.forEach(cell => {
            if (cell[5] === kChainEnd) cell[5] = row.cells.length;
        });
        row.cells.push(blank);
    }
}

/**
 * @param {Row} row
 * @param {Font} font
 */
function openRow(row, font) {
    if (font.rowTop === 0 || font.rowBottom === 0 || font.keepsLimits) return;
    row.top = font.rowTop & 0x3FF;
    if (row.bottom >= font.rowBottom) row.bottom = font.rowBottom & 0x3FF;
}

/** Finds the glyphs of a message and their places. */
class Placer {
    /**
     * @param {LiveForm} form
     * @param {GlyphStore} glyphs
     */
    constructor(form, glyphs) {
        this.form = form;
        this.glyphs = glyphs;
        /** Pixels that may still be covered. */
        this.left = 0;
    }

    /**
     * The glyphs by row, in the order in which they are drawn.
     * @param {Row[]} rows  as filled; fields without text get a blank here.
     */
    place(rows) {
        const blanks = new BlankMaker(this.form);
        for (const field of this.form.fields) blanks.make(field, rows[field.row]);
        this.left = this.form.limits.pixels;
        return rows.map(row => this.placeRow(row));
    }

    /**
     * Follows the chain of a row. A record without a slot is skipped; one without a font ends the row.
     * @param {Row} row
     */
    placeRow(row) {
        /** @type {PlacedGlyph[]} */
        const placed = [];
        if (row.empty) return placed;
        for (let step = 0, at = row.first; step < row.cells.length && at !== kChainEnd; ++step) {
            const cell = at < row.cells.length ? row.cells[at] : kNoCell;
            at = cell[5];
            if (cell[3] >= this.form.slots.length) continue;
            const font = this.form.slots[cell[3]];
            if (font < 0) break;
            const glyph = this.placeCell(row, cell, font);
            if (glyph !== null) placed.push(glyph);
        }
        return placed;
    }

    /**
     * @param {Row} row
     * @param {Cell} cell
     * @param {number} index  of the font.
     * @returns {PlacedGlyph | null}
     */
    placeCell(row, cell, index) {
        const code = cell[4] & 255, font = this.form.fonts[index];
        const glyph = code < kCodes ? this.glyphs.get(index, code, cell[2]) : null;
        if (glyph === null) return null;
        const left = cell[0] + this.form.limits.xOffset;
        const top = row.y + (cell[1] - font.tops[code]) - (row.top - font.topOffset);
        const placed = {glyph, left, top};
        return this.take(boxOf(placed)) ? placed : null;
    }

    /**
     * Takes the visible part of a box from the pixels that may be covered.
     * @param {Box} box
     */
    take(box) {
        const bounds = {left: 0, top: 0, right: this.form.width, bottom: this.form.height};
        const visible = intersection(box, bounds);
        if (isEmptyBox(visible)) return true;
        const pixels = (visible.right - visible.left) * (visible.bottom - visible.top);
        if (pixels > this.left) return false;
        this.left -= pixels;
        return true;
    }
}
