// Times one piece of work in this process, warm: node sharp.mjs FOLDER_OF_MODULES RUNS WORK SOURCE TARGET
// Prints the median in seconds. WORK is convert, height=N or rotate.
import { createRequire } from 'node:module';

const [modules, runs, work, source, target] = process.argv.slice(2);
const sharp = createRequire(modules + '/')('sharp');
sharp.concurrency(2);
sharp.cache(false);

function pipeline() {
    let picture = sharp(source, { limitInputPixels: false });
    if (work.startsWith('height=')) picture = picture.resize({ height: Number(work.slice(7)) });
    if (work === 'rotate') picture = picture.rotate(90);
    if (/\.jpg$/.test(target)) picture = picture.jpeg({ quality: 75, mozjpeg: false });
    if (/\.tif$/.test(target)) picture = picture.tiff({ compression: 'lzw' });
    return picture.toFile(target);
}

const times = [];
for (let i = 0; i <= Number(runs); ++i) {
    const before = process.hrtime.bigint();
    await pipeline();
    if (i > 0) times.push(Number(process.hrtime.bigint() - before) / 1e9); // the first one warms up
}
times.sort((one, other) => one - other);
console.log(times[Math.floor(times.length / 2)].toFixed(4));
