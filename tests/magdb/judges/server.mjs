// A server on a fresh database for one judge.
import { spawn, spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { setTimeout as sleep } from 'node:timers/promises';
import { fileURLToPath } from 'node:url';

const magdb = process.env.MAGDB_BINARY;
const here = dirname(fileURLToPath(import.meta.url));

export const user = 'regalon';
export const password = 'Magazyn-2024';

function runOnce(args, input) {
  const result = spawnSync(magdb, args, { input, encoding: 'utf8' });
  if (result.status !== 0) {
    throw new Error(`magdb ${args[0]}: ${result.error ?? result.stderr}`);
  }
}

export async function startServer() {
  const folder = mkdtempSync(join(tmpdir(), 'magdb-judge-'));
  const database = join(folder, 'MAGAZYN.db');
  const portFile = join(folder, 'port');
  const trace = join(folder, 'trace');
  runOnce(['run', '--database', database, join(here, 'schema.sql')]);
  runOnce(['add-login', '--database', database, user], `${password}\n`);
  const child = spawn(magdb, ['serve', '--database', database, '--port-file', portFile, '--trace', trace],
    { stdio: ['ignore', 'ignore', 'inherit'] });
  const ended = new Promise(resolve => child.once('exit', (code, signal) => resolve(code ?? signal)));
  while (!existsSync(portFile)) {
    if (child.exitCode !== null) {
      throw new Error('the server does not start');
    }
    await sleep(20);
  }
  return {
    folder,
    port: Number(readFileSync(portFile, 'utf8')),
    // Waits until the server has received a request that holds this text.
    async received(text) {
      while (!readFileSync(trace, 'utf8').includes(text)) {
        await sleep(20);
      }
    },
    // The exit code of the server; 0 says that it lived through everything and stopped cleanly.
    async stop() {
      child.kill('SIGTERM');
      const code = await ended;
      rmSync(folder, { recursive: true });
      return code;
    },
  };
}

// Runs a command-line client on this input and gives everything that it printed.
export function runClient(command, args, input, environment = {}) {
  const result = spawnSync(command, args, {
    input, encoding: 'utf8', timeout: 60_000, maxBuffer: 256 * 1024 * 1024,
    env: { ...process.env, LC_ALL: 'C.UTF-8', ...environment },
  });
  // A client whose login fails ends without reading its input.
  if (result.error && result.error.code !== 'EPIPE') {
    throw result.error;
  }
  return { code: result.status, text: result.stdout, errors: result.stderr, all: result.stdout + result.stderr };
}

// Starts a command-line client that is fed piece by piece; ended gives what it printed.
export function startClient(command, args, environment = {}) {
  const child = spawn(command, args, { stdio: ['pipe', 'pipe', 'ignore'], env: { ...process.env, ...environment } });
  let text = '';
  child.stdout.on('data', data => { text += data; });
  return { child, ended: new Promise(resolve => child.once('close', () => resolve(text))) };
}
