// Pictures, recordings and scripts.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { openPanel } from './open_panel.mjs';

const { browser, simulator, page } = await openPanel();

// The file that `act` makes the page save.
async function saved(act) {
  const [download] = await Promise.all([page.waitForEvent('download'), act()]);
  return { name: download.suggestedFilename(), bytes: readFileSync(await download.path()) };
}

const savePicture = () => saved(() => page.getByRole('button', { name: 'Save picture' }).click());

test('a picture is saved and copied as the LCD shows it', async () => {
  await page.selectOption('#zoom', '2');
  const { name, bytes } = await savePicture();
  assert.match(name, /^panel-\d+\.png$/);
  assert.deepEqual(bytes, await simulator.bytes('/screenshot.png?look=lcd&scale=2'));
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
  assert.deepEqual((await savePicture()).bytes, await simulator.bytes(`/picture/${number}.png?look=plain&scale=2`));
  await page.getByRole('button', { name: 'Back to now' }).click();
});

test('a recording has the pictures between start and stop, also after an answer that was lost', async () => {
  const { tick: from } = await simulator.get('/state');
  await page.getByRole('button', { name: 'Record' }).click();
  await page.getByRole('button', { name: /^Stop/ }).waitFor();
  await simulator.press('menu', 'down', 'up');
  const { tick: to } = await simulator.get('/state');
  const stop = () => page.getByRole('button', { name: /^Stop/ }).click();
  browser.expectFault(/ERR_FAILED/);
  await page.route('**/recording.gif*', (route) => route.abort(), { times: 1 });
  await stop();
  await page.getByRole('alert').filter({ hasText: 'The router does not answer.' }).waitFor();
  assert.equal(await page.locator('#news').textContent(), '');
  const { name, bytes } = await saved(stop);
  assert.equal(name, `panel-${from}-${to}.gif`);
  assert.equal(bytes.subarray(0, 6).toString(), 'GIF89a');
  assert.deepEqual(bytes, await simulator.bytes(`/recording.gif?from=${from}&to=${to}&look=plain&scale=2`));
});

test('the script is saved and copied as the router wrote it', async () => {
  await page.getByRole('button', { name: 'Script' }).click();
  await page.getByLabel('Name', { exact: true }).last().fill('my-walk');
  const { name, bytes } = await saved(() => page.getByRole('button', { name: 'Download' }).click());
  assert.equal(name, 'my-walk.scenario');
  assert.deepEqual(bytes, await simulator.bytes('/script'));
  const script = bytes.toString();
  assert.equal(await page.getByRole('textbox', { name: 'Script' }).inputValue(), script);
  await page.locator('code', { hasText: 'panel-replay --root $root my-walk.scenario' }).waitFor();
  await page.locator('#script').getByRole('button', { name: 'Copy' }).click();
  await page.locator('#script').getByText('Copied the script').waitFor();
  assert.equal(await page.evaluate(() => navigator.clipboard.readText()), script);
  await page.locator('#script').getByRole('button', { name: 'Close' }).click();
});
