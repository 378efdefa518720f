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

// The two drivers round differently: every second colour by a step of 8 bits, and an outline or a sprite's edge may
// fall on the next pixel. SwiftShader also rounds half floats to the nearest where Mesa cuts them off, and the pond adds
// that up over 3.2 passes for each frame: 16 of them are compared.
const framesOf = (name) => (name === 'pond' ? 16 : 50);
const largestMean = 0.7;
const far = 16; // steps of 8 bits
const largestShareOfFar = 0.01;

const folder = mkdtempSync(join(tmpdir(), 'tidalume-scenes-'));
let browser;
before(async () => { browser = await Browser.start({ headless: folder }); });
after(async () => {
  await browser.stop();
  rmSync(folder, { recursive: true });
});

// Runs in the page.
async function openStage({ width, height }) {
  const { Stage } = await import('/page/stage.js');
  window.stage = await Stage.create(Object.assign(document.createElement('canvas'), { width, height }));
  return window.stage.scenes.map(({ name }) => name);
}

// Runs in the page.
async function compare({ scene, name, frames, far }) {
  const { stage } = window;
  const { width, height } = stage.canvas;
  const pixelsOf = (image) => {
    const context = new OffscreenCanvas(width, height).getContext('2d', { willReadFrequently: true });
    context.drawImage(image, 0, 0);
    return context.getImageData(0, 0, width, height).data;
  };
  stage.start(scene, 1);
  for (let frame = 0; frame < frames; ++frame) stage.step(scene);
  const drawn = pixelsOf(stage.canvas);
  const file = await fetch(`/headless/${name}.png`);
  const expected = pixelsOf(await createImageBitmap(await file.blob()));
  const differences = [...drawn].map((value, i) => Math.abs(value - expected[i])).filter((_, i) => i % 4 < 3);
  return {
    mean: differences.reduce((sum, value) => sum + value, 0) / differences.length,
    shareOfFar: differences.filter((value) => value > far).length / differences.length,
    glError: stage.gl.getError(),
  };
}

test('every scene looks as it does without a browser', async (t) => {
  const page = await browser.open('/tests/empty.html');
  const names = await page.evaluate(openStage, { width, height });
  assert.ok(names.length > 0);
  for (const [scene, name] of names.entries()) {
    await t.test(name, async () => {
      const frames = framesOf(name);
      execFileSync(gallery, ['--scene', name, '--size', `${width}x${height}`, '--frames', frames, '--out', folder]);
      const found = await page.evaluate(compare, { scene, name, frames, far });
      t.diagnostic(`${name}: ${JSON.stringify(found)}`);
      assert.equal(found.glError, 0);
      assert.ok(found.mean <= largestMean);
      assert.ok(found.shareOfFar <= largestShareOfFar);
      browser.checkConsole();
    });
  }
});
