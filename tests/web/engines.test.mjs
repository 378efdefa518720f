// Whether another engine than Chromium's draws the same: node engines.test.mjs, with ENGINE=firefox or ENGINE=webkit.

import assert from 'node:assert/strict';
import { after, test } from 'node:test';
import { setTimeout } from 'node:timers/promises';

import { engines } from './engines.mjs';
import { checkPictures } from './picture-table.mjs';
import { serveRepository } from './server.mjs';

const site = await serveRepository();
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

// Runs in the page.
async function openAndSet() {
  location.hash = '#metaballs&ground=night';
  while (!document.querySelector('#frame canvas.live')) await new Promise((done) => { setTimeout(done, 50); });
  document.querySelector('#fold').click();
  const slider = document.querySelector('[name=dropSize]');
  slider.value = slider.max;
  for (const type of ['input', 'change']) slider.dispatchEvent(new Event(type, { bubbles: true }));
  return location.hash;
}

test('the page starts and moves, and an effect opens and is set', async () => {
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
  assert.match(await page.evaluate(openAndSet), /^#metaballs&dropSize=[\d.]+&ground=night$/);
});
