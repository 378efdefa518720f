// The pictures with formulas, in any engine.

import assert from 'node:assert/strict';

// Runs in the page.
async function runAllPictures() {
  const { default: createModule } = await import('/build-web/tests/web/picture-cases.js');
  const lines = [];
  const module = await createModule({ print: (line) => lines.push(line) });
  const canvas = Object.assign(document.createElement('canvas'), { width: 160, height: 160 });
  const gl = canvas.getContext('webgl2', { antialias: false, depth: false, preserveDrawingBuffer: true });
  module.GL.makeContextCurrent(module.GL.registerContext(gl, { majorVersion: 2, minorVersion: 0 }));
  module._runPictures();
  return lines;
}

/** Draws every picture in a page of the repository and compares it with its formula. */
export async function checkPictures(test, page) {
  const pictures = (await page.evaluate(runAllPictures)).map((line) => line.split(' '));
  for (const [name, largest] of pictures) test.diagnostic(`${name}: largest difference ${largest}`);
  assert.ok(pictures.length > 10);
  assert.deepEqual(pictures.filter(([, largest, allowed]) => !(Number(largest) <= Number(allowed))), []);
}
