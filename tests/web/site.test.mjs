// The site in a sub-path of a real server.

import assert from 'node:assert/strict';
import { join } from 'node:path';
import { after, test } from 'node:test';

import { newPage, root } from './browser.mjs';
import { serve } from './server.mjs';

const server = await serve(join(root, 'out'));
after(server.close);
const site = `${server.origin}/site/`;

let headings = 0; // of other pages, to which links lead

/** Fetches a page and all that it leads to; pages get the names of its anchors, by address, and dead what is wrong. */
async function crawl(address, pages, dead) {
  const response = await fetch(address);
  if (!response.ok) dead.push(address);
  const isPage = response.headers.get('content-type').startsWith('text/html');
  const text = await response.text();
  pages.set(address, isPage ? new Set([...text.matchAll(/\s(?:id|name)="([^"]*)"/g)].map(([, id]) => id)) : null);
  if (!isPage) return;
  const isOurs = !address.startsWith(`${site}reference/`);
  if (isOurs && !/<meta name="viewport"/.test(text)) dead.push(`${address} is tiny on phones`);
  if (isOurs && /<title>[^<]*\.md</.test(text)) dead.push(`${address} has a file as its title`);
  for (const [, link] of text.matchAll(/\s(?:href|src)="([^"]*)"/g)) {
    const target = new URL(link.replaceAll('&amp;', '&'), address);
    if (target.origin !== new URL(site).origin) continue;
    const fragment = decodeURIComponent(target.hash.slice(1));
    target.hash = '';
    if (!target.href.startsWith(site)) dead.push(`${link} in ${address} leads out of the site`);
    else if (!pages.has(target.href)) await crawl(target.href, pages, dead);
    // Scenes are no anchors; the references' own are their tools' affair.
    const isChecked = fragment && target.href !== `${site}index.html` && isOurs;
    if (isChecked && target.href !== address) ++headings;
    if (isChecked && !pages.get(target.href)?.has(fragment)) dead.push(`${link} in ${address}`);
  }
}

test('every link leads to something, and from the page to the documentation and both references', async (t) => {
  const pages = new Map();
  const dead = [];
  await crawl(`${site}index.html`, pages, dead);
  assert.deepEqual(dead, []);
  assert.ok(headings > 20, `${headings} links lead to headings`);
  for (const page of ['docs/looks', 'android/README', 'CHANGELOG', 'reference/cpp/classtidalume_1_1WaterLook',
    'reference/java/com/vyn/effect/tidalume/looks/WaterLook']) {
    assert.ok(pages.has(`${site}${page}.html`), page);
  }
  t.diagnostic(`${pages.size} files`);
});

test('the page starts', { timeout: 60_000 }, async () => {
  const page = await newPage();
  await page.unroute('**');
  await page.goto(site);
  await page.waitForSelector('#hero canvas.live');
  const pictures = new Set(); // three may differ by the ground, which becomes finer
  while (pictures.size < 4) pictures.add((await page.screenshot({ animations: 'disabled' })).toString('base64'));
});
