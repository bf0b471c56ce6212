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
    const {window} = new jsdom.JSDOM(fs.readFileSync(file, 'utf8'), {runScripts: 'dangerously', virtualConsole: console});
    return {window, errors};
}

for (const file of process.argv.slice(2)) {
    const {window, errors} = load(file);
    assert.deepEqual(errors, [], file);
    const definition = window.SPXGCTemplateDefinition;
    for (const key of ['description', 'playserver', 'playchannel', 'playlayer', 'webplayout', 'steps', 'out', 'dataformat'])
        assert.equal(typeof definition[key], 'string', `${file}: ${key}`);
    const data = JSON.parse(window.document.querySelector('script[name="graphics-data-definition"]').textContent);
    const form = JSON.parse(window.document.getElementById('zeltrans-form').textContent);
    const fields = form.fields.filter(field => field.fault === '');
    assert.deepEqual(Object.keys(data.properties), fields.map(field => field.key), file);
    const keys = new Set(fields.map(field => field.key));
    assert.deepEqual(definition.DataFields.filter(field => keys.has(field.field)).map(field => field.field), [...keys], file);
    for (const name of ['update', 'play', 'stop', 'next']) assert.equal(typeof window[name], 'function', `${file}: ${name}`);
    assert.equal('remove' in window, false, file);
    assert.equal(window.document.querySelectorAll('input').length, 0, file);

    // Calls leave the page alone, and only the missing canvas is reported.
    const xml = '<templateData><componentData id="f0"><data id="text" value="X &amp; Y"/></componentData></templateData>';
    for (const text of ['', '{"f0":"A"}', xml, '{"nothing":1}', '{', '<a', 'rubbish', undefined]) window.update(text);
    window.play();
    window.next();
    window.update('{"f0":"B"}');
    window.stop();
    const expected = /HTMLCanvasElement.prototype.getContext|data isn't understood|has no glyph/;
    assert.deepEqual(errors.filter(error => !expected.test(error)), [], file);
    window.close();
}
