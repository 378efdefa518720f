// Whether another engine than Chromium's draws the same: node engines.test.mjs, with ENGINE=firefox or ENGINE=webkit.

import assert from 'node:assert/strict';
import { after, test } from 'node:test';
import { setTimeout } from 'node:timers/promises';
import { fileURLToPath } from 'node:url';

import { engines } from './engines.mjs';
import { checkPictures } from './picture-table.mjs';
import { serve } from './server.mjs';

const site = await serve(fileURLToPath(new URL('../..', import.meta.url)));
const page = await engines[process.env.ENGINE]();
after(async () => {
  await page.close();
  site.close();
});

test('every picture matches its formula', async (t) => {
  await page.goto(`${site.origin}/tests/web/empty.html`);
  await checkPictures(t, page);
});

// Runs in the page.
function state() {
  const canvas = document.querySelector('canvas');
  const alerts = [...document.querySelectorAll('[role=alert]')].filter((alert) => alert.offsetHeight > 0);
  return { isShown: canvas?.offsetHeight > 0, alerts: alerts.map((alert) => alert.textContent) };
}

// Runs in the page. Gives the address and the middle of the picture.
async function openAndSet() {
  location.hash = '#metaballs&drops=0&pools=0&ground=night';
  while (!document.querySelector('#frame canvas.live')) await new Promise((done) => { setTimeout(done, 50); });
  document.querySelector('#fold').click();
  const slider = document.querySelector('[name=touchRadius]');
  slider.value = slider.max;
  for (const type of ['input', 'change']) slider.dispatchEvent(new Event(type, { bubbles: true }));
  document.querySelector('#fold').click();
  const { x, y, width, height } = document.querySelector('#frame').getBoundingClientRect();
  return { hash: location.hash, x: Math.round(x + width / 2), y: Math.round(y + height / 2) };
}

// Runs in the page. Saves a picture, and gives how red its middle is; -1 where it is not the whole picture.
async function savedRedness() {
  HTMLAnchorElement.prototype.click = () => {};
  const blob = await new Promise((done) => {
    URL.createObjectURL = done;
    document.querySelector('#save').click();
  });
  const picture = await createImageBitmap(blob);
  const { width, height } = document.querySelector('#frame canvas');
  if (picture.width !== width || picture.height !== height) return -1;
  const pixel = document.createElement('canvas').getContext('2d');
  pixel.drawImage(picture, -Math.round(width / 2), -Math.round(height / 2));
  return pixel.getImageData(0, 0, 1, 1).data[0];
}

test('the page starts and moves, and an effect opens, is set, touched and saved', { timeout: 180_000 }, async () => {
  await page.goto(`${site.origin}/out/web/index.html`);
  const hasStarted = async () => {
    const { isShown, alerts } = await page.evaluate(state);
    assert.deepEqual(alerts, []);
    return isShown;
  };
  for (const end = Date.now() + 60_000; !await hasStarted(); await setTimeout(200)) assert.ok(Date.now() < end);
  const pictures = new Set();
  for (let i = 0; i < 4; ++i, await setTimeout(500)) pictures.add(await page.screenshot());
  assert.ok(pictures.size > 2, `${pictures.size} pictures`);
  const { hash, x, y } = await page.evaluate(openAndSet);
  assert.match(hash, /^#metaballs&drops=0&pools=0&touchRadius=[\d.]+&ground=night$/);
  const before = await page.evaluate(savedRedness);
  assert.ok(before >= 0 && before < 80, `${before}`);
  await page.press(x, y);
  while (await page.evaluate(savedRedness) < 140) await setTimeout(50); // a drop grows there
});
