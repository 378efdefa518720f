// One effect in the full view: touches, keys, settings, grounds, and the pace of its frames.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { root } from './browser.mjs';
import { colorOf, follow, groundsAreDrawn, openPage, rednessAround, runFrames, widthOf } from './visitor.mjs';

const picture = { x: 0, y: 80, width: 320, height: 180 }; // below the bar

const screenshot = (page) => page.screenshot({ clip: picture, animations: 'disabled' });

async function touchscreen(page) {
  const session = await page.context().newCDPSession(page);
  return (type, ...points) => session.send('Input.dispatchTouchEvent', {
    type, touchPoints: points.map(([x, y], id) => ({ x, y, id })),
  });
}

// A slow frame lowers the resolution, but not before the fingers are lifted.
test('every finger has its drop in place while the resolution is due to fall', async () => {
  const page = await openPage('#metaballs', { hasTouch: true });
  const touch = await touchscreen(page);
  const fingers = [[50, 150], [160, 120], [240, 110]];
  await runFrames(page, 4);
  await touch('touchStart', ...fingers);
  await page.clock.fastForward(2000);
  await runFrames(page, 20);
  for (const [x, y] of fingers) assert.ok(await rednessAround(page, x, y) > 140, `no drop at ${x}, ${y}`);
  assert.equal(await widthOf(page), 320);
  await touch('touchEnd');
  await page.clock.fastForward(2000);
  await runFrames(page, 2);
  assert.equal(await widthOf(page), 240);
  assert.match(await page.textContent('#time'), /^\d+ frames a second, 240 × 225 pixels$/);
  await page.evaluate(() => document.dispatchEvent(new Event('visibilitychange')));
  await page.clock.fastForward(60_000);
  await runFrames(page, 4);
  assert.equal(await widthOf(page), 240, 'a tab that was out of sight is no slow machine');
});

// Where the point of the keyboard is, too.
test('a finger counts until it lifts, is cancelled, or another scene comes', async () => {
  const page = await openPage('#metaballs&dropSize=0.5', { hasTouch: true });
  const touch = await touchscreen(page);
  const redness = async () => {
    await runFrames(page, 20);
    return rednessAround(page, 160, 150);
  };
  const free = await redness();
  const endings = {
    lifted: () => Promise.all([touch('touchEnd'), page.keyboard.up('Space')]),
    cancelled: () => Promise.all([touch('touchCancel'), page.keyboard.up('Space')]),
    left: async () => {
      await follow(page, '#water');
      await page.waitForSelector('#title:text-is("Water")');
      await follow(page, '#metaballs&dropSize=0.5');
      await page.waitForSelector('#title:text-is("Metaballs")');
    },
    restarted: () => page.keyboard.press('r'),
  };
  for (const [ending, end] of Object.entries(endings)) {
    await page.focus('#frame canvas');
    await page.keyboard.down('Space');
    await touch('touchStart', [160, 150]);
    assert.ok(await redness() > 140, `no drop before it is ${ending}`);
    await end();
    await runFrames(page, 40);
    assert.ok(Math.abs(await redness() - free) < 60, `still a drop after it is ${ending}`);
    await page.keyboard.up('Space');
    if (ending !== 'lifted' && ending !== 'cancelled') await touch('touchEnd');
  }
});

