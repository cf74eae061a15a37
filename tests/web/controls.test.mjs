// The controls: what is set on the page reaches the router, what the router changes is shown on every page.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { setTimeout } from 'node:timers/promises';
import { isDeepStrictEqual } from 'node:util';
import { openPanel } from './open_panel.mjs';

const SHOWN_MS = 30000; // what takes longer has failed
const POLL_MS = 10;
const { browser, simulator, page } = await openPanel();
const other = await browser.open(simulator);

const radio = (where, id, value) => where.locator(`input[name="${id}"][value="${value}"]`);
const field = (where, id) => where.locator(`[id="${id}"]`);
const isList = async (id) => await field(page, id).count() > 0;

const others = {
  choice: ({ choices, value }) => choices.find((choice) => choice !== value),
  number: ({ least, most, value }) => String(Number(value) < most ? Number(value) + 1 : least),
  text: () => 'Caf\\xe9 \\"2\\"',
  address: () => '198.51.100.7',
  time: () => '2030-02-03T04:05:06',
};

// Sets a control as a person does.
async function choose(input, value) {
  if (input.kind !== 'choice') {
    await field(page, input.id).fill(value);
    await field(page, input.id).press('Tab');
  } else if (await isList(input.id)) {
    await field(page, input.id).selectOption(value);
  } else {
    await radio(page, input.id, value).check({ force: true });
  }
}

// What the controls of a page show, by the ids of their inputs.
const valuesOn = (where, ids) => where.evaluate((wanted) => Object.fromEntries(wanted.map((id) => {
  const control = document.getElementById(id) ?? document.querySelector(`[name="${id}"]:checked`);
  return [id, control?.value];
})), ids);

// Waits until both pages show what the router has.
async function untilShown(ids) {
  const { values } = await simulator.get('/state');
  const wanted = Object.fromEntries(ids.map((id) => [id, values[id]]));
  for (const where of [page, other]) {
    for (const limit = Date.now() + SHOWN_MS; Date.now() < limit && !isDeepStrictEqual(await valuesOn(where, ids), wanted);) {
      await setTimeout(POLL_MS);
    }
    const shown = await valuesOn(where, ids);
    const different = ids.filter((id) => shown[id] !== wanted[id]).map((id) => `${id}: ${shown[id]}, not ${wanted[id]}`);
    assert.deepEqual(different, []);
  }
}

async function reachesTheRouter(input) {
  const value = others[input.kind](input);
  const taken = page.waitForResponse((response) => response.url().endsWith(`/input/${input.id}`));
  await choose(input, value);
  assert.equal((await taken).status(), 204);
  assert.equal((await simulator.get('/state')).values[input.id], value);
}

test('each control reaches the router and shows on every page', async (context) => {
  const inputs = (await simulator.get('/inputs')).inputs.filter(({ kind }) => kind !== 'action');
  const ids = inputs.map(({ id }) => id);
  // The clock's speed comes last: time must not go on meanwhile.
  for (const input of inputs.reverse()) await context.test(input.id, () => reachesTheRouter(input));
  await simulator.post('/input/clock.speed', 'pause');
  await untilShown(ids);
  for (const { id, value } of inputs) await simulator.post(`/input/${id}`, value);
  await untilShown(ids);
});

test('what the panel changes shows on the page', async () => {
  await simulator.press('menu', 'down', 'ok', 'ok', 'ok');
  await radio(page, 'wifi.radio', 'off').and(page.locator(':checked')).waitFor({ state: 'attached' });
  await page.waitForFunction(() => document.querySelector('[aria-label="wifi_dot11_mode"]').value === '0');
});

test('the settings store can be written in', async () => {
  await page.getByLabel('New key').fill('my_key');
  await page.getByLabel('Its value').fill('one');
  await page.getByRole('button', { name: 'Add', exact: true }).click();
  await page.getByLabel('my_key', { exact: true }).fill('two');
  await page.getByLabel('my_key', { exact: true }).press('Enter');
  await other.waitForFunction(() => document.querySelector('[aria-label="my_key"]')?.value === 'two');
  assert.equal((await simulator.get('/state')).settings.my_key, 'two');
  await page.getByLabel('Remove my_key').click();
  await other.getByLabel('my_key', { exact: true }).waitFor({ state: 'detached' });
});

test('a refused value is told and gives way', async () => {
  browser.expectFault(/status of 400/);
  const refused = [
    [field(page, 'wan.address'), '300.1.1.1', 'wan.address takes', '203.0.113.25'],
    [field(page, 'traffic.seed'), '', 'traffic.seed takes', '1'],
    [page.getByLabel('time_zone', { exact: true }), '\\q', 'setting.time_zone takes', 'GMT+0:0:1'],
  ];
  for (const [place, text, message, held] of refused) {
    await place.fill(text);
    await place.press('Tab');
    await page.getByRole('alert').filter({ hasText: message }).waitFor();
    await page.waitForFunction(([shown, value]) => shown.value === value, [await place.elementHandle(), held]);
  }
});

test('a control is found by its name, its group or its place', async () => {
  const find = page.getByLabel('Find a control');
  for (const text of ['guest.password', 'wifi_psk_guest_pwd']) {
    await find.fill(text);
    await field(page, 'guest.password').waitFor();
    await field(page, 'guest.name').waitFor({ state: 'hidden' });
  }
  await find.fill('guest network');
  await field(page, 'guest.name').waitFor();
  await field(page, 'wifi.name').waitFor({ state: 'hidden' });
  await find.fill('guest.wifi');
  await page.getByText('No control has this text.').waitFor();
  await find.fill('');
});

test('a world is entered', async () => {
  await page.getByRole('button', { name: 'cable-pulled' }).click();
  await page.getByText('The router is in the world cable-pulled').waitFor();
  await radio(page, 'wan.port', 'off').and(page.locator(':checked')).waitFor({ state: 'attached' });
});

test('each action is done', async () => {
  const { inputs } = await simulator.get('/inputs');
  const actions = inputs.filter(({ kind, group }) => kind === 'action' && group !== 'Keys');
  for (const { id, label } of actions.filter((action) => action.id !== 'router.reboot')) {
    const taken = page.waitForResponse((response) => response.url().endsWith(`/input/${id}`));
    await page.getByRole('button', { name: label, exact: true }).click();
    assert.equal((await taken).status(), 204, id);
  }
});
