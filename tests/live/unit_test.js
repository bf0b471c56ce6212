// The scripts that need no page, against their rules in whole numbers.
'use strict';

const assert = require('assert');
const {load} = require('./scripts.js');

const {over, pixelOf, pixelAtLevel, Picture, layOut, findField, textsOf, Fade, placeOf} = load(
    ['over', 'pixelOf', 'pixelAtLevel', 'Picture', 'layOut', 'findField', 'textsOf', 'Fade', 'placeOf']);

/** Numbers that are the same in every run. */
let state = 1;
const random = below => (state = (state * 48271) % 2147483647) % below;
const channels = pixel => [0, 8, 16, 24].map(shift => pixel >>> shift & 255);

// One pixel over another: each channel to the nearest.
for (let n = 0; n < 200000; ++n) {
    const source = [0, 0, 0, 0].map(() => random(256)), ground = [0, 0, 0, 0].map(() => random(256));
    if (n % 5 === 0) source[3] = [0, 255][n % 2];
    if (n % 7 === 0) ground[3] = [0, 255][n % 2];
    let expected = ground;
    if (source[3] !== 0) {
        const above = BigInt(source[3] * 255), below = BigInt(ground[3] * (255 - source[3])), both = above + below;
        const mix = k => Number((BigInt(source[k]) * above + BigInt(ground[k]) * below + both / 2n) / both);
        expected = [mix(0), mix(1), mix(2), Number((both + 127n) / 255n)];
    }
    assert.deepEqual(channels(over(pixelOf(...source), pixelOf(...ground))), expected, `${source} over ${ground}`);
}

// A colour at a level is limited to it and made straight.
assert.deepEqual(channels(pixelAtLevel(0xFF8000, 128)), [255, 255, 0, 128]);
assert.deepEqual(channels(pixelAtLevel(0x40FF01, 100)), [163, 255, 3, 100]);

// A changed picture has the pixels of one that is drawn anew; the box that is returned has all changes.
const glyphs = [0, 1, 2, 3, 4].map(n => {
    const width = 1 + random(9), height = 1 + random(9);
    return {width, height, pixels: Uint32Array.from({length: width * height}, () => random(2147483647) * 2)};
});
const placed = () => ({glyph: glyphs[random(5)], left: random(40) - 5, top: random(30) - 5});
const rows = [[], [], []];
const changed = new Picture(32, 20);
for (let step = 0; step < 300; ++step) {
    const row = random(3), from = random(8);
    rows[row].splice(from, random(3), ...[placed(), placed()].slice(random(3)));
    rows[row].splice(8);
    const before = changed.pixels.slice(), box = changed.show(rows.map(each => each.slice()));
    const anew = new Picture(32, 20);
    anew.show(rows.map(each => each.slice()));
    assert.deepEqual(Array.from(changed.pixels), Array.from(anew.pixels), `step ${step}`);
    before.forEach((pixel, at) => {
        const x = at % 32, y = Math.floor(at / 32);
        const inBox = box !== null && x >= box.left && x < box.right && y >= box.top && y < box.bottom;
        assert(inBox || pixel === changed.pixels[at], `step ${step}: a change outside the box`);
    });
}

// Positions in a field of 10 to 110, which begins 7 further right.
const limits = {rowCharacters: 63, lastX: 1023, lastY: 1023, xOffset: 7, pixels: 0};
for (const [name, advances, most, overflow, expected] of [
    ['fits', [40, 60], 63, 'squeeze', [17, 57]],
    ['one pixel too wide', [40, 61], 63, 'cut', [17]],
    ['squeezed', [40, 40, 40], 63, 'squeeze', [17, 47, 77]],
    ['squeezed to the nearest pixel', [33, 34, 50], 63, 'squeeze', [17, 42, 67]],
    ['at half of the distances', [60, 60, 40], 63, 'squeeze', [17, 47, 77]],
    ['below half', [61, 60, 40], 63, 'squeeze', null],
    ['one wider than the field', [101], 63, 'cut', null],
    ['no room in the row', [10, 10, 10], 2, 'squeeze', null],
    ['cut to the room in the row', [10, 10, 10], 2, 'cut', [17, 27]],
    ['no room at all', [10], 0, 'cut', null],
    ['begins behind the end', [94, 0, 0], 63, 'cut', [17]]
]) {
    const x = layOut(advances, {start: 10, end: 110}, most, overflow, limits);
    assert.deepEqual(x === null ? null : Array.from(x), expected, name);
}

// Keys of fields.
const fields = [
    {name: 'NAME', address: 'NAME'}, {name: 'Größe', address: 'Größe'}, {name: '', address: 'f2'},
    {name: 'TWICE', address: 'f3'}, {name: 'twice ', address: 'f4'}, {name: 'f0', address: 'f5'}
];
for (const [key, expected] of [
    ['NAME', 0], [' name ', 0], ['GRÖSSE', -1], ['GRÖßE', 1], ['f2', 2], ['F1', 1], ['f0', 0], ['f5', 5], ['f6', -1],
    ['f99999999999999999999', -1], ['TWICE', -1], ['', -1], ['f', -1], ['comment', -1]
]) {
    assert.equal(findField(fields, key), expected, key);
}

// Data that isn't XML.
for (const [data, expected] of [
    ['{"f0": "A", "f1": ""}', {f0: 'A', f1: ''}],
    [' \n{"f0": "&#34;A&#34; &#92; &#35;", "comment": "x"}', {f0: '"A" \\ &#35;', comment: 'x'}],
    ['{"f0": 7, "f1": null, "f2": true, "f3": ["x"], "f4": {"text": "x"}}', {f0: '7'}],
    ['{"f0": "A\nB"}', {f0: 'A B'}],
    ['{"f0": "A"', {}], ['{', {}], ['', {}], ['  ', {}], ['A', {}], ['"A"', {}], ['[1]', {}], ['null', {}],
    [undefined, {}], [null, {}], [5, {}], [{f0: 'A', f1: 2}, {f0: 'A', f1: '2'}]
]) {
    assert.deepEqual(Object.fromEntries(textsOf(data)), expected, String(data));
}

// A fade from a value in between takes its share of the time.
const fade = new Fade(0.5, 1, 1000, 400);
assert.deepEqual([0, 1000, 1100, 1200, 9000].map(time => fade.at(time)), [0.5, 0.5, 0.75, 1, 1]);
assert.equal(new Fade(0, 1, 100, 0).at(100), 1);

// The picture in a page.
const pal = {width: 720, height: 576, pixelAspect: [12, 11]}, ntsc = {width: 720, height: 486, pixelAspect: [10, 11]};
for (const [form, fit, width, height, expected] of [
    [pal, 'pillar', 720, 576, [0, 0, 720, 576]], [ntsc, 'fill', 720, 486, [0, 0, 720, 486]],
    [pal, 'pillar', 1024, 576, [119, 0, 785, 576]], [pal, 'fill', 1024, 576, [0, 0, 1024, 576]],
    [pal, 'pillar', 1920, 1080, [223, 0, 1473, 1080]], [pal, 'pixel', 1920, 1080, [600, 252, 720, 576]],
    [ntsc, 'pillar', 720, 540, [0, 2, 720, 535]], [ntsc, 'pixel', 640, 480, [0, 0, 720, 486]],
    [ntsc, 'pixel', 1920, 1080, [600, 296, 720, 486]],
    [ntsc, 'pillar', 0, 0, [0, 0, 720, 486]]
]) {
    const place = placeOf(form, fit, width, height);
    assert.deepEqual([place.left, place.top, place.width, place.height], expected, `${fit} in ${width}x${height}`);
}
