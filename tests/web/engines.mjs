// Other engines than Chromium's, on the display that the environment names. Each opens a window and gives
//   goto(url), evaluate(a function of the page, which may be asynchronous), screenshot() as base64,
//   press(x, y) for the mouse, close()

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { createServer } from 'node:http';
import { setTimeout } from 'node:timers/promises';

import puppeteer from 'puppeteer-core';

// Firefox's own mode without a display has no WebGL 2.
async function openFirefox() {
  const browser = await puppeteer.launch({
    browser: 'firefox', executablePath: process.env.FIREFOX ?? '/usr/bin/firefox-esr', headless: false,
  });
  const page = await browser.newPage();
  return {
    goto: (url) => page.goto(url),
    evaluate: (body) => page.evaluate(body),
    screenshot: () => page.screenshot({ encoding: 'base64' }),
    press: (x, y) => page.mouse.move(x, y).then(() => page.mouse.down()),
    close: () => browser.close(),
  };
}

async function freePort() {
  const server = createServer().listen(0);
  await once(server, 'listening');
  const { port } = server.address();
  server.close();
  return port;
}

// Speaks WebDriver to a driver that starts WebKit's small browser.
async function openWebKit() {
  const port = await freePort();
  const driver = spawn(process.env.WEBKIT ?? 'WebKitWebDriver', [`--port=${port}`], { stdio: 'inherit' });
  const call = async (method, path, body) => {
    const answer = await fetch(`http://127.0.0.1:${port}/${path}`, { method, body: body && JSON.stringify(body) });
    const { value } = await answer.json();
    if (!answer.ok) throw new Error(`${path}: ${value.message}`);
    return value;
  };
  const whenReady = async () => {
    while (!await call('GET', 'status').then(({ ready }) => ready, () => false)) await setTimeout(100);
  };
  await whenReady();
  const { sessionId } = await call('POST', 'session', { capabilities: {} });
  const command = (method, name, body) => call(method, `session/${sessionId}/${name}`, body);
  await command('POST', 'timeouts', { script: 300_000 });
  return {
    goto: (url) => command('POST', 'url', { url }),
    async evaluate(body) {
      const script = `const done = arguments[0];
        Promise.resolve((${body})()).then((value) => done({ value }), (error) => done({ error: String(error) }));`;
      const { value, error } = await command('POST', 'execute/async', { script, args: [] });
      if (error) throw new Error(error);
      return value;
    },
    screenshot: () => command('GET', 'screenshot'),
    press(x, y) {
      const actions = [{ type: 'pointerMove', x, y }, { type: 'pointerDown', button: 0 }];
      return command('POST', 'actions', { actions: [{ type: 'pointer', id: 'mouse', actions }] });
    },
    async close() {
      await command('DELETE', '');
      driver.kill();
    },
  };
}

export const engines = { firefox: openFirefox, webkit: openWebKit };