// [what the visitor does, the address, the settings] one after the other in one tab.
test('a link holds all settings of its scene, whatever the tab has shown before', async () => {
  const page = await openPage('#particles&touchRadius=0.1');
  await page.click('#fold');
  const choose = (title) => page.getByRole('button', { name: title, exact: true }).click();
  const steps = [
    [() => page.getByLabel("Radius of a finger's blob").press('ArrowRight'),
      '#particles&touchRadius=0.101', { touchRadius: '0.101' }],
    [() => choose('Lagoon'), '#particles&preset=lagoon', { palette: '1', touchRadius: '0.11' }],
    [() => choose('Glass'), '#particles', { palette: '2', touchRadius: '0.12' }],
    [() => follow(page, '#water'), '#water', { simulation: '0' }],
    [() => page.selectOption('[name=simulation]', 'pond'), '#water&simulation=1', { simulation: '1' }],
    [() => follow(page, '#particles&hue=90'), '#particles&hue=90', { touchRadius: '0.12', hue: '90' }],
    [() => follow(page, '#water&simulation=1'), '#water&simulation=1', { simulation: '1' }],
    [() => page.goBack(), '#particles&hue=90', { touchRadius: '0.12', hue: '90' }],
    [() => follow(page, '#particles&touchRadius=lots&colour=3&opacity=-9&hue=1e9'), '#particles&hue=180&opacity=0', {}],
    [() => page.click('#reset'), '#particles', { opacity: '0.6' }],
    [() => follow(page, '#metaballs'), '#metaballs', { opacity: '1' }],
    [() => page.press('[name=opacity]', 'ArrowLeft'), '#metaballs&opacity=0.99', { opacity: '0.99' }],
    [() => follow(page, '#water&simulation=1.4'), '#water&simulation=1', { simulation: '1' }],
    [() => page.click('#restart'), '#water&simulation=1&seed=2', { simulation: '1' }],
    [() => page.click('#back'), '', {}],
    [() => page.click('[href^="#water"]'), '#water&simulation=1&seed=2', { simulation: '1' }],
  ];
  for (const [action, hash, values] of steps) {
    await action();
    await page.waitForURL((url) => url.hash === hash);
    for (const [name, value] of Object.entries(values)) {
      assert.equal(await page.inputValue(`[name=${name}]`), value, hash);
    }
  }
  const pictureOf = async (seed) => {
    const other = await openPage(`#metaballs&seed=${seed}`);
    await groundsAreDrawn(other);
    await runFrames(other, 10);
    return screenshot(other);
  };
  assert.notDeepEqual(await pictureOf(7), await pictureOf(8));
});

test('a lost context comes back, in the full view and at the top of the page', async () => {
  const page = await openPage('#metaballs');
  const context = await page.evaluateHandle(() =>
    document.querySelector('#frame canvas').getContext('webgl2').getExtension('WEBGL_lose_context'));
  const comesBack = async (view) => {
    await runFrames(page, 8);
    await context.evaluate((extension) => extension.loseContext());
    await page.waitForSelector('#lost:not([hidden])', { state: 'attached' });
    await runFrames(page, 2);
    await context.evaluate((extension) => extension.restoreContext());
    await page.waitForSelector('#lost[hidden]', { state: 'attached' });
    const before = await screenshot(page);
    for (let tries = 0; tries < 20; ++tries) {
      await runFrames(page, 8);
      if (!before.equals(await screenshot(page))) return;
      await page.waitForTimeout(50); // for the browser to say what is in sight
    }
    assert.fail(`nothing moves in ${view}`);
  };
  await comesBack('the full view');
  await page.keyboard.press('Escape');
  await page.evaluate(() => scrollTo({ top: 0, behavior: 'instant' }));
  await comesBack('the water at the top');
});

// The thumbnails and the picture come from a worker, which takes its own time.
test('a preset, a visitor and a picture choose the ground', async () => {
  const page = await openPage('#water', { viewport: { width: 480, height: 480 } });
  await page.click('#fold');
  const shows = async (what, isIt) => {
    for (let tries = 0; tries < 100; ++tries) {
      await runFrames(page, 2);
      if (isIt(await colorOf(page, { x: 0, y: 80, width: 480, height: 120 }))) return;
      await page.waitForTimeout(50);
    }
    assert.fail(`never shows ${what}`);
  };
  const checked = () => page.$eval('#grounds :checked', ({ ariaLabel }) => ariaLabel);
  await page.click('[aria-label="Night sky"]');
  await shows('the night', ([red, green, blue]) => Math.max(red, green, blue) < 60);
  await page.setInputFiles('#file', join(root, 'tests/headless/gradient.jpg'));
  await page.getByText('gradient.jpg is the ground').waitFor();
  await shows('the picture', ([red, , blue]) => red > 60 && blue < 30);
  assert.equal(await checked(), 'Your picture');
  const dataTransfer = await page.evaluateHandle(() => {
    const data = new DataTransfer();
    data.items.add(new File(['la la la'], 'song.png', { type: 'image/png' }));
    return data;
  });
  await page.dispatchEvent('#view', 'drop', { dataTransfer });
  await page.getByText('song.png is not a picture').waitFor();
  await shows('the picture', ([red, , blue]) => red > 60 && blue < 30);
  await follow(page, '#waves');
  await page.waitForSelector('#title:text-is("Waves")');
  assert.equal(await checked(), 'Your picture');
  await page.click('#previous');
  await page.waitForSelector('#title:text-is("Water")');
  assert.equal(await checked(), 'Your picture');
  await follow(page, '#water&ground=night');
  await page.waitForSelector('#grounds [value=night]:checked', { state: 'attached' });
  await page.setInputFiles('#file', join(root, 'web/page/posters/waves.webp'));
  await shows('another picture', ([red, , blue]) => red < 60 && blue > 100);
  await page.click('#restart');
  await shows('it after a restart', ([red, , blue]) => red < 60 && blue > 100);
  await page.click('.pause:visible');
  await page.click('[aria-label="Sunset"]');
  await shows('the sunset in a pause', ([red, , blue]) => red > blue + 20);

  await follow(page, '#metaballs');
  await page.waitForSelector('#title:text-is("Metaballs")');
  assert.equal(await checked(), 'Glow of embers');
  await page.getByRole('button', { name: 'Ink', exact: true }).click();
  assert.equal(await checked(), 'Stones on sand');
  await page.click('[aria-label="Glow of embers"]');
  await page.waitForURL((url) => url.hash === '#metaballs&preset=ink&ground=ember');
});

