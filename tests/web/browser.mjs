// Debian's Chromium with the panel's page in it. Errors on the page and requests to anything but the simulator are kept.

import assert from 'node:assert/strict';
import { chromium } from 'playwright-core';

const ACTION_MS = 30000; // what takes longer has failed

export class Browser {
  #browser;
  #faults = [];
  #expected = [];

  static async start() {
    const browser = new Browser();
    browser.#browser = await chromium.launch({ executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium' });
    return browser;
  }

  end() {
    return this.#browser.close();
  }

  // The page of `simulator` in a window of its own, once it shows what the router has.
  async open(simulator, options = {}) {
    const context = await this.#browser.newContext({ viewport: { width: 1280, height: 800 }, ...options });
    await context.grantPermissions(['clipboard-read', 'clipboard-write']);
    context.setDefaultTimeout(ACTION_MS);
    const page = await context.newPage();
    page.on('pageerror', (error) => this.#faults.push(error.stack));
    page.on('console', (message) => {
      if (['error', 'warning'].includes(message.type())) this.#faults.push(`${message.text()} ${message.location().url}`);
    });
    page.on('request', (request) => {
      const url = new URL(request.url());
      if (url.protocol !== 'blob:' && url.origin !== simulator.address) this.#faults.push(`a request to ${url}`);
    });
    await page.goto(simulator.address);
    await this.untilLive(page);
    return page;
  }

  async untilLive(page) {
    await page.locator('#connection[data-state=live]').waitFor();
    await page.locator('#cards :checked').first().waitFor({ state: 'attached' });
  }

  // A console message that matches is no fault of the page from here on.
  expectFault(pattern) {
    this.#expected.push(pattern);
  }

  // Nothing on any page was wrong.
  check() {
    const unexpected = this.#faults.filter((fault) => !this.#expected.some((pattern) => pattern.test(fault)));
    assert.deepEqual(unexpected, []);
  }
}
