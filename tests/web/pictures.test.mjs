// The pictures with formulas, drawn by the browser's WebGL 2.

import assert from 'node:assert/strict';
import { test } from 'node:test';

import { newPage } from './browser.mjs';

// Runs in the page.
async function runAllPictures() {
  const { default: createModule } = await import('/build-web/tests/web/picture-cases.js');
  const lines = [];
  const module = await createModule({ print: (line) => lines.push(line) });
  const canvas = new OffscreenCanvas(160, 160);
  const gl = canvas.getContext('webgl2', { antialias: false, depth: false, preserveDrawingBuffer: true });
  module.GL.makeContextCurrent(module.GL.registerContext(gl, { majorVersion: 2, minorVersion: 0 }));
  module._runPictures();
  return lines;
}

test('every picture matches its formula', async (t) => {
  const page = await newPage();
  await page.goto('/tests/web/empty.html');
  const pictures = (await page.evaluate(runAllPictures)).map((line) => line.split(' '));
  for (const [name, largest] of pictures) t.diagnostic(`${name}: largest difference ${largest}`);
  assert.ok(pictures.length > 10);
  assert.deepEqual(pictures.filter(([, largest, allowed]) => !(Number(largest) <= Number(allowed))), []);
});
