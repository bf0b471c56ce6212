// The picture of a live graphic: glyphs with straight alpha, each over the earlier ones.

/**
 * A pixel over another one. Each channel is rounded to the nearest; two clear pixels give the ground.
 * @param {number} source
 * @param {number} ground
 */
function over(source, ground) {
    const sourceAlpha = source >>> 24, groundAlpha = ground >>> 24;
    if (sourceAlpha === 255 || (groundAlpha === 0 && sourceAlpha !== 0)) return source;
    if (sourceAlpha === 0) return ground;
    // Shares of the two in the result, in units of 1 / (255 * 255).
    const above = sourceAlpha * 255, below = groundAlpha * (255 - sourceAlpha), both = above + below;
    const half = both >> 1;
    const red = (((source & 255) * above + (ground & 255) * below + half) / both) | 0;
    const green = (((source >>> 8 & 255) * above + (ground >>> 8 & 255) * below + half) / both) | 0;
    const blue = (((source >>> 16 & 255) * above + (ground >>> 16 & 255) * below + half) / both) | 0;
    return pixelOf(red, green, blue, ((both + 127) / 255) | 0);
}

/** @param {Box} box */
function isEmptyBox(box) {
    return box.left >= box.right || box.top >= box.bottom;
}

/**
 * @param {Box} a
 * @param {Box} b
 * @returns {Box}
 */
function intersection(a, b) {
    return {
        left: Math.max(a.left, b.left),
        top: Math.max(a.top, b.top),
        right: Math.min(a.right, b.right),
        bottom: Math.min(a.bottom, b.bottom)
    };
}

/**
 * The smallest box around both; null is no box.
 * @param {Box | null} a
 * @param {Box} b
 * @returns {Box}
 */
function union(a, b) {
    if (a === null) return b;
    return {
        left: Math.min(a.left, b.left),
        top: Math.min(a.top, b.top),
        right: Math.max(a.right, b.right),
        bottom: Math.max(a.bottom, b.bottom)
    };
}

/**
 * @param {PlacedGlyph} placed
 * @returns {Box}
 */
function boxOf(placed) {
    const glyph = placed.glyph;
    return {
        left: placed.left,
        top: placed.top,
        right: placed.left + glyph.width,
        bottom: placed.top + glyph.height
    };
}

/**
 * @param {PlacedGlyph} a
 * @param {PlacedGlyph} b
 */
function isSamePlace(a, b) {
    return a.glyph === b.glyph && a.left === b.left && a.top === b.top;
}

/**
 * The box around the glyphs that are in only one of two rows, or in another order; null if there are none.
 * @param {PlacedGlyph[]} before
 * @param {PlacedGlyph[]} after
 */
function changedBox(before, after) {
    const shorter = Math.min(before.length, after.length);
    let first = 0, last = 0;
    while (first < shorter && isSamePlace(before[first], after[first])) ++first;
    while (last < shorter - first &&
           isSamePlace(before[before.length - 1 - last], after[after.length - 1 - last])) {
        ++last;
    }
    /** @type {Box | null} */
    let box = null;
    for (const row of [before, after]) {
        for (let n = first; n < row.length - last; ++n) box = union(box, boxOf(row[n]));
    }
    return box;
}

/** A picture of placed glyphs. A change draws only the parts that differ. */
class Picture {
    /**
     * @param {number} width
     * @param {number} height
     */
    constructor(width, height) {
        /** @type {Box} */
        this.bounds = {left: 0, top: 0, right: width, bottom: height};
        this.width = width;
        this.pixels = new Uint32Array(width * height);
        /** @type {PlacedGlyph[][]} */
        this.rows = [];
    }

    /**
     * Shows these glyphs, in rows that keep their number.
     * @param {PlacedGlyph[][]} rows
     * @returns {Box | null}  the part of the picture that has changed.
     */
    show(rows) {
        /** @type {Box[]} */
        const boxes = [];
        for (let n = 0; n < Math.max(rows.length, this.rows.length); ++n) {
            const changed = changedBox(this.rows[n] || [], rows[n] || []);
            const box = changed === null ? this.bounds : intersection(changed, this.bounds);
            if (changed !== null && !isEmptyBox(box)) boxes.push(box);
        }
        this.rows = rows;
        boxes.forEach(box => this.draw(box));
        return boxes.reduce(union, /** @type {Box | null} */ (null));
    }

    /** @param {Box} box  in the picture. */
    draw(box) {
        for (let y = box.top; y < box.bottom; ++y)
            this.pixels.fill(0, y * this.width + box.left, y * this.width + box.right);
        for (const row of this.rows) {
            for (const placed of row) this.blend(placed, intersection(boxOf(placed), box));
        }
    }

    /**
     * @param {PlacedGlyph} placed
     * @param {Box} part  of the picture, within the glyph.
     */
    blend(placed, part) {
        const glyph = placed.glyph, source = glyph.pixels, target = this.pixels;
        for (let y = part.top; y < part.bottom; ++y) {
            let from = (y - placed.top) * glyph.width + part.left - placed.left;
            const end = y * this.width + part.right;
            for (let to = y * this.width + part.left; to < end; ++to, ++from) {
                const pixel = source[from];
                if (pixel !== 0) target[to] = over(pixel, target[to]);
            }
        }
    }
}
