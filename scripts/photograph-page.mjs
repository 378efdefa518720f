// Photographs the web page in out/web, over whose water a mouse has moved: node photograph-page.mjs FILE.PNG

import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

import { chromium } from 'playwright-core';

const root = fileURLToPath(new URL('..', import.meta.url));
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium-headless-shell',
  args: ['--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
});
const page = await browser.newPage({
  baseURL: 'http://localhost', colorScheme: 'dark', viewport: { width: 900, height: 560 },
});
await page.route('**', (route) => route.fulfill({ path: join(root, new URL(route.request().url()).pathname) }));
await page.goto('/out/web/index.html#water');
await page.waitForSelector('#frame canvas.live');
await page.waitForTimeout(2500);
await page.screenshot({ path: process.argv[2] });
await browser.close();
