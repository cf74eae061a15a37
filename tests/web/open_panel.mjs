// What the tests of a file share: a simulator whose splash is over, and its page in a browser.

import { after } from 'node:test';
import { Browser } from './browser.mjs';
import { Simulator } from './simulator.mjs';

// {browser, simulator, page}, until the file's tests have run. Then nothing on any page may have gone wrong.
export async function openPanel() {
  const [browser, simulator] = await Promise.all([Browser.start(), Simulator.start()]);
  after(async () => {
    await browser.end(); // first: a page would miss its simulator
    await simulator.end();
    browser.check();
  });
  await simulator.untilHome();
  return { browser, simulator, page: await browser.open(simulator) };
}
