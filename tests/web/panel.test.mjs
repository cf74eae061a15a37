// The panel: keys and LCD.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { coloursOn, glassOn, pixelsOn, untilShown } from './lcd.mjs';
import { openPanel } from './open_panel.mjs';
import { Simulator } from './simulator.mjs';

const PANEL_ZOOM = 134; // CSS pixels of the LCD at 1x
const { browser, simulator, page } = await openPanel();

const keysOf = async () =>
  (await simulator.get('/happenings')).happenings.filter(({ text }) => text.startsWith('key.')).map(({ text }) => text.slice(4));

// Does `act`, which presses `count` keys, and waits until the router has acted on them.
async function pressing(act, count) {
  let left = count;
  await Promise.all([page.waitForResponse((response) => response.url().includes('/key/') && --left === 0), act()]);
  return (await keysOf()).slice(-count);
}

test('each key of page and keyboard is that key, and its picture is shown', async () => {
  const home = await simulator.frame();
  await untilShown(page, home);
  const buttons = ['menu', 'down', 'up', 'right', 'ok', 'left'];
  const clicked = await pressing(async () => {
    for (const key of buttons) await page.locator(`[data-key=${key}]`).click();
  }, buttons.length);
  assert.deepEqual(clicked, buttons);
  const keyboard = { m: 'menu', ArrowDown: 'down', ArrowRight: 'right', ArrowUp: 'up', Enter: 'ok', ArrowLeft: 'left', Escape: 'menu' };
  const typed = await pressing(async () => {
    for (const key of Object.keys(keyboard)) await page.keyboard.press(key);
  }, 7);
  assert.deepEqual(typed, Object.values(keyboard));
  assert.notEqual(await simulator.frame(), home);
  await untilShown(page, await simulator.frame());
});

test('keys meant for a control or a dialog are not the panel’s', async () => {
  const count = (await keysOf()).length;
  await page.getByLabel('Find a control').press('ArrowLeft');
  await page.locator('#zoom').press('Enter');
  await page.locator('#help-open').press('Enter');
  await page.locator('#help[open]').waitFor();
  await page.keyboard.press('Escape');
  await page.locator('#help[open]').waitFor({ state: 'detached' });
  await page.locator('#lines').press('ArrowUp');
  await page.locator('#help-open').focus();
  await page.locator('#help-open').evaluate((button) => button.blur());
  const last = await pressing(() => page.keyboard.press('ArrowDown'), 1);
  assert.deepEqual(last, ['down']);
  assert.equal((await keysOf()).length, count + 1);
});

test('every zoom is sharp, every look is exact, and both outlive a reload', async () => {
  const frame = await simulator.frame();
  await untilShown(page, frame);
  for (const zoom of [1, 2, 3, 4, 5, 6, 7, 8]) {
    await page.selectOption('#zoom', String(zoom));
    await page.waitForFunction((width) => document.getElementById('lcd').getBoundingClientRect().width === width, zoom * PANEL_ZOOM);
    assert.equal(await page.locator('#lcd').evaluate((lcd) => lcd.width), zoom * PANEL_ZOOM);
    assert.equal(await pixelsOn(page), frame);
  }
  assert.notDeepEqual(await coloursOn(page), []);
  await page.getByLabel('LCD look').uncheck();
  await page.selectOption('#zoom', '3');
  await page.reload();
  await browser.untilLive(page);
  await untilShown(page, frame);
  assert.deepEqual(await coloursOn(page), []);
  assert.equal(await page.locator('#lcd').evaluate((lcd) => lcd.width), 3 * PANEL_ZOOM);
  await page.getByLabel('LCD look').check();
  await page.selectOption('#zoom', '0');
});

test('no width needs sideways scrolling, whatever is open', async () => {
  await page.evaluate(() => document.querySelectorAll('details').forEach((card) => { card.open = true; }));
  for (const width of [360, 768, 1100, 1280, 1920]) {
    await page.setViewportSize({ width, height: 800 });
    for (const zoom of ['0', '8']) {
      await page.selectOption('#zoom', zoom);
      await page.waitForTimeout(50); // for the layout to follow
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${width} at zoom ${zoom}`);
    }
  }
});

test('power saving darkens the LCD, and the caption says so', async (context) => {
  const saving = await Simulator.start({ world: 'panel.power-saving on\n' });
  context.after(() => saving.end());
  const dark = await browser.open(saving);
  const lit = await glassOn(dark);
  for (let state = {}; state.lit !== false;) state = await saving.untilChange(1300);
  await dark.getByText('Now, backlight off').waitFor();
  await untilShown(dark, await saving.frame());
  assert.ok(await glassOn(dark) < lit / 2);
  await dark.context().close();
});