test('the keyboard reaches everything, and nothing moves in a pause', async () => {
  const page = await openPage('');
  await page.focus('[href="#particles"]');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#title:text-is("Particles")');
  await page.keyboard.press(',');
  await page.waitForSelector('#title:text-is("Metaballs")');
  await page.keyboard.press('ArrowLeft');
  assert.ok(await page.isVisible('#mark'));
  await runFrames(page, 2);
  await page.keyboard.press('Alt+p'); // is the browser's
  await page.keyboard.press('p');
  await page.getByRole('button', { name: 'Play' }).waitFor();
  const still = await screenshot(page);
  await runFrames(page, 60);
  assert.deepEqual(await screenshot(page), still);

  await page.focus('#fold');
  await page.keyboard.press('Space');
  const rednessAfter = async (key) => {
    await page.press('[name=dropSize]', key);
    await runFrames(page, 2);
    return (await colorOf(page, { x: 0, y: 70, width: 320, height: 80 }))[0];
  };
  const large = await rednessAfter('End');
  const small = await rednessAfter('Home');
  assert.ok(large > small + 40, 'a setting shows even in a pause');
  for (const slider of await page.locator('#settings input').all()) {
    const label = await page.textContent(`label[for=${await slider.getAttribute('id')}]`);
    await page.getByRole('slider', { name: label, exact: true }).waitFor();
  }
  await page.press('[name=dropSize]', 'ArrowRight');
  assert.equal(await page.textContent('.setting:has([name=hue]) span'), '0 degrees');
  await page.keyboard.press('.');
  assert.equal(await page.textContent('#title'), 'Metaballs');

  await page.press('[name=dropSize]', 'Escape');
  await page.waitForSelector('#fold:focus');
  assert.ok(await page.isHidden('#panel'));
  await page.focus('#frame canvas');
  for (let i = 0; i < 8; ++i) await page.keyboard.press('ArrowRight');
  assert.ok(await page.isVisible('#mark'));
  await page.keyboard.down('Space'); // which plays, too
  await runFrames(page, 20);
  const { x, y, width, height } = await page.locator('#mark').boundingBox();
  assert.ok(x + width / 2 > 200, `the point is at ${x + width / 2}`);
  assert.ok(await rednessAround(page, x + width / 2, y + height / 2) > 140, 'no drop at the point');
  assert.equal(await widthOf(page), 320, 'a pause costs no resolution');

  const [download] = await Promise.all([
    page.waitForEvent('download'), page.keyboard.press('s').then(() => runFrames(page, 2)),
  ]);
  assert.equal(download.suggestedFilename(), 'tidalume-metaballs.png');
  assert.equal(readFileSync(await download.path()).readUInt32BE(16), 320);
  await page.keyboard.press('f');
  await page.waitForFunction(() => document.fullscreenElement);
  await page.keyboard.press('f');
  await page.waitForFunction(() => !document.fullscreenElement);
  await page.click('#fold');
  await page.focus('#look');
  for (const other of ['lines', 'look']) {
    await page.keyboard.press('ArrowRight');
    await page.waitForSelector(`#${other}:focus`);
  }
  await page.focus('#back');
  await page.keyboard.press('Escape');
  await page.waitForSelector('.card:focus');
});
