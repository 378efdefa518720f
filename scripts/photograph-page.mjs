// Photographs the web page in out/web, over whose water a mouse has moved: node photograph-page.mjs FILE.PNG

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
await page.goto('/out/web/index.html');
await page.locator('canvas').first().waitFor({ state: 'visible' });
await page.waitForTimeout(1000);
await page.mouse.move(150, 330);
await page.mouse.move(760, 250, { steps: 60 });
await page.waitForTimeout(500);
await page.screenshot({ path: process.argv[2] });
await browser.close();
