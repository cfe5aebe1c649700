// Works in a process that stays warm: node sharp.mjs FOLDER_OF_MODULES convert|height=N|thumb=N|rotate SOURCE TARGET
//
// For every line on standard input the work is done once, and a line with the seconds that it took is printed. Where
// SOURCE is a folder it is done on all of its files at once, as many of them in parallel as sharp sees fit.
import { readdirSync, statSync } from 'node:fs';
import { createRequire } from 'node:module';
import { createInterface } from 'node:readline';

const [modules, work, source, target] = process.argv.slice(2);
const sharp = createRequire(modules + '/')('sharp');
sharp.cache(false);
const [verb, number] = work.split('=');

function pipeline([from, to]) {
    let picture = sharp(from, { limitInputPixels: false });
    if (verb === 'height' || verb === 'thumb') picture = picture.resize({ height: Number(number) });
    if (verb === 'rotate') picture = picture.rotate(90);
    if (/\.jpg$/.test(to)) picture = picture.jpeg({ quality: 75, mozjpeg: false });
    if (/\.tif$/.test(to)) picture = picture.tiff({ compression: 'lzw' });
    return picture.toFile(to);
}

const jobs = statSync(source).isDirectory()
    ? readdirSync(source).map((name) => [`${source}/${name}`, `${target}/${name}`])
    : [[source, target]];
if (jobs.length === 1) sharp.concurrency(2);
for await (const line of createInterface({ input: process.stdin })) {
    const before = process.hrtime.bigint();
    await Promise.all(jobs.map(pipeline));
    console.log((Number(process.hrtime.bigint() - before) / 1e9).toFixed(6));
}
