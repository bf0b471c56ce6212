// Runs pages in jsdom, without a canvas and without anything from outside, as SPX imports them: import_pages.js PAGE...
'use strict';

const assert = require('assert');
const fs = require('fs');
let jsdom;
try {
    jsdom = require('jsdom');
} catch (error) {
    process.exit(77);
}

/** What a page says while it runs. */
function load(file) {
    const console = new jsdom.VirtualConsole(), errors = [];
    for (const event of ['jsdomError', 'error', 'warn', 'log']) console.on(event, said => errors.push(String(said)));
    const options = {runScripts: 'dangerously', virtualConsole: console};
    const {window} = new jsdom.JSDOM(fs.readFileSync(file, 'utf8'), options);
    return {window, errors};
}

const definitionKeys =
    ['description', 'playserver', 'playchannel', 'playlayer', 'webplayout', 'steps', 'out', 'dataformat'];

for (const file of process.argv.slice(2)) {
    const {window, errors} = load(file);
    assert.deepEqual(errors, [], file);
    const definition = window.SPXGCTemplateDefinition;
    for (const key of definitionKeys)
        assert.equal(typeof definition[key], 'string', `${file}: ${key}`);
    const gdd = JSON.parse(window.document.querySelector('script[name="graphics-data-definition"]').textContent);
    const form = JSON.parse(window.document.getElementById('zeltrans-form').textContent);
    const fields = form.fields.filter(field => field.fault === '');
    assert.deepEqual(Object.keys(gdd.properties), fields.map(field => field.key), file);
    const keys = fields.map(field => field.key);
    const defined = definition.DataFields.map(field => field.field).filter(key => keys.includes(key));
    assert.deepEqual(defined, keys, file);
    for (const name of ['update', 'play', 'stop', 'next'])
        assert.equal(typeof window[name], 'function', `${file}: ${name}`);
    assert.equal('remove' in window, false, file);
    assert.equal(window.document.querySelectorAll('input').length, 0, file);

    // Calls leave the page alone, and only the missing canvas is reported.
    const data = '<data id="text" value="X &amp; Y"/>';
    const xml = '<templateData><componentData id="f0">' + data + '</componentData></templateData>';
    for (const text of ['', '{"f0":"A"}', xml, '{"nothing":1}', '{', '<a', 'rubbish', undefined]) window.update(text);
    window.play();
    window.next();
    window.update('{"f0":"B"}');
    window.stop();
    const expected = /HTMLCanvasElement.prototype.getContext|data isn't understood|has no glyph/;
    assert.deepEqual(errors.filter(error => !expected.test(error)), [], file);
    window.close();
}
