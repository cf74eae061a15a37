// Pictures, recordings and scripts.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { after, before, test } from 'node:test';
import { Browser } from './browser.mjs';
import { Simulator } from './simulator.mjs';

let browser, simulator, page;

before(async () => {
  [browser, simulator] = await Promise.all([Browser.start(), Simulator.start()]);
  await simulator.untilHome();
  page = await browser.open(simulator);
});
after(() => Promise.all([browser?.end(), simulator?.end()]));

// The file that `act` makes the page save.
async function saved(act) {
  const [download] = await Promise.all([page.waitForEvent('download'), act()]);
  return { name: download.suggestedFilename(), bytes: readFileSync(await download.path()) };
}

const served = async (path) => Buffer.from(await (await fetch(simulator.address + path)).arrayBuffer());
const savePicture = () => saved(() => page.getByRole('button', { name: 'Save picture' }).click());

test('a picture is saved and copied as the LCD shows it', async () => {
  await page.selectOption('#zoom', '2');
  const { name, bytes } = await savePicture();
  assert.match(name, /^panel-\d+\.png$/);
  assert.deepEqual(bytes, await served('/screenshot.png?look=lcd&scale=2'));
  await page.getByRole('button', { name: 'Copy picture' }).click();
  await page.getByText('Copied the picture').waitFor();
  const copied = await page.evaluate(async () => {
    const [item] = await navigator.clipboard.read();
    const { width, height } = await createImageBitmap(await item.getType('image/png'));
    return [width, height];
  });
  assert.deepEqual(copied, [256, 128]);
  await page.getByLabel('LCD look').uncheck();
  await page.locator('.line', { hasText: 'picture' }).first().click();
  await page.locator('#device.past').waitFor();
  const number = /picture (\d+)/.exec(await page.locator('#moment').textContent())[1];
  assert.deepEqual((await savePicture()).bytes, await served(`/picture/${number}.png?look=plain&scale=2`));
  await page.getByRole('button', { name: 'Back to now' }).click();
});

test('a recording has the pictures between start and stop', async () => {
  const { tick: from } = await simulator.get('/state');
  await page.getByRole('button', { name: 'Record' }).click();
  await page.getByRole('button', { name: /^Stop/ }).waitFor();
  await simulator.press('menu', 'down', 'up');
  const { tick: to } = await simulator.get('/state');
  const { name, bytes } = await saved(() => page.getByRole('button', { name: /^Stop/ }).click());
  assert.equal(name, `panel-${from}-${to}.gif`);
  assert.equal(bytes.subarray(0, 6).toString(), 'GIF89a');
  assert.deepEqual(bytes, await served(`/recording.gif?from=${from}&to=${to}&look=plain&scale=2`));
});

test('the script plays to the same last picture', async () => {
  await simulator.press('ok', 'down', 'left');
  await simulator.post('/input/link.internet', 'blink');
  await simulator.post('/event/lost-link');
  await simulator.untilChange();
  const last = await simulator.frame();
  await page.getByRole('button', { name: 'Script' }).click();
  await page.getByLabel('Name', { exact: true }).last().fill('my-walk');
  const { name, bytes } = await saved(() => page.getByRole('button', { name: 'Download' }).click());
  assert.equal(name, 'my-walk.scenario');
  const script = bytes.toString();
  assert.equal(await page.getByRole('textbox', { name: 'Script' }).inputValue(), script);
  await page.locator('code', { hasText: 'panel-replay --root $root my-walk.scenario' }).waitFor();
  await page.locator('#script').getByRole('button', { name: 'Copy' }).click();
  await page.getByText('Copied the script').waitFor();
  assert.equal(await page.evaluate(() => navigator.clipboard.readText()), script);
  await page.locator('#script').getByRole('button', { name: 'Close' }).click();
  const frames = [...simulator.replay(script).matchAll(/^@\d+ frame ([0-9a-f]+)$/gm)];
  assert.ok(frames.length > 3);
  assert.equal(frames.at(-1)[1], last);
});

test('no error on the page, no request to elsewhere', () => browser.check());
