// A folder as a web site, for what has to be served one.

import { spawn } from 'node:child_process';
import { once } from 'node:events';

/** Serves on a free port of this machine. Gives the origin, and a function that ends it. */
export async function serve(folder) {
  const options = ['--bind', '127.0.0.1', '--directory', folder, '0'];
  const server = spawn('python3', ['-u', '-m', 'http.server', ...options], { stdio: ['ignore', 'pipe', 'ignore'] });
  const [line] = await once(server.stdout, 'data');
  return { origin: `http://127.0.0.1:${/port (\d+)/.exec(line)[1]}`, close: () => server.kill() };
}
