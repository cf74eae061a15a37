// A running panel-sim with a router root of its own, ended and removed by end().

import { spawn } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

const repository = fileURLToPath(new URL('../..', import.meta.url));
const build = process.env.PANEL_BUILD ?? join(repository, 'build');
const START_MS = 20000;
const SPLASH_TICKS = 640; // after which the panel shows its first screen

// The address that a starting panel-sim prints.
function addressOf(child) {
  return new Promise((resolve, reject) => {
    let printed = '';
    const fail = (why) => reject(new Error(`panel-sim ${why}: ${printed}`));
    const limit = setTimeout(fail, START_MS, 'prints no address');
    child.stderr.on('data', (text) => { printed += text; });
    child.stdout.on('data', (text) => {
      printed += text;
      const found = /at (http:\S+)\/ /.exec(printed);
      if (found) {
        clearTimeout(limit);
        resolve(found[1]);
      }
    });
    child.on('error', (error) => fail(error.message));
    child.on('exit', (status) => fail(`ended with ${status}`));
  });
}

export class Simulator {
  #folder = mkdtempSync(join(tmpdir(), 'panel-web-test-'));
  #child;
  address;

  // `port`: 0 is any; `world`: the name of a ready one, or lines of one.
  static async start({ speed = 'pause', world = 'healthy-home', port = 0 } = {}) {
    const simulator = new Simulator();
    const isReady = /^[\w-]+$/.test(world);
    const file = join(simulator.#folder, 'test.world');
    if (!isReady) writeFileSync(file, world);
    simulator.#child = spawn(join(build, 'bin/panel-sim'), ['--no-browser', '--port', String(port), '--speed', speed,
      '--world', isReady ? world : file, '--root', join(simulator.#folder, 'root')]);
    process.once('exit', () => simulator.#child.kill());
    simulator.address = await addressOf(simulator.#child);
    return simulator;
  }

  async end() {
    if (this.#child.exitCode === null) {
      const ended = new Promise((resolve) => { this.#child.once('exit', resolve); });
      this.#child.kill('SIGTERM');
      await ended;
    }
    rmSync(this.#folder, { recursive: true, force: true });
  }

  async #ask(path, options) {
    const response = await fetch(this.address + path, options);
    if (!response.ok) throw new Error(`${path}: ${response.status} ${await response.text()}`);
    return response;
  }

  async get(path) {
    return (await this.#ask(path)).json();
  }

  async bytes(path) {
    return Buffer.from(await (await this.#ask(path)).arrayBuffer());
  }

  // Pixels of what the LCD shows, in hexadecimal digits.
  async frame() {
    return (await this.bytes('/frame')).toString('hex');
  }

  async post(path, body = '') {
    await this.#ask(path, { method: 'POST', body });
  }

  // Lets time pass until the LCD shows another picture, at most `ticks`; {tick, changed, picture, lit, pixels}.
  async untilChange(ticks = 100) {
    return (await this.#ask(`/until-change?ticks=${ticks}`, { method: 'POST' })).json();
  }

  // Past the splash.
  async untilHome() {
    for (let tick = 0; tick < SPLASH_TICKS;) ({ tick } = await this.untilChange(SPLASH_TICKS - tick));
  }

  // Presses keys of the panel, one after the other.
  async press(...keys) {
    for (const key of keys) await this.post(`/key/${key}`);
  }
}
