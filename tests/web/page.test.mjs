// The page as a visitor uses it.

import assert from 'node:assert/strict';
import { readdirSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { newPage, root } from './browser.mjs';

const address = '/out/web/index.html';
const millisecondsPerFrame = 16; // of Playwright's clock
const wholeView = { x: 0, y: 0, width: 320, height: 180 };

/** Opens the page, whose clock runs in runFrames() only. */
async function openPage(hash, options = {}) {
  const page = await newPage(options);
  await page.clock.install({ time: 0 });
  await page.clock.pauseAt(60_000); // the browser has taken less until now
  await page.goto(address + hash);
  await page.waitForSelector('.card', { state: 'attached' });
  return page;
}

const runFrames = (page, frames) => page.clock.runFor(frames * millisecondsPerFrame);

const screenshot = (page, canvas = '#frame canvas') => page.locator(canvas).first().screenshot();

/** The average [red, green, blue] of a part of the view. */
async function colorOf(page, clip = wholeView) {
  const png = await page.screenshot({ clip });
  return page.evaluate(async (bytes) => {
    const pixel = new OffscreenCanvas(1, 1).getContext('2d');
    const picture = await createImageBitmap(new Blob([Uint8Array.from(bytes)]));
    pixel.imageSmoothingQuality = 'high';
    pixel.drawImage(picture, 0, 0, 1, 1);
    return [...pixel.getImageData(0, 0, 1, 1).data.slice(0, 3)];
  }, [...png]);
}

const rednessAround = async (page, x, y) => (await colorOf(page, { x: x - 4, y: y - 4, width: 8, height: 8 }))[0];

const widthOf = (page) => page.$eval('#frame canvas', (canvas) => canvas.width);

test('a new visitor loads little and soon sees moving water', async (t) => {
  const folder = join(root, 'out/web');
  const bytes = readdirSync(folder).reduce((sum, name) => sum + statSync(join(folder, name)).size, 0);
  assert.ok(bytes < 600_000, `${bytes} bytes`);

  const page = await newPage();
  await page.goto(address);
  // No card yet, an empty card, the first picture, the next one.
  const milliseconds = await page.waitForFunction(() => {
    window.pictures ??= new Set([undefined]);
    window.pictures.add(document.querySelector('.card canvas')?.toDataURL());
    return window.pictures.size > 3 && performance.now();
  });
  t.diagnostic(`first moving water after ${Math.round(await milliseconds.jsonValue())} ms`);
});

// A slow frame lowers the resolution, but not before the fingers are lifted.
test('every finger has its drop in place while the resolution is due to fall', async () => {
  const page = await openPage('#metaballs', { hasTouch: true });
  const session = await page.context().newCDPSession(page);
  const touch = (type, touchPoints) => session.send('Input.dispatchTouchEvent', { type, touchPoints });
  const fingers = [[50, 90], [160, 70], [240, 60]].map(([x, y], id) => ({ x, y, id }));
  await page.clock.fastForward(600);
  await touch('touchStart', fingers);
  await runFrames(page, 20);
  for (const { x, y } of fingers) assert.ok(await rednessAround(page, x, y) > 140, `no drop at ${x}, ${y}`);
  await touch('touchEnd', []);
  await runFrames(page, 1);
  assert.equal(await widthOf(page), 240);
});

// [what the visitor does, the address, the settings] one after the other in one tab.
test('a link holds all settings of its scene, whatever the tab has shown before', async () => {
  const page = await openPage('#particles&touchRadius=0.1', { permissions: ['clipboard-read', 'clipboard-write'] });
  const follow = (hash) => page.evaluate((text) => { location.hash = text; }, hash);
  const choose = (title) => page.getByRole('button', { name: title, exact: true }).click();
  const steps = [
    [() => page.press('[name=touchRadius]', 'ArrowRight'), '#particles&touchRadius=0.101', { touchRadius: '0.101' }],
    [() => choose('Lagoon'), '#particles&palette=1&touchRadius=0.11', { palette: '1', touchRadius: '0.11' }],
    [() => choose('Sunset'), '#particles', { palette: '0', touchRadius: '0.09' }],
    [() => follow('#water'), '#water', { simulation: '0' }],
    [() => page.selectOption('[name=simulation]', 'pond'), '#water&simulation=1', { simulation: '1' }],
    [() => follow('#particles&hue=90'), '#particles&hue=90', { touchRadius: '0.09', hue: '90' }],
    [() => follow('#water&simulation=1'), '#water&simulation=1', { simulation: '1' }],
    [() => page.goBack(), '#particles&hue=90', { touchRadius: '0.09', hue: '90' }],
    [() => follow('#particles&touchRadius=lots&colour=3&opacity=-1e9'), '#particles&opacity=0', { touchRadius: '0.09' }],
    [() => page.click('#reset'), '#particles', { opacity: '1' }],
    [() => follow('#water&simulation=1.4'), '#water&simulation=1', { simulation: '1' }],
    [() => page.click('#back'), '', {}],
    [() => page.click('[href^="#water"]'), '#water&simulation=1', { simulation: '1' }],
  ];
  for (const [action, hash, values] of steps) {
    await action();
    await page.waitForURL((url) => url.hash === hash);
    for (const [name, value] of Object.entries(values)) {
      assert.equal(await page.inputValue(`[name=${name}]`), value, hash);
    }
  }
  await page.click('#copy');
  await page.getByText('The link is copied').waitFor();
  assert.equal(await page.evaluate(() => navigator.clipboard.readText()), page.url());
});

test('a lost context comes back, in the full view and in the gallery', async () => {
  const page = await openPage('#metaballs');
  const context = await page.evaluateHandle(() =>
    document.querySelector('#frame canvas').getContext('webgl2').getExtension('WEBGL_lose_context'));
  const comesBack = async (canvas) => {
    await runFrames(page, 8);
    await context.evaluate((extension) => extension.loseContext());
    await page.waitForSelector('#lost:not([hidden])', { state: 'attached' });
    await runFrames(page, 2);
    await context.evaluate((extension) => extension.restoreContext());
    await page.waitForSelector('#lost[hidden]', { state: 'attached' });
    const picture = await screenshot(page, canvas);
    await runFrames(page, 8);
    assert.notDeepEqual(await screenshot(page, canvas), picture, `nothing moves in ${canvas}`);
  };
  await comesBack('#frame canvas');
  await page.keyboard.press('Escape');
  await comesBack('.card:nth-child(4) canvas');
});

// The demonstration does not begin in the first frames.
test('water answers a finger and shows the picture of a visitor, or says that a file is not one', async () => {
  const page = await openPage('#water');
  await runFrames(page, 1);
  const smooth = await screenshot(page);
  await runFrames(page, 1);
  assert.deepEqual(await screenshot(page), smooth);
  await page.mouse.move(60, 100);
  await page.mouse.down();
  await page.mouse.move(260, 100, { steps: 6 });
  await runFrames(page, 3);
  await page.mouse.up();
  assert.notDeepEqual(await screenshot(page), smooth);

  const showsGradient = async () => {
    await runFrames(page, 2);
    return (await colorOf(page))[2] < 30;
  };
  await page.setInputFiles('#file', join(root, 'tests/headless/gradient.jpg'));
  await page.getByText('gradient.jpg is the background').waitFor();
  assert.ok(await showsGradient());
  const dataTransfer = await page.evaluateHandle(() => {
    const data = new DataTransfer();
    data.items.add(new File(['la la la'], 'song.png', { type: 'image/png' }));
    return data;
  });
  await page.dispatchEvent('#view', 'drop', { dataTransfer });
  await page.getByText('song.png is not a picture').waitFor();
  assert.ok(await showsGradient());
  await page.click('#own-ground');
  assert.ok(!await showsGradient());
});

test('the keyboard reaches everything, and nothing moves in a pause', async () => {
  const page = await openPage('');
  await page.focus('[href="#particles"]');
  await page.keyboard.press('Space');
  assert.equal(await page.textContent('#gallery .pause'), 'Play');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#title:text("Particles")');
  await page.keyboard.press('ArrowLeft');
  await page.waitForSelector('#title:text("Metaballs")');
  await runFrames(page, 2);
  const still = await screenshot(page);
  await runFrames(page, 60);
  assert.deepEqual(await screenshot(page), still);

  const rednessAfter = async (key) => {
    await page.press('[name=dropSize]', key);
    await runFrames(page, 2);
    return (await colorOf(page))[0];
  };
  const large = await rednessAfter('End');
  const small = await rednessAfter('Home');
  assert.ok(large > small + 40, 'a setting shows even in a pause');

  await page.focus('#frame canvas');
  await page.keyboard.press('Space');
  await runFrames(page, 2);
  assert.equal(await widthOf(page), 320, 'a pause costs no resolution');
  await page.keyboard.down('Enter');
  await runFrames(page, 15);
  assert.ok(await rednessAround(page, 160, 90) > 140, 'no drop in the middle');
  await page.keyboard.press('Escape');
  await page.waitForSelector('.card:focus');
});

test('says what is missing', async () => {
  const cases = [
    [() => { HTMLCanvasElement.prototype.getContext = () => null; }, /does not offer WebGL 2/],
    [() => { WebGL2RenderingContext.prototype.getExtension = () => null; }, /floating-point textures/],
  ];
  for (const [script, words] of cases) {
    const page = await newPage();
    await page.addInitScript(script);
    await page.goto(address);
    assert.match(await page.textContent('[role=alert]'), words);
  }
});

test('fits a desktop and a phone, dark and light', async () => {
  const devices = {
    'desktop-dark': { colorScheme: 'dark', viewport: { width: 900, height: 560 } },
    'phone-light': { colorScheme: 'light', viewport: { width: 390, height: 844 }, hasTouch: true },
  };
  for (const [device, options] of Object.entries(devices)) {
    for (const view of ['gallery', 'vector']) {
      const page = await openPage(`#${view}`, options);
      await runFrames(page, 8);
      await page.screenshot({ path: join(root, `out/screenshots/${device}-${view}.png`) });
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${device} ${view}`);
      const sizes = await page.locator('button:visible, a:visible, .button:visible, select:visible').evaluateAll(
        (controls) => controls.map((control) => Math.min(control.offsetWidth, control.offsetHeight)));
      assert.ok(Math.min(...sizes) >= 36, `a control is ${Math.min(...sizes)} pixels small: ${device} ${view}`);
    }
  }
});
