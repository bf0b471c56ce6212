// The glyphs of a live graphic, in the colours of their colour set.

/** @param {string} text  base64. */
function bytesOf(text) {
    const binary = atob(text);
    const bytes = new Uint8Array(binary.length);
    for (let n = 0; n < binary.length; ++n) bytes[n] = binary.charCodeAt(n);
    return bytes;
}

/** Reads a stream of bytes. Beyond its end all numbers are 0. */
class ByteStream {
    /** @param {Uint8Array} bytes */
    constructor(bytes) {
        this.bytes = bytes;
        this.at = 0;
    }

    isAtEnd() {
        return this.at >= this.bytes.length;
    }

    byte() {
        return this.at < this.bytes.length ? this.bytes[this.at++] : 0;
    }

    /** A number of up to 28 bits, 7 bits a byte, the lowest first. */
    number() {
        let value = 0;
        for (let shift = 0; shift < 28; shift += 7) {
            const byte = this.byte();
            value |= (byte & 127) << shift;
            if (byte < 128) break;
        }
        return value;
    }

    pixel() {
        const red = this.byte(), green = this.byte(), blue = this.byte(), alpha = this.byte();
        return pixelOf(red, green, blue, alpha);
    }
}

/**
 * A pixel as a number. In memory, where the lowest byte is the first one, it has the order of ImageData.
 * @param {number} red
 * @param {number} green
 * @param {number} blue
 * @param {number} alpha
 */
function pixelOf(red, green, blue, alpha) {
    return (red | green << 8 | blue << 16 | alpha << 24) >>> 0;
}

/** A colour index above the 32 of a set: black, and a colour that is mixed of two others. */
const kBlackIndex = 32, kMixedIndex = 33;

/**
 * A colour that a run-coded glyph has at a level: limited to the level, which is its alpha, and made straight.
 * @param {number} colour  0xRRGGBB.
 * @param {number} level  1 to 255.
 */
function pixelAtLevel(colour, level) {
    const straight = (/** @type {number} */ value) =>
        Math.floor((510 * Math.min(value, level) + level) / (2 * level));
    return pixelOf(straight(colour >> 16 & 255), straight(colour >> 8 & 255), straight(colour & 255), level);
}

/**
 * The pixels of a font's classes in a colour set. Class 0 is clear.
 * @param {Font} font
 * @param {number[][]} colourSets
 * @param {number} set
 */
function pixelsOfClasses(font, colourSets, set) {
    const pixels = new Uint32Array(1 + font.classes.length / 2);
    for (let n = 1; n < pixels.length; ++n) {
        const index = font.classes[2 * n - 2], level = font.classes[2 * n - 1];
        if (index === kMixedIndex) {
            const mixed = font.mixed[level][set];
            pixels[n] = pixelOf(mixed >>> 24, mixed >>> 16 & 255, mixed >>> 8 & 255, mixed & 255);
        } else {
            pixels[n] = pixelAtLevel(index === kBlackIndex ? 0 : colourSets[set][index], level);
        }
    }
    return pixels;
}

/**
 * @param {GlyphStream} stream  pairs of a run and a class.
 * @param {Uint32Array} classes
 * @returns {Glyph}
 */
function runCodedGlyph(stream, classes) {
    const width = stream[0], height = stream[1];
    const pixels = new Uint32Array(width * height);
    const bytes = new ByteStream(bytesOf(stream[2]));
    for (let at = 0; at < pixels.length && !bytes.isAtEnd();) {
        const end = at + bytes.number();
        pixels.fill(classes[bytes.number()], at, end);
        at = end;
    }
    return {width, height, pixels};
}

/**
 * @param {GlyphStream} stream  an even number and the pixel that is repeated half as many times; or an odd number and
 *     half as many pixels.
 * @returns {Glyph}
 */
function storedGlyph(stream) {
    const width = stream[0], height = stream[1];
    const pixels = new Uint32Array(width * height);
    const bytes = new ByteStream(bytesOf(stream[2]));
    for (let at = 0; at < pixels.length && !bytes.isAtEnd();) {
        const number = bytes.number(), end = Math.min(pixels.length, at + (number >> 1));
        if (number % 2 === 0) {
            pixels.fill(bytes.pixel(), at, end);
            at = end;
        } else {
            while (at < end) pixels[at++] = bytes.pixel();
        }
    }
    return {width, height, pixels};
}

/** Makes the glyphs of a form, each once. */
class GlyphStore {
    /** @param {LiveForm} form */
    constructor(form) {
        this.form = form;
        /** @type {Map<number, Uint32Array>} */
        this.classes = new Map();
        /** @type {Map<number, Glyph | null>} */
        this.glyphs = new Map();
    }

    /**
     * The same object for the same arguments; null for a code without pixels.
     * @param {number} font  its index in the form.
     * @param {number} code
     * @param {number} set
     */
    get(font, code, set) {
        const key = (font * 256 + code) * 8 + set;
        let glyph = this.glyphs.get(key);
        if (glyph === undefined) {
            glyph = this.make(font, code, set);
            this.glyphs.set(key, glyph);
        }
        return glyph;
    }

    /**
     * @param {number} index
     * @param {number} code
     * @param {number} set
     */
    make(index, code, set) {
        const font = this.form.fonts[index];
        if (font.pictures[code]) return storedGlyph(font.pictures[code]);
        if (!font.glyphs[code]) return null;
        const key = index * 8 + set;
        let classes = this.classes.get(key);
        if (classes === undefined) {
            classes = pixelsOfClasses(font, this.form.colourSets, set);
            this.classes.set(key, classes);
        }
        return runCodedGlyph(font.glyphs[code], classes);
    }
}
