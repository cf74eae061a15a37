// The time line: what it tells, what it hides, and the pictures of the past.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { pixelsOn, untilShown } from './lcd.mjs';
import { openPanel } from './open_panel.mjs';

const MOST_LINES = 5000;
const { simulator, page } = await openPanel();

const happenings = async () => (await simulator.get('/happenings')).happenings;
const lines = () => page.locator('.line .text').allTextContents();
const clipboard = () => page.evaluate(() => navigator.clipboard.readText());
const untilCount = (text) => page.locator('#count', { hasText: new RegExp(`^${text}$`) }).waitFor();
const pictureOf = async (number) => (await simulator.bytes(`/picture/${number}`)).toString('hex');

test('what happens comes as the last line, with its time', async () => {
  await simulator.post('/input/wifi.name', 'Time line');
  await page.locator('.line').last().filter({ hasText: 'wifi.name Time line' }).waitFor();
  const { tick, kind } = (await happenings()).at(-1);
  const seconds = `${Math.floor(tick / 600)}:${String(Math.floor(tick / 10) % 60).padStart(2, '0')}.${tick % 10}`;
  assert.deepEqual(await page.locator('.line').last().locator('span').allTextContents(),
    [String(tick), seconds, kind, 'wifi.name Time line']);
});

test('a line shows its picture until the panel is used again', async () => {
  await simulator.press('menu', 'down', 'down');
  const all = await happenings();
  await untilCount(all.length);
  const past = all.filter(({ kind }) => kind === 'frame').at(-2);
  await page.locator(`#line-${past.id}`).click();
  await untilShown(page, await pictureOf(past.picture));
  await page.getByText(`Past: tick ${past.tick} `).waitFor();
  assert.notEqual(await pixelsOn(page), await simulator.frame());

  await page.keyboard.press('ArrowUp'); // the line before, and its picture
  const before = all[all.findIndex(({ id }) => id === past.id) - 1];
  await page.getByText(`picture ${before.picture},`).waitFor();
  await untilShown(page, await pictureOf(before.picture));

  await page.getByRole('button', { name: 'Back to now' }).click();
  await untilShown(page, await simulator.frame());
  await page.getByText('Now, backlight on').waitFor();

  await page.locator('#lines').press('Home');
  await page.locator('#lines').press('End');
  await page.locator('#lines').press('Enter');
  await page.locator('#device.past').waitFor();
  await Promise.all([page.waitForResponse(/key\/up/), page.locator('[data-key=up]').click()]);
  await page.locator('#device:not(.past)').waitFor();
});

test('kinds and texts are looked for', async () => {
  const all = await happenings();
  await untilCount(all.length);
  const chip = page.locator('#kinds').getByText('input', { exact: true });
  await chip.click();
  const rest = all.filter(({ kind }) => kind !== 'input').length;
  await untilCount(`${rest} of ${all.length}`);
  await chip.click();
  await page.locator('#find-line').fill('TIME line');
  await untilCount(`1 of ${all.length}`);
  assert.deepEqual(await lines(), ['wifi.name Time line']);
  await simulator.post('/input/wifi.name', 'Another time line');
  await untilCount(`2 of ${all.length + 1}`);
});

test('lines are copied: all that are shown, or those selected', async () => {
  await page.getByRole('button', { name: 'Copy all' }).click();
  await page.getByText('Copied 2 lines').waitFor();
  assert.match(await clipboard(), /^\d+\t\d+:\d\d\.\d\tinput\twifi\.name Time line\n.*\tinput\twifi\.name Another time line\n$/);
  await page.locator('#find-line').fill('');
  await page.locator('#lines').press('End');
  for (const key of ['Shift+ArrowUp', 'Shift+ArrowUp', 'Control+c']) await page.locator('#lines').press(key);
  await page.getByText('Copied 3 lines').waitFor();
  assert.deepEqual((await clipboard()).trimEnd().split('\n').map((line) => line.split('\t')[3]),
    (await happenings()).slice(-3).map(({ text }) => text));
});

test('it stands still when told to', async () => {
  const seen = await lines();
  await simulator.press('ok', 'left', 'right');
  await untilCount((await happenings()).length);
  assert.deepEqual((await lines()).slice(0, seen.length), seen);
  await page.getByLabel('Follow').check();
  await page.locator('.line').last().filter({ hasText: (await happenings()).at(-1).text }).waitFor();
});

test('many lines are bounded and few elements', async () => {
  const keys = Array.from({ length: MOST_LINES + 200 }, (_, number) => ({ id: 1e6 + number, tick: 1e6, kind: 'print', text: `line ${number}`, picture: 1 }));
  const bounded = await page.evaluate(async ([flood, most]) => {
    const { TimeLine } = await import('/time_line.js');
    const timeLine = new TimeLine();
    const gone = [0, 1].map((half) => timeLine.add(flood.slice(half * most / 2, half ? undefined : most / 2)));
    return { gone, length: timeLine.length, first: timeLine.shown[0].text };
  }, [keys, MOST_LINES]);
  assert.deepEqual(bounded, { gone: [0, 200], length: MOST_LINES, first: 'line 200' });
  assert.ok(await page.locator('.line').count() < 100);
});
