// The scripts as code: ECMAScript 2017 as in the oldest CasparCG, and free of faults of types.
'use strict';

const assert = require('assert');
const {execFileSync} = require('child_process');
const {folder, pageText, moduleText} = require('./scripts.js');

let acorn;
try {
    acorn = require('acorn');
    execFileSync('tsc', ['--version']);
} catch (error) {
    process.exit(77);
}

acorn.parse(pageText(), {ecmaVersion: 2017});
acorn.parse(moduleText(), {ecmaVersion: 2017, sourceType: 'module'});
assert.throws(() => acorn.parse('a?.b', {ecmaVersion: 2017}));

try {
    execFileSync('tsc', ['-p', folder + '/jsconfig.json'], {encoding: 'utf8'});
} catch (error) {
    assert.fail(error.stdout);
}
