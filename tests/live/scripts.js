// The scripts of src/host/live/js for tests in Node.js.
'use strict';

const fs = require('fs');
const path = require('path');
const vm = require('vm');

const folder = path.join(__dirname, '../../src/host/live/js');
const common = ['glyphs.js', 'compose.js', 'fill.js', 'place.js', 'texts.js', 'fade.js', 'stage.js'];

const read = name => fs.readFileSync(path.join(folder, name), 'utf8');

/** The scripts of a page and of a module, each as one text as in an export. */
exports.pageText = () => '"use strict";\n' + common.concat('panel.js', 'template.js').map(read).join('');
exports.moduleText = () => 'const zeltransForm = {};\n' + common.concat('ograf.js').map(read).join('');
exports.folder = folder;

/** The named functions and classes of the common scripts. */
exports.load = names => {
    const code = '"use strict";\n' + common.map(read).join('') + '\n({' + names.join(', ') + '});';
    return vm.runInNewContext(code, {atob, console: {warn() {}}});
};
