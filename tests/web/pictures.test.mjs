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
  const results = [];
  for (let i = 0; i < module._pictureCount(); ++i) {
    const result = JSON.parse(module.UTF8ToString(module._runPicture(i)));
    results.push({ ...result, glError: gl.getError() });
  }
  return results;
}

test('every picture matches its formula', async (t) => {
  const page = await browser.open('/tests/empty.html');
  const results = await page.evaluate(runAllPictures);
  browser.checkConsole();
  assert.ok(results.length > 10);
  for (const result of results) {
    await t.test(result.name, () => {
      const text = JSON.stringify(result);
      assert.equal(result.error, undefined, text);
      assert.equal(result.glError, 0, text);
      assert.ok(result.largest <= result.tolerance, text);
    });
  }
});
