// The repository as a web site, for engines that have to be served one.

import { once } from 'node:events';
import { readFile } from 'node:fs/promises';
import { createServer } from 'node:http';
import { extname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../..', import.meta.url));
const types = {
  '.css': 'text/css', '.html': 'text/html', '.js': 'text/javascript', '.svg': 'image/svg+xml',
  '.wasm': 'application/wasm', '.webp': 'image/webp',
};

async function answer({ url }, response) {
  const path = join(root, new URL(url, 'http://localhost').pathname);
  try {
    const content = await readFile(path);
    response.writeHead(200, { 'Content-Type': types[extname(path)] ?? 'application/octet-stream' }).end(content);
  } catch {
    response.writeHead(404).end();
  }
}

/** Serves on a free port of this machine. Gives the origin, and a function that ends it. */
export async function serveRepository() {
  const server = createServer(answer).listen(0, '127.0.0.1');
  await once(server, 'listening');
  return { origin: `http://127.0.0.1:${server.address().port}`, close: () => server.close() };
}
