// The data of a live graphic, which the export writes into the page or the module. Positions are in pixels.

/** A character record: x, y, colour set, font slot, code, next record of the chain. */
type Cell = [number, number, number, number, number, number];

interface Row {
    /** Position of the row in the picture; a record's y is relative to it. */
    y: number;
    top: number;
    bottom: number;
    empty: boolean;
    /** First record of the chain. */
    first: number;
    cells: Cell[];
}

/** Width, height, and the pixels in base64. */
type GlyphStream = [number, number, string];

interface Font {
    number: number;
    name: string;
    /** Limits of a row that is set in this font. */
    rowTop: number;
    rowBottom: number;
    /** An empty row doesn't take its limits from this font. */
    keepsLimits: boolean;
    /** What rowTop is measured from in a row of several fonts. */
    topOffset: number;
    /** The largest value of tops among the glyphs with pixels. */
    highestTop: number;
    /** By code. */
    tops: number[];
    /** By code; missing if no field has the font. */
    advances?: number[];
    /** The codes that a text may have; missing if no field has the font. */
    settable?: number[];
    /** Pairs of a colour index and a level: the colours of run-coded glyphs, from class 1. */
    classes: number[];
    /** Colours by colour set, 0xRRGGBBAA, of the classes with the index 33. */
    mixed: number[][];
    /** Run-coded glyphs by code. */
    glyphs: { [code: string]: GlyphStream };
    /** Glyphs stored in colour by code. */
    pictures: { [code: string]: GlyphStream };
}

interface Field {
    /** "f0", "f1" and so on. */
    key: string;
    name: string;
    address: string;
    row: number;
    /** A record with an x from start to end belongs to the field. */
    start: number;
    end: number;
    /** Of the field's text. */
    slot: number;
    set: number;
    /** The slot in the tab record, for the blank in a field without text. */
    tabSlot: number;
    /** The text that the message has there. */
    text: string;
    /** Why there can be no text; empty if there can. */
    fault: string;
}

interface Limits {
    /** Pixels that the characters may cover together. */
    pixels: number;
    rowCharacters: number;
    lastX: number;
    lastY: number;
    /** Pixels by which a character is further right than its record says. */
    xOffset: number;
}

type Fit = 'pillar' | 'fill' | 'pixel';

interface LiveForm {
    version: number;
    title: string;
    width: number;
    height: number;
    /** Width and height of a pixel. */
    pixelAspect: [number, number];
    fit: Fit;
    /** Milliseconds. */
    fade: { in: number; out: number };
    limits: Limits;
    /** Address of the picture of an RGBA file; such a graphic has no rows and no fields. */
    picture?: string;
    /** 0xRRGGBB, 8 sets of 32. */
    colourSets: number[][];
    /** By slot the index of its font, or -1. */
    slots: number[];
    fonts: Font[];
    rows: Row[];
    fields: Field[];
}

/** A glyph in its colours: a pixel is a number with red in its lowest byte and alpha in its highest. */
interface Glyph {
    width: number;
    height: number;
    pixels: Uint32Array;
}

/** A glyph at its place in the picture. */
interface PlacedGlyph {
    glyph: Glyph;
    left: number;
    top: number;
}

/** A part of the picture; right and bottom are beyond it. */
interface Box {
    left: number;
    top: number;
    right: number;
    bottom: number;
}

/** What is said about a field. */
interface FieldNote {
    field: number;
    text: string;
}

/** The module's data; the export writes it before the code. */
declare const zeltransForm: LiveForm;
