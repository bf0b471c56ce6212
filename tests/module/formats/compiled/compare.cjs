// Compiles the descriptions of both formats, reads a demonstration disk with the result, and compares places and
// values with those that `zeltrans info --json` reports of the same files.
//
//     node compare.cjs FORMATS_DIR ZELTRANS WORK_DIR
//
// WORK_DIR is the folder that scripts/check installs the compiler into. Exit code: 0 all agree, 1 not, 77 no compiler there.
'use strict';
const fs = require('fs'), path = require('path');
const {execFileSync} = require('child_process');
const {createRequire} = require('module');

const [formatsDir, zeltrans, workDir] = process.argv.slice(2);
let comparisons = 0, differences = 0;

function same(what, ours, theirs) {
    ++comparisons;
    if (JSON.stringify(ours) === JSON.stringify(theirs)) return;
    ++differences;
    console.log(`${what}: described ${JSON.stringify(ours)}, reported ${JSON.stringify(theirs)}`);
}

function findCompiler() {
    const need = createRequire(path.join(workDir, 'package.json'));
    try {
        need.resolve('kaitai-struct-compiler');
    } catch {
        console.log(`the compiler of the descriptions is not in ${workDir}: scripts/check installs it`);
        process.exit(77);
    }
    return need;
}

// Compiles with debugging information, which has the place of every field.
async function compileFormats(need) {
    const compiler = need('kaitai-struct-compiler'), yaml = need('js-yaml');
    const load = name => yaml.load(fs.readFileSync(path.join(formatsDir, name + '.ksy'), 'utf8'));
    const importer = {importYaml: name => Promise.resolve(load(name))};
    for (const name of ['zelmara_font', 'zelmara_message']) {
        const files = await compiler.compile('javascript', load(name), importer, true);
        for (const file in files) fs.writeFileSync(path.join(workDir, file), files[file]);
    }
    const {ZelmaraMessage} = need('./ZelmaraMessage.js'), {ZelmaraFont} = need('./ZelmaraFont.js');
    return {message: ZelmaraMessage, font: ZelmaraFont, Stream: need('kaitai-struct/KaitaiStream')};
}

function parse(formats, kind, file) {
    const bytes = Uint8Array.from(fs.readFileSync(file));
    const parsed = new formats[kind](new formats.Stream(bytes.buffer));
    parsed._read();
    return parsed;
}

function place(parsed, field) {
    const mark = parsed._debug[field], base = mark.ioOffset || 0;
    return [mark.start + base, mark.end - mark.start];
}

// Sections by the names that the inspector uses.
const FIELDS = {
    'Psos file header': 'psosHeader', 'section flags': 'msgFlags', 'flash font': 'flashFont', 'message header': 'msgHeader',
    'rows': 'rows', 'palette': 'palette', 'background': 'background', 'tab table': 'tabTable', 'font header': 'fontHeader',
    'character directory': 'characterDirectory', 'encoding data': 'encodingData', 'auxiliary block': 'auxBlock',
    'word table': 'wordTable', 'character table a': 'charTableA', 'character table b': 'charTableB', 'sample block': 'sampleBlock',
};

function compareSections(file, parsed, reported) {
    let leading = Boolean(parsed.firstSampleBlock);
    for (const section of reported.sections) {
        let field = FIELDS[section.name];
        if (section.name === 'stored glyph') {
            const mark = parsed._debug.storedGlyphs;
            same(`${file} stored glyphs`, [mark.start, mark.end - mark.start], [section.offset, section.size]);
            continue;
        }
        if (section.name === 'sample block' && leading) {
            field = 'firstSampleBlock';
            leading = false;
        }
        if (field === undefined) same(`${file} section`, null, section.name);
        else same(`${file} ${section.name}`, place(parsed, field), [section.offset, section.size]);
    }
}

function letters(text) { return text.replace(/\\x../g, '').replace(/[^a-zA-Z]/g, ''); }

function chainText(row) {
    let text = '';
    for (let step = 0, index = row.head.firstChar; step < row.head.charCount; ++step) {
        text += String.fromCharCode(row.characters[index].charCode & 255);
        index = row.characters[index].nextChar;
    }
    return text;
}

function compareMessage(file, parsed, reported) {
    const header = parsed.msgHeader;
    same(`${file} lines`, parsed.msgFlags.isPal ? 576 : 486, reported.lines);
    same(`${file} frame`, [header.frameLeft, header.frameTop, header.frameRight, header.frameBottom], reported.frame);
    same(`${file} fonts`, reported.fonts.map(font => header.fontNumbers[font.slot]), reported.fonts.map(font => font.number));
    same(`${file} row count`, parsed.rows.length, reported.row_count);
    reported.rows.forEach((row, index) => {
        const head = parsed.rows[index].head;
        same(`${file} row ${index}`, [head.rowY, head.rowTop, head.rowBottom, head.rowEmpty],
             [row.y + reported.y_offset, row.top, row.bottom, row.empty]);
        if (!head.rowEmpty) same(`${file} row ${index} text`, letters(chainText(parsed.rows[index])), letters(row.text.join('')));
    });
    const tabs = parsed.tabTable ? parsed.tabTable.records.map(tab => [tab.tabName, tab.tabRow]) : [];
    same(`${file} tab fields`, tabs, reported.tab_fields.map(tab => [tab.name || 'un-named', tab.row]));
}

function compareFont(file, parsed, reported) {
    const h = parsed.fontHeader, directory = parsed.characterDirectory;
    same(`${file} header`,
         [h.fontName, h.fontIdText, h.fontHeight, h.rowTopOffset, h.rowInset, h.edgeType, h.edgeSize, h.fontFlags, h.encodingSize],
         [reported.name, reported.id, reported.height, reported.row_top_offset, reported.row_inset, reported.edge_type, reported.edge_size, reported.flags,
          reported.encoding_size]);
    same(`${file} glyphs`, [directory.filter(e => e.isStored).length, directory.filter(e => e.isRunCoded).length],
         [reported.stored_glyphs, reported.run_coded_glyphs]);
}

async function main() {
    const formats = await compileFormats(findCompiler());
    const disk = path.join(workDir, 'disk');
    execFileSync(zeltrans, ['sample', disk]);
    for (const directory of ['MESSAGES', 'MACHINE']) {
        for (const name of fs.readdirSync(path.join(disk, directory))) {
            const file = path.join(disk, directory, name);
            const reported = JSON.parse(execFileSync(zeltrans, ['info', '--json', file]));
            if (reported.kind !== 'message' && reported.kind !== 'font') continue;
            const parsed = parse(formats, reported.kind, file);
            compareSections(name, parsed, reported);
            if (reported.kind === 'message') compareMessage(name, parsed, reported.message);
            else compareFont(name, parsed, reported.font);
        }
    }
    console.log(`${comparisons} comparisons, ${differences} differences`);
    process.exitCode = differences === 0 && comparisons > 300 ? 0 : 1;
}

main();
