// A page that is reloaded, that is not alone, whose daemon dies, whose simulator goes and comes back.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { untilShown } from './lcd.mjs';
import { openPanel } from './open_panel.mjs';
import { Simulator } from './simulator.mjs';

const { browser, simulator, page } = await openPanel();

test('after a reload, and in a second window, the page has everything', async () => {
  const count = (await simulator.get('/happenings')).happenings.length;
  await page.reload();
  await browser.untilLive(page);
  await untilShown(page, await simulator.frame());
  await page.locator('#count', { hasText: String(count) }).waitFor();

  const second = await browser.open(simulator);
  const before = await simulator.frame();
  await Promise.all([page.waitForResponse(/key\/menu/), page.keyboard.press('m')]);
  const menu = await simulator.frame();
  assert.notEqual(menu, before);
  for (const each of [page, second]) await untilShown(each, menu);
  await Promise.all([second.waitForResponse(/key\/down/), second.keyboard.press('ArrowDown')]);
  for (const each of [page, second]) await untilShown(each, await simulator.frame());
  await second.close();
  await untilShown(page, await simulator.frame());
});

test('a killed daemon comes back on the page', async () => {
  await page.getByRole('button', { name: 'Kill frontpaneld' }).click();
  await page.locator('.line', { hasText: 'the daemon was ended by signal 9' }).waitFor();
  const { changed } = await simulator.untilChange(600);
  assert.ok(changed);
  await page.locator('.line', { hasText: 'the daemon starts again' }).waitFor();
  await untilShown(page, await simulator.frame());
});

test('a simulator that goes is told, one that comes back is shown', async (context) => {
  browser.expectFault(/ERR_/);
  const port = Number(new URL(simulator.address).port);
  const lines = Number(await page.locator('#count').textContent());
  await simulator.end();
  await page.getByText('No connection to the router').waitFor();
  await page.keyboard.press('m');
  await page.getByRole('alert').filter({ hasText: 'The router does not answer.' }).waitFor();
  const back = await Simulator.start({ port });
  context.after(() => back.end());
  assert.equal(back.address, simulator.address);
  await page.locator('#connection[data-state=live]').waitFor();
  await back.untilChange(600);
  await untilShown(page, await back.frame());
  const count = (await back.get('/happenings')).happenings.length;
  assert.ok(count < lines);
  await page.locator('#count', { hasText: new RegExp(`^${count}$`) }).waitFor();
});
