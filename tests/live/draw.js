// Draws forms without a page. Each line of standard input is {"form": the file of a form, "texts": [{key: text}, ...]}.
// Each line of output has the SHA-256 of the pictures' bytes: of the form as it is, then with each set of texts. The
// pictures of a form are drawn one after another on the same pixels, so that each is a change of the one before.
'use strict';

const crypto = require('crypto');
const fs = require('fs');
const {load} = require('./scripts.js');

const {Stage} = load(['Stage']);

/** @returns {string} */
function digestAfter(stage, texts) {
    stage.clear();
    stage.update(new Map(Object.entries(texts)));
    stage.compose();
    return crypto.createHash('sha256').update(Buffer.from(stage.picture.pixels.buffer)).digest('hex');
}

for (const line of fs.readFileSync(0, 'utf8').split('\n').filter(line => line !== '')) {
    const {form, texts} = JSON.parse(line);
    const stage = new Stage(JSON.parse(fs.readFileSync(form, 'utf8')), {style: {}, getContext: () => null});
    console.log([{}, ...texts].map(each => digestAfter(stage, each)).join(' '));
}
