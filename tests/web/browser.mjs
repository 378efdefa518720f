// What the tests share: a browser for which the repository is http://localhost, and pages with a watched console.

import assert from 'node:assert/strict';
import { existsSync } from 'node:fs';
import { join } from 'node:path';
import { after, afterEach } from 'node:test';
import { fileURLToPath } from 'node:url';

import { chromium } from 'playwright-core';

export const root = fileURLToPath(new URL('../..', import.meta.url));

// What Chromium itself says about its software renderer.
const messageOfTheBrowser = new RegExp('^\\[\\.WebGL-0x[0-9a-f]+\\]GL Driver Message ' +
  '\\(OpenGL, Performance, GL_CLOSE_PATH_NV, High\\): (GPU stall due to ReadPixels|Running out of reserved ' +
  'outsideRenderPass queueSerial\\. ending renderPass now\\.)( \\(this message will no longer repeat\\))?$');

const complaints = [];
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium-headless-shell',
  args: ['--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
});
after(() => browser.close());
afterEach(async () => {
  await Promise.all(browser.contexts().map((context) => context.close()));
  assert.deepEqual(complaints.splice(0), []);
});

/** A page that gets files of the repository. A request for anything else, or a line on the console, fails the test. */
export async function newPage(options = {}, allowedLine = /^$/) {
  const viewport = { width: 320, height: 300 };
  const page = await browser.newPage({ baseURL: 'http://localhost', viewport, ...options });
  page.on('console', (message) => {
    const text = message.text();
    if (!messageOfTheBrowser.test(text) && !allowedLine.test(text)) complaints.push(`${message.type()}: ${text}`);
  });
  page.on('pageerror', (error) => complaints.push(`uncaught: ${error}`));
  await page.route('**', (route) => {
    const { origin, pathname, href } = new URL(route.request().url());
    const path = join(root, pathname);
    if (origin === 'http://localhost' && existsSync(path)) return route.fulfill({ path });
    complaints.push(`asked for ${href}`);
    return route.abort();
  });
  return page;
}
