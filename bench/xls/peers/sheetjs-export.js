// The workbook job of the BOM export done with SheetJS (the npm package "xlsx"), for
// bench_xls_compare (bench/README.md): read the template from memory, set each cell of the job
// as a string cell of the active sheet, write an .xls (BIFF8) into memory.
//
//   NODE_PATH=<folder with node_modules/xlsx> node sheetjs-export.js TEMPLATE.xls JOB.tsv WARMUP REPEAT OUT.xls
//
// JOB.tsv: one cell a line, "row<TAB>column<TAB>text", UTF-8. Prints "version V", then "ms T"
// for each timed run (the WARMUP runs before them are not timed), and writes the book of the
// last run to OUT.xls.
'use strict';
const fs = require('fs');
const XLSX = require('xlsx');

const [templatePath, jobPath, warmupText, repeatText, outPath] = process.argv.slice(2);
const template = fs.readFileSync(templatePath);
const job = fs.readFileSync(jobPath, 'utf8').split('\n').filter((line) => line !== '').map((line) => {
    const [row, col, ...text] = line.split('\t');
    return { r: Number(row), c: Number(col), text: text.join('\t') };
});

function run() {
    const book = XLSX.read(template, { type: 'buffer', cellStyles: true });
    const views = book.Workbook && book.Workbook.WBView;
    const sheet = book.Sheets[book.SheetNames[(views && views[0] && views[0].activeTab) || 0]];
    const range = XLSX.utils.decode_range(sheet['!ref'] || 'A1');
    for (const cell of job) {
        sheet[XLSX.utils.encode_cell(cell)] = { t: 's', v: cell.text };
        range.e.r = Math.max(range.e.r, cell.r);
        range.e.c = Math.max(range.e.c, cell.c);
    }
    sheet['!ref'] = XLSX.utils.encode_range(range);
    return XLSX.write(book, { type: 'buffer', bookType: 'biff8' });
}

console.log('version ' + XLSX.version);
for (let k = 0; k < Number(warmupText); ++k) run();
let last = null;
for (let k = 0; k < Number(repeatText); ++k) {
    const start = process.hrtime.bigint();
    last = run();
    console.log('ms ' + Number(process.hrtime.bigint() - start) / 1e6);
}
fs.writeFileSync(outPath, last);
