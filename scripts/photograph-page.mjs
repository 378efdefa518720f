// Photographs the web page in out/web, after water has moved on it for three seconds: node photograph-page.mjs FILE.PNG

import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

import { chromium } from 'playwright-core';

const root = fileURLToPath(new URL('..', import.meta.url));
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
  args: ['--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
});
const page = await browser.newPage({
  baseURL: 'http://localhost', colorScheme: 'dark', viewport: { width: 900, height: 560 },
});
await page.route('**', (route) => route.fulfill({ path: join(root, new URL(route.request().url()).pathname) }));
await page.goto('/out/web/index.html#water');
await page.waitForSelector('text=/^[0-9.]+ ms per frame/');
await page.waitForTimeout(2500);
await page.screenshot({ path: process.argv[2] });
await browser.close();
