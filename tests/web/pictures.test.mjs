// The pictures with formulas, drawn by the browser's WebGL 2.

import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';

import { Browser } from './browser.mjs';

let browser;
before(async () => { browser = await Browser.start(); });
after(() => browser.stop());

// Runs in the page.
async function runAllPictures() {
  const { default: createModule } = await import('/pictures/picture-cases.js');
  const module = await createModule();
  const canvas = document.createElement('canvas');
  canvas.width = 160;
  canvas.height = 160;
  const gl = canvas.getContext('webgl2', { antialias: false, depth: false, preserveDrawingBuffer: true });
  module.GL.makeContextCurrent(module.GL.registerContext(gl, { majorVersion: 2, minorVersion: 0 }));
  return Array.from({ length: module._pictureCount() }, (_, i) => ({
    name: module.UTF8ToString(module._pictureName(i)),
    tolerance: module._pictureTolerance(i),
    largest: module._runPicture(i),
    glError: gl.getError(),
  }));
}

test('every picture matches its formula', async (t) => {
  const page = await browser.open('/tests/empty.html');
  const results = await page.evaluate(runAllPictures);
  browser.checkConsole();
  assert.ok(results.length > 10);
  for (const { name, tolerance, largest, glError } of results) {
    t.diagnostic(`${name}: largest difference ${largest}`);
    await t.test(name, () => {
      assert.ok(largest <= tolerance, `${largest} off, ${tolerance} allowed`);
      assert.equal(glError, 0);
    });
  }
});
