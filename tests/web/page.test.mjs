// The page as a visitor uses it.

import assert from 'node:assert/strict';
import { mkdirSync, readdirSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { after, afterEach, before, test } from 'node:test';

import { Browser, root } from './browser.mjs';

const screenshots = join(root, 'out/screenshots');
const side = 20; // of what look() returns
const green = Buffer.from('iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR42mNg+M8AAAICAQBF9FLUAAAAAElFTkSuQmCC', 'base64');

let browser;
before(async () => {
  mkdirSync(screenshots, { recursive: true });
  browser = await Browser.start();
});
after(() => browser.stop());
afterEach(() => browser.closePages());

async function openPage(hash, options = {}) {
  const page = await browser.open('/page/' + hash, { viewport: { width: 320, height: 300 }, ...options });
  await page.waitForSelector('.card', { state: 'attached' });
  return page;
}

/** Waits until the page's own frames have passed. */
function pass(page, frames) {
  return page.evaluate((count) => new Promise((resolve) => {
    const wait = (left) => (left === 0 ? resolve() : requestAnimationFrame(() => wait(left - 1)));
    wait(count);
  }), frames);
}

/** What is seen of the full view, or of another canvas, as rows of [red, green, blue]. */
async function look(page, canvas = '#frame canvas') {
  const png = await page.locator(canvas).first().screenshot();
  return page.evaluate(async ([bytes, size]) => {
    const copy = new OffscreenCanvas(size, size).getContext('2d');
    copy.imageSmoothingEnabled = false;
    copy.drawImage(await createImageBitmap(new Blob([Uint8Array.from(bytes)])), 0, 0, size, size);
    const { data } = copy.getImageData(0, 0, size, size);
    return Array.from({ length: size * size }, (_, i) => [...data.slice(4 * i, 4 * i + 3)]);
  }, [[...png], side]);
}

/** The colour at a place in shares of the size. */
const at = (colors, x, y) => colors[Math.floor(y * side) * side + Math.floor(x * side)];

const shareOfWarm = (colors) => colors.filter(([redness]) => redness > 140).length / colors.length;

function differing(before, after, threshold = 24) {
  return before.filter((color, i) => color.some((value, c) => Math.abs(value - after[i][c]) > threshold)).length;
}

const valueOf = (page, name) => page.inputValue(`#settings [name=${name}]`);

const says = (page, words) =>
  page.waitForFunction((text) => document.getElementById('message').textContent.includes(text), words);

test('the folder is small', () => {
  const folder = join(root, 'out/web');
  const bytes = readdirSync(folder).reduce((sum, name) => sum + statSync(join(folder, name)).size, 0);
  assert.ok(bytes < 600_000, `${bytes} bytes`);
});

test('the gallery of a new visitor moves', async (t) => {
  const page = await openPage('');
  const milliseconds = await page.evaluate(() => new Promise((resolve) => {
    const copy = new OffscreenCanvas(90, 120).getContext('2d', { willReadFrequently: true });
    let first = null;
    const look = (framesLeft) => {
      copy.drawImage(document.querySelector('.card canvas'), 0, 0);
      const bytes = copy.getImageData(0, 0, 90, 120).data;
      if (bytes.some((value, i) => i % 4 < 3 && value > 60)) first ??= bytes;
      if (first && bytes.some((value, i) => value !== first[i])) resolve(performance.now());
      else if (framesLeft > 0) requestAnimationFrame(() => look(framesLeft - 1));
      else resolve(null);
    };
    look(600);
  }));
  assert.notEqual(milliseconds, null, 'the water stands still');
  t.diagnostic(`first moving water after ${Math.round(milliseconds)} ms`);
});

test('water answers a finger drawn over it', async () => {
  const page = await openPage('#water&radius=3&strength=3&depth=3');
  await page.mouse.click(2, 2); // ends the demonstration
  await pass(page, 20);
  const before = await look(page);
  await page.mouse.move(60, 100);
  await page.mouse.down();
  await page.mouse.move(260, 100, { steps: 6 });
  await pass(page, 12);
  await page.keyboard.press('Space');
  const changed = differing(before, await look(page));
  assert.ok(changed > 40, `${changed} places changed`);
});

test('every finger counts', async () => {
  const page = await openPage('#metaballs', { hasTouch: true });
  const session = await page.context().newCDPSession(page);
  const box = await page.locator('#frame canvas').boundingBox();
  const places = [[0.15, 0.5], [0.5, 0.4], [0.85, 0.55]];
  const touchPoints = places.map(([x, y], id) => ({ x: box.x + x * box.width, y: box.y + y * box.height, id }));
  await session.send('Input.dispatchTouchEvent', { type: 'touchStart', touchPoints });
  await pass(page, 40);
  const colors = await look(page);
  for (const [x, y] of places) assert.ok(at(colors, x, y)[0] > 140, `no drop under the finger at ${x}, ${y}`);
});

test('settings change the picture and go into the link', async () => {
  const page = await openPage('#metaballs', { permissions: ['clipboard-read', 'clipboard-write'] });
  const warmthAfter = async (key) => {
    await page.focus('[name=radius]');
    await page.keyboard.press(key);
    await pass(page, 3);
    return shareOfWarm(await look(page));
  };
  const small = await warmthAfter('Home');
  const large = await warmthAfter('End');
  assert.ok(large > small + 0.2, `${small} of the picture, then ${large}`);
  await page.click('#copy');
  await says(page, 'The link is copied');
  const link = await page.evaluate(() => navigator.clipboard.readText());
  assert.match(link, /#metaballs&radius=1\.5$/);
  await page.click('#reset');
  assert.equal(await valueOf(page, 'radius'), '1');
  assert.ok(await page.isHidden('#background'), 'drops show no background');
  assert.match(page.url(), /#metaballs$/);
});

// [what the visitor does, the address, what the settings say] one after the other in one tab.
test('a link says all settings of its scene, whatever the tab has shown before', async () => {
  const page = await openPage('#particles&radius=60');
  const follow = (hash) => page.evaluate((text) => { location.hash = text; }, hash);
  const steps = [
    [() => page.click('#next'), '#comet', { blend: '0' }],
    [() => page.selectOption('[name=blend]', 'Screen'), '#comet&blend=3', { blend: '3' }],
    [() => follow('#particles&hue=90'), '#particles&hue=90', { radius: '50', hue: '90' }],
    [() => page.click('#next'), '#comet&blend=3', { blend: '3' }],
    [() => page.goBack(), '#particles&hue=90', { radius: '50', hue: '90' }],
    [() => follow('#particles&radius=lots&colour=3&quality=1e9'), '#particles&quality=6', { radius: '50' }],
    [() => follow('#comet&blend=1.4'), '#comet&blend=1', { blend: '1' }],
  ];
  for (const [action, address, values] of steps) {
    await action();
    await page.waitForURL((url) => url.hash === address);
    for (const [name, value] of Object.entries(values)) assert.equal(await valueOf(page, name), value, address);
  }
});

// Every frame takes 10 ms on this page's clock.
test('a pause costs no resolution', async () => {
  const page = await browser.open('/page/#metaballs', { viewport: { width: 320, height: 300 } }, () => {
    const request = requestAnimationFrame;
    let time = 0;
    performance.now = () => time;
    window.requestAnimationFrame = (draw) => request(() => draw(time += 10));
  });
  await page.waitForSelector('.card', { state: 'attached' });
  const width = () => page.$eval('#frame canvas', (canvas) => canvas.width);
  const before = await width();
  await page.keyboard.press('Space');
  await pass(page, 60);
  await page.keyboard.press('Space');
  await pass(page, 60);
  assert.equal(await width(), before);
});

test('a lost context comes back, in the full view and then in the gallery', async () => {
  const page = await openPage('#metaballs');
  const loss = await page.evaluateHandle(() =>
    document.querySelector('#frame canvas').getContext('webgl2').getExtension('WEBGL_lose_context'));
  for (const canvas of ['#frame canvas', '.card:nth-child(4) canvas']) {
    if (canvas.startsWith('.card')) await page.keyboard.press('Escape');
    await pass(page, 5);
    await loss.evaluate((extension) => extension.loseContext());
    await page.waitForSelector('#lost:not([hidden])', { state: 'attached' });
    await pass(page, 3);
    await loss.evaluate((extension) => extension.restoreContext());
    await page.waitForSelector('#lost[hidden]', { state: 'attached' });
    await pass(page, 3);
    const first = await look(page, canvas);
    await pass(page, 20);
    assert.ok(shareOfWarm(first) > 0.1, 'nothing is drawn');
    assert.ok(differing(first, await look(page, canvas)) > 10, 'nothing moves');
  }
});

test('a picture becomes the background, chosen or dropped; anything else is refused in words', async () => {
  const page = await openPage('#water');
  const middle = async () => at(await look(page), 0.5, 0.5);
  await page.setInputFiles('#file', { name: 'green.png', mimeType: 'image/png', buffer: green });
  await says(page, 'green.png is the background');
  const chosen = await middle();
  assert.ok(chosen[0] < 90 && chosen[1] > 120, `${chosen}`);

  const dataTransfer = await page.evaluateHandle(() => {
    const data = new DataTransfer();
    data.items.add(new File(['la la la'], 'song.png', { type: 'image/png' }));
    return data;
  });
  await page.dispatchEvent('#view', 'drop', { dataTransfer });
  await says(page, 'song.png is not a picture');
  assert.ok((await middle())[1] > 120, 'the green picture stays');
  await page.click('#pebbles');
  await pass(page, 3);
  assert.equal(differing([chosen], [await middle()]), 1, 'the pebbles are back');
});

test('the keyboard reaches everything', async () => {
  const page = await openPage('');
  const arriveAt = (title) => page.waitForFunction((text) => document.getElementById('title').textContent === text, title);
  await page.focus('[href="#particles"]');
  await page.keyboard.press('Space');
  assert.equal(await page.textContent('#gallery .pause'), 'Play');
  await page.keyboard.press('Enter');
  await arriveAt('Particles');
  await page.keyboard.press('ArrowLeft');
  await arriveAt('Metaballs');
  await pass(page, 3);

  const still = await look(page);
  assert.ok(shareOfWarm(still) > 0.1, 'another effect shows itself also in a pause');
  await pass(page, 20);
  assert.equal(differing(still, await look(page), 0), 0, 'a paused picture stands still');
  await page.focus('[name=radius]');
  await page.keyboard.press('End');
  assert.ok(differing(still, await look(page)) > 20, 'a setting shows itself also in a pause');
  await page.focus('#frame canvas');
  await page.keyboard.press('Space');

  const untouched = await look(page);
  await page.keyboard.down('Enter');
  await pass(page, 10);
  assert.ok(differing(untouched, await look(page)) > 5);
  await page.keyboard.press('Escape');
  await page.waitForSelector('.card:visible');
});

test('says what is missing', async () => {
  const cases = [
    [() => { HTMLCanvasElement.prototype.getContext = () => null; }, /does not offer WebGL 2/],
    [() => { WebGL2RenderingContext.prototype.getExtension = () => null; }, /floating-point textures/],
  ];
  for (const [script, words] of cases) {
    const page = await browser.open('/page/', {}, script);
    assert.match(await page.textContent('[role=alert]'), words);
  }
});

test('fits a desktop and a phone, dark and light', async (t) => {
  const devices = [
    { name: 'desktop-dark', colorScheme: 'dark', viewport: { width: 900, height: 560 }, effect: 'water' },
    { name: 'phone-light', colorScheme: 'light', viewport: { width: 390, height: 844 }, effect: 'vector', hasTouch: true },
  ];
  for (const { name, effect, ...options } of devices) {
    const page = await openPage('', options);
    for (const view of ['gallery', effect]) {
      if (view === effect) await page.click(`[href="#${effect}"]`);
      await pass(page, 12);
      const excess = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
      assert.ok(excess <= 0, `${view} is ${excess} pixels too wide on ${name}`);
      await page.screenshot({ path: join(screenshots, `${name}-${view}.png`) });
    }
    const targets = await page.$$eval('#view button, #view nav a, #view .button, #view select', (elements) =>
      elements.map((element) => Math.min(element.offsetWidth, element.offsetHeight)));
    assert.ok(Math.min(...targets) >= 36, `a control is ${Math.min(...targets)} pixels small on ${name}`);
  }
  t.diagnostic(`screenshots are in ${screenshots}`);
});
