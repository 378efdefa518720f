// What the tests of the page share: the page with a clock of its own, and colours of what it shows.

import assert from 'node:assert/strict';

import { newPage } from './browser.mjs';

export const address = '/out/web/index.html';
const millisecondsPerFrame = 16; // of Playwright's clock

/** Opens the page, whose clock runs in runFrames() only. */
export async function openPage(hash, options = {}) {
  const page = await newPage(options);
  await page.addInitScript(() => { // counts what workers still have to answer
    const { postMessage } = Worker.prototype;
    globalThis.questions = 0;
    Worker.prototype.postMessage = function ask(...question) {
      ++globalThis.questions;
      this.addEventListener('message', () => { --globalThis.questions; }, { once: true });
      postMessage.apply(this, question);
    };
  });
  await page.clock.install({ time: 0 });
  await page.clock.pauseAt(60_000); // the browser has taken less until now
  await page.goto(address + hash);
  await page.waitForSelector('#loading', { state: 'hidden' });
  return page;
}

export const runFrames = (page, frames) => page.clock.runFor(frames * millisecondsPerFrame);

/** Runs frames until an element is there: the browser takes its own time to see what is in sight. */
export async function runUntil(page, selector) {
  for (let frames = 0; await page.locator(selector).count() === 0; frames += 5) {
    assert.ok(frames < 1000, `no ${selector} after ${frames} frames`);
    await runFrames(page, 5);
  }
}

/** Runs a frame, which may ask for grounds, and waits for them. */
export async function groundsAreDrawn(page) {
  await runFrames(page, 1);
  await page.waitForFunction(() => globalThis.questions === 0);
}

/** The average [red, green, blue] of a part of the window. */
export async function colorOf(page, clip) {
  const png = await page.screenshot({ clip, animations: 'disabled' });
  return page.evaluate(async (bytes) => {
    const pixel = new OffscreenCanvas(1, 1).getContext('2d');
    const picture = await createImageBitmap(new Blob([Uint8Array.from(bytes)]));
    pixel.imageSmoothingQuality = 'high';
    pixel.drawImage(picture, 0, 0, 1, 1);
    return [...pixel.getImageData(0, 0, 1, 1).data.slice(0, 3)];
  }, [...png]);
}

export const rednessAround = async (page, x, y) =>
  (await colorOf(page, { x: x - 4, y: y - 4, width: 8, height: 8 }))[0];

export const follow = (page, hash) => page.evaluate((text) => { location.hash = text; }, hash);

export const widthOf = (page) => page.locator('#frame canvas').evaluate(({ width }) => width); // once it is there
