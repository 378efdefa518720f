// What the tests share: a file server, the browser, and pages whose console is watched.

import assert from 'node:assert/strict';
import { createReadStream, existsSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join, normalize } from 'node:path';
import { fileURLToPath } from 'node:url';

import { chromium } from 'playwright-core';

export const root = fileURLToPath(new URL('../..', import.meta.url));

const types = {
  '.html': 'text/html', '.css': 'text/css', '.js': 'text/javascript', '.svg': 'image/svg+xml',
  '.wasm': 'application/wasm', '.png': 'image/png',
};

// What Chromium itself says about its software renderer.
const driverMessage = (text) => new RegExp('^\\[\\.WebGL-0x[0-9a-f]+\\]GL Driver Message ' +
  `\\(OpenGL, Performance, GL_CLOSE_PATH_NV, High\\): ${text}( \\(this message will no longer repeat\\))?$`);
const messagesOfTheBrowser = [
  driverMessage('GPU stall due to ReadPixels'),
  driverMessage('Running out of reserved outsideRenderPass queueSerial\\. ending renderPass now\\.'),
];

/** Serves folders, each below the first part of the path. */
async function serve(folders) {
  const server = createServer((request, response) => {
    const [, name, ...rest] = normalize(new URL(request.url, 'http://localhost').pathname).split('/');
    const path = join(folders[name] ?? '/nowhere', rest.join('/') || 'index.html');
    if (!existsSync(path)) return response.writeHead(404).end();
    response.writeHead(200, { 'Content-Type': types[extname(path)] ?? 'application/octet-stream' });
    createReadStream(path).pipe(response);
  });
  await new Promise((resolve) => { server.listen(0, '127.0.0.1', resolve); });
  return server;
}

/** A Chromium on its software renderer, and a server for the folders of these tests. */
export class Browser {
  static async start(folders = {}) {
    const server = await serve({
      page: join(root, 'out/web'), pictures: join(root, 'build-web/tests/web'), tests: join(root, 'tests/web'), ...folders,
    });
    const chrome = await chromium.launch({
      executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
      args: [
        '--no-sandbox', '--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-quic',
        '--no-first-run', '--disable-background-networking', '--disable-component-update', '--disable-sync',
      ],
    });
    return new Browser(server, chrome);
  }

  constructor(server, chrome) {
    this.server = server;
    this.chrome = chrome;
    this.url = `http://127.0.0.1:${server.address().port}`;
    this.complaints = [];
  }

  /**
   * Opens a page of the server, with a script to run before its own; what its console says beyond the browser's own
   * messages fails closePages().
   */
  async open(path, options = {}, script = () => {}) {
    const page = await this.chrome.newPage(options);
    await page.addInitScript(script);
    page.on('console', (message) => {
      const text = message.text();
      if (!messagesOfTheBrowser.some((pattern) => pattern.test(text))) this.complaints.push(`${message.type()}: ${text}`);
    });
    page.on('pageerror', (error) => this.complaints.push(`uncaught: ${error}`));
    page.on('request', (request) => {
      if (!/^(http:\/\/127\.0\.0\.1:|blob:|data:)/.test(request.url())) this.complaints.push(`asked for ${request.url()}`);
    });
    await page.goto(this.url + path);
    return page;
  }

  checkConsole() {
    assert.deepEqual(this.complaints.splice(0), []);
  }

  async closePages() {
    await Promise.all(this.chrome.contexts().map((context) => context.close()));
    this.checkConsole();
  }

  async stop() {
    await this.chrome.close();
    this.server.close();
  }
}
