// The page as a visitor comes to it: what loads, the water at its top, the cards, and whom it fits.

import assert from 'node:assert/strict';
import { readFileSync, readdirSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { newPage, root } from './browser.mjs';
import { address, follow, groundsAreDrawn, openPage, runFrames, runUntil, widthOf } from './visitor.mjs';

const axe = readFileSync(join(root, 'node_modules/axe-core/axe.min.js'), 'utf8');
const devices = {
  phone: { viewport: { width: 390, height: 844 }, hasTouch: true, colorScheme: 'light' },
  tablet: { viewport: { width: 820, height: 1180 }, hasTouch: true, colorScheme: 'dark' },
  landscape: { viewport: { width: 844, height: 390 }, hasTouch: true, colorScheme: 'dark' },
  desktop: { viewport: { width: 1280, height: 800 }, colorScheme: 'light' },
};

test('a new visitor loads little and soon sees moving water', async (t) => {
  const folder = join(root, 'out/web');
  const sizes = readdirSync(folder, { recursive: true }).map((name) => statSync(join(folder, name)).size);
  const bytes = sizes.reduce((sum, size) => sum + size, 0);
  t.diagnostic(`${bytes} bytes`);
  assert.ok(bytes < 600_000, `${bytes} bytes`);

  const page = await newPage({ viewport: { width: 640, height: 480 } });
  await page.goto(address);
  await page.waitForSelector('#hero canvas.live');
  const { size } = statSync(join(folder, 'tidalume.wasm'));
  assert.deepEqual(await page.$eval('#loading', ({ value, max }) => [value, max]), [size, size]);
  t.diagnostic(`first moving water after ${Math.round(await page.evaluate(() => performance.now()))} ms`);
});

test('the poster stays until the water moves or the mouse does, which the water follows', async () => {
  const waterUnder = async (x) => {
    const page = await openPage('', { viewport: { width: 640, height: 480 } });
    await groundsAreDrawn(page);
    assert.equal(await page.locator('#hero canvas.live').count(), 0);
    await page.mouse.move(x, 60);
    await page.mouse.move(x + 100, 120, { steps: 8 });
    await runFrames(page, 3);
    await page.waitForSelector('#hero canvas.live');
    return page.screenshot({ animations: 'disabled' });
  };
  assert.notDeepEqual(await waterUnder(200), await waterUnder(400));
});

test('from a card to a link for a friend', async () => {
  const page = await openPage('', { deviceScaleFactor: 3, permissions: ['clipboard-read', 'clipboard-write'] });
  await page.click('text=See the effects');
  await page.locator('.card[data-scene=metaballs]').scrollIntoViewIfNeeded();
  await runUntil(page, '.card[data-scene=metaballs] canvas');
  const card = page.locator('.card[data-scene=metaballs] canvas');
  const still = await card.screenshot({ animations: 'disabled' });
  await runFrames(page, 10);
  assert.notDeepEqual(await card.screenshot({ animations: 'disabled' }), still, 'the card stands still');

  await page.click('.card[data-scene=metaballs]');
  assert.equal(await widthOf(page), 640, 'two pixels a point at most');
  await page.click('#fold');
  await page.getByRole('button', { name: 'Ink', exact: true }).click();
  await page.click('[aria-label="Stones on sand"]');
  await page.click('[aria-label="Pool tiles"]');
  const addresses = await page.$eval('[name=speed]', (slider) => { // drawn to its end
    let count = 0;
    const write = history.replaceState.bind(history);
    history.replaceState = (...state) => { ++count; write(...state); };
    for (let i = 0; i <= 300; ++i) {
      slider.value = i / 300 * slider.max;
      slider.dispatchEvent(new Event('input', { bubbles: true }));
    }
    slider.dispatchEvent(new Event('change', { bubbles: true }));
    return count;
  });
  assert.equal(addresses, 1, 'browsers refuse a page that writes many');
  await page.click('#lines');
  assert.match(await page.textContent('#code-tab code'), /app:preset="ink"[^]*app:effectSpeed=/);
  const copied = () => page.evaluate(() => navigator.clipboard.readText());
  await page.click('#copy-code');
  await page.getByText('The code is copied').click(); // the panel leaves it visible
  assert.equal(await copied(), await page.textContent('#code-tab code'));
  await page.click('#look');
  await page.click('#restart');
  await page.click('#copy');
  await page.getByText('The link is copied').waitFor();
  const link = new URL(await copied());

  const other = await openPage(link.hash, { viewport: { width: 640, height: 480 } });
  assert.equal(await other.evaluate(() => location.hash), link.hash);
  assert.match(link.hash, /seed=2/);
  assert.ok(await other.isChecked('[aria-label="Pool tiles"]'));
  assert.equal(await other.inputValue('[name=speed]'), await page.inputValue('[name=speed]'));
});

test('every card has a poster and the words of its scene', async () => {
  const page = await openPage('');
  const cards = await page.$$eval('.card', (links) => Promise.all(links.map(async (link) => {
    const poster = link.querySelector('img');
    poster.loading = 'eager';
    await poster.decode(); // which throws where there is none
    const words = [...link.querySelectorAll('h3, p')].map((text) => text.textContent.replace(/\s+/g, ' '));
    return { hash: new URL(link.href).hash, words };
  })));
  for (const { hash, words } of cards) {
    await follow(page, hash);
    await page.waitForSelector(`#title:text-is("${words[0]}")`);
    assert.equal(await page.textContent('#sentence'), words[1]);
  }
  await page.selectOption('[name=blend]', 'Lighten', { force: true });
  await page.selectOption('#code-tab select', 'java', { force: true });
  assert.match(await page.textContent('#code-tab code'), /EQUATION_MAX/);
  await page.getByRole('link', { name: 'Next effect' }).click();
  await page.waitForSelector(`#title:text-is("${cards[0].words[0]}")`); // there are no scenes beyond the cards
  for (const language of ['xml', 'java']) {
    await page.selectOption('#code-tab select', language, { force: true });
    assert.equal(await page.textContent(`[data-language=${language}]`), await page.textContent('#code-tab code'));
  }
});

test('who wants less motion sees stills, which a touch plays', async () => {
  const page = await openPage('', { reducedMotion: 'reduce' });
  await runFrames(page, 10);
  assert.equal(await page.locator('canvas.live, .card canvas').count(), 0);
  await follow(page, '#comet');
  await page.waitForSelector('#title:text("Comets")');
  await runUntil(page, '#frame canvas.live');
  const still = await page.screenshot({ animations: 'disabled' });
  await runFrames(page, 10);
  assert.deepEqual(await page.screenshot({ animations: 'disabled' }), still);
  const restarted = async () => {
    await page.keyboard.press('r');
    await runFrames(page, 4);
    return page.screenshot({ animations: 'disabled' });
  };
  assert.notDeepEqual(await restarted(), await restarted(), 'at first there are no comets yet');
  assert.equal(await page.evaluate(() => getComputedStyle(document.documentElement).scrollBehavior), 'auto');
  await page.mouse.click(100, 200);
  await runFrames(page, 10);
  assert.notDeepEqual(await page.screenshot({ animations: 'disabled' }), still);
});

test('says what is missing or failed, and what to do', async () => {
  const cases = [
    [() => { HTMLCanvasElement.prototype.getContext = () => null; }, /^\s*This browser.* WebGL 2.*acceleration/],
    [() => { WebGL2RenderingContext.prototype.getExtension = () => null; }, /^\s*The graphics.*floating-point/],
    [() => { delete globalThis.WebAssembly; }, /^\s*This browser.*WebAssembly.*Please allow it/],
    [() => { globalThis.fetch = () => Promise.reject(new Error('No network.')); }, /No network.*try again/],
    ['tidalume.js', /No script.*try again/],
    ['hero.js', /hero.js.*try again/],
  ];
  const broken = { contentType: 'text/javascript', body: "throw new Error('No script.');" };
  for (const [fault, words] of cases) {
    const page = await newPage({ viewport: { width: 390, height: 500 } }, /was preloaded using link preload/);
    if (typeof fault === 'string') await page.route(`**/${fault}`, (route) => route.fulfill(broken));
    else await page.addInitScript(fault);
    await page.goto(`${address}#water`);
    await page.click('#failure p', { trial: true, position: { x: 4, y: 4 } }); // nothing lies over it
    assert.match(await page.textContent('#failure'), words);
    await page.click('#back');
    await page.click('.card[data-scene=comet]');
    await page.waitForSelector('#poster[src$="comet.webp"]');
    await Promise.all([page.waitForEvent('load'), page.click('#again')]);
  }
  const page = await newPage({}, /was preloaded using link preload/);
  await page.route('**/start.js', (route) => route.fulfill({ ...broken, body: '' }));
  await page.goto(address);
  assert.ok(await page.isHidden('#slow p'));
  await page.$eval('#slow p', (words) => words.getAnimations()[0].finish()); // 20 seconds later
  await page.waitForSelector('#slow p');
});

for (const [device, options] of Object.entries(devices)) {
  test(`fits a ${device}, and everybody`, async () => {
    const page = await newPage(options); // whose clock runs, for axe
    const inspect = async (view) => {
      await page.screenshot({ path: join(root, `out/screenshots/${device}-${view}.png`) });
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${device} ${view}`);
      const bar = await page.locator('#bar').evaluate(({ offsetHeight }) => offsetHeight);
      assert.ok(bar < 120, `the bar is ${bar} pixels high: ${device} ${view}`);
      const sizes = await page.locator('button:visible, a:visible, .button:visible, select:visible').evaluateAll(
        (controls) => controls.map((control) => Math.min(control.offsetWidth, control.offsetHeight)));
      assert.ok(Math.min(...sizes) >= 36, `a control is ${Math.min(...sizes)} pixels small: ${device} ${view}`);
      const { violations } = await page.evaluate(`${axe}; axe.run()`);
      assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html)}`), [], view);
    };
    await page.goto(`${address}#water`);
    await page.waitForSelector('#frame canvas.live');
    await page.click('.pause:visible');
    const isFolded = await page.isHidden('#panel');
    assert.equal(isFolded, device !== 'desktop');
    await inspect(isFolded ? 'folded' : 'open');
    await page.click('#fold');
    await inspect(isFolded ? 'open' : 'folded');
    if (!isFolded) await page.click('#fold');
    await page.click('#lines');
    await inspect('code');
    await page.click('#back');
    await page.waitForSelector('#hero canvas', { state: 'attached' });
    await inspect('landing');
    const smallest = await page.$eval('#hero canvas', ({ width, height }) => Math.min(width, height));
    assert.ok(smallest >= 360, 'a card is drawn in a corner of it');
  });
}
