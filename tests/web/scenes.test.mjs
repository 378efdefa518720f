// The canvas of every scene beside the headless picture of the same seed and frame.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';

import { Browser, root } from './browser.mjs';

const gallery = process.env.TIDALUME_GALLERY ?? join(root, 'build/tidalume-gallery');
const width = 90;
const height = 120;
const frames = 50;

// The two drivers round differently: colours by a step of 8 bits on average, and an outline or a sprite's edge may fall
// on the next pixel.
const largestMean = 1;
const far = 16; // steps of 8 bits
const largestShareOfFar = 0.01;

let browser;
let folder;
before(async () => {
  folder = mkdtempSync(join(tmpdir(), 'tidalume-scenes-'));
  execFileSync(gallery, ['--size', `${width}x${height}`, '--frames', frames, '--seed', '1', '--out', folder]);
  browser = await Browser.start({ headless: folder });
});
after(async () => {
  await browser?.stop();
  rmSync(folder, { recursive: true });
});

// Runs in the page.
async function openStage({ width, height }) {
  const { Stage } = await import('/page/stage.js');
  const canvas = document.createElement('canvas');
  canvas.width = width;
  canvas.height = height;
  document.body.append(canvas);
  window.stage = await Stage.create(canvas);
  return window.stage.scenes.map(({ name }) => name);
}

// Runs in the page.
async function compare({ scene, name, width, height, frames, far }) {
  const pixelsOf = (image) => {
    const context = new OffscreenCanvas(width, height).getContext('2d', { willReadFrequently: true });
    context.drawImage(image, 0, 0);
    return context.getImageData(0, 0, width, height).data;
  };
  window.stage.start(scene, 1);
  for (let frame = 0; frame < frames; ++frame) window.stage.step(scene);
  const drawn = pixelsOf(window.stage.canvas);
  const file = await fetch(`/headless/${name}.png`);
  const expected = pixelsOf(await createImageBitmap(await file.blob()));
  const differences = drawn.map((value, i) => Math.abs(value - expected[i])).filter((_, i) => i % 4 < 3);
  return {
    mean: differences.reduce((sum, value) => sum + value, 0) / differences.length,
    shareOfFar: differences.filter((value) => value > far).length / differences.length,
    glError: window.stage.gl.getError(),
  };
}

test('every scene looks as it does without a browser', async (t) => {
  const page = await browser.open('/tests/empty.html');
  const names = await page.evaluate(openStage, { width, height });
  assert.ok(names.length > 0);
  for (const [scene, name] of names.entries()) {
    await t.test(name, async () => {
      const found = await page.evaluate(compare, { scene, name, width, height, frames, far });
      t.diagnostic(`${name}: ${JSON.stringify(found)}`);
      assert.equal(found.glError, 0);
      assert.ok(found.mean <= largestMean);
      assert.ok(found.shareOfFar <= largestShareOfFar);
      browser.checkConsole();
    });
  }
});
