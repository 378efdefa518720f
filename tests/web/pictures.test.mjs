// What the browser's WebGL 2 draws: the pictures with formulas, and every scene, compared with the headless picture of
// the same seed and frame.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { join } from 'node:path';
import { test } from 'node:test';

import { newPage, root } from './browser.mjs';
import { checkPictures } from './picture-table.mjs';

test('every picture matches its formula', async (t) => {
  const page = await newPage();
  await page.goto('/tests/web/empty.html');
  await checkPictures(t, page);
});

const gallery = process.env.TIDALUME_GALLERY ?? join(root, 'build/tidalume-gallery');
const folder = join(root, 'out/scenes');
const width = 90;
const height = 120;

// The two drivers round differently: every second colour by a step of 8 bits, and an outline or a sprite's edge may
// fall on the next pixel. SwiftShader also rounds half floats to the nearest where Mesa truncates them. In the pond
// that adds up over 3.2 steps a frame, so only 16 frames are compared.
const framesOf = (name) => (name === 'pond' ? 16 : 50);
const largestMean = 0.7;
const large = 16; // steps of 8 bits
const largestShareOfLarge = 0.01;

// Runs in the page.
async function openStage([width, height]) {
  const { Stage } = await import('/out/web/stage.js');
  window.stage = await Stage.create(new OffscreenCanvas(width, height));
  return window.stage.scenes.map(({ name }) => name);
}

// Runs in the page. Gives the differences of all colours, without alpha, in steps of 8 bits.
async function compare({ scene, frames, path }) {
  const { stage } = window;
  const { width, height } = stage.canvas;
  const pixelsOf = (image) => {
    const context = new OffscreenCanvas(width, height).getContext('2d', { willReadFrequently: true });
    context.drawImage(image, 0, 0);
    return [...context.getImageData(0, 0, width, height).data];
  };
  stage.start(scene, 1);
  for (let frame = 0; frame < frames; ++frame) stage.step(scene);
  const drawn = pixelsOf(stage.canvas);
  const file = await fetch(path);
  const expected = pixelsOf(await createImageBitmap(await file.blob()));
  return drawn.map((value, i) => Math.abs(value - expected[i])).filter((_, i) => i % 4 < 3);
}

test('every scene looks as it does without a browser', async (t) => {
  const page = await newPage();
  await page.goto('/tests/web/empty.html');
  const names = await page.evaluate(openStage, [width, height]);
  assert.ok(names.length > 0);
  for (const [scene, name] of names.entries()) {
    const frames = framesOf(name);
    const options = ['--size', `${width}x${height}`, '--ahead', frames - 1, '--frames', 1, '--out', folder];
    execFileSync(gallery, ['--scene', name, ...options]);
    const differences = await page.evaluate(compare, { scene, frames, path: `/out/scenes/${name}.png` });
    const mean = differences.reduce((sum, value) => sum + value, 0) / differences.length;
    const shareOfLarge = differences.filter((value) => value > large).length / differences.length;
    t.diagnostic(`${name}: mean difference ${mean}, share of large ones ${shareOfLarge}`);
    assert.ok(mean <= largestMean && shareOfLarge <= largestShareOfLarge, name);
  }
});
