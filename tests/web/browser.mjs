// A static file server and a browser whose console is watched.

import { createReadStream, existsSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join, normalize } from 'node:path';

import { chromium } from 'playwright-core';

const types = {
  '.html': 'text/html', '.css': 'text/css', '.js': 'text/javascript', '.svg': 'image/svg+xml',
  '.wasm': 'application/wasm', '.png': 'image/png',
};

/** Serves several folders, each under the first part of the path that names it. */
export async function serve(folders) {
  const server = createServer((request, response) => {
    const [, name, ...rest] = normalize(new URL(request.url, 'http://localhost').pathname).split('/');
    const path = join(folders[name] ?? '/nowhere', rest.join('/') || 'index.html');
    if (!existsSync(path)) return response.writeHead(404).end();
    response.writeHead(200, { 'Content-Type': types[extname(path)] ?? 'application/octet-stream' });
    createReadStream(path).pipe(response);
  });
  await new Promise((resolve) => { server.listen(0, '127.0.0.1', resolve); });
  return { url: `http://127.0.0.1:${server.address().port}`, close: () => server.close() };
}

export function launch() {
  return chromium.launch({
    executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
    args: [
      '--no-sandbox', '--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-quic',
      '--no-first-run', '--disable-background-networking', '--disable-component-update', '--disable-sync',
    ],
  });
}
