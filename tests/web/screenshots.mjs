// Draws the pictures of the page in docs/images: node tests/web/screenshots.mjs

import { fileURLToPath } from 'node:url';
import { Browser } from './browser.mjs';
import { untilShown } from './lcd.mjs';
import { Simulator } from './simulator.mjs';

const folder = fileURLToPath(new URL('../../docs/images', import.meta.url));

async function showPast(page) {
  await page.getByLabel('Lines that contain').fill('lost');
  await page.locator('.line', { hasText: 'event.lost-link' }).click();
  await page.getByLabel('Lines that contain').fill('');
  await page.locator('#lines').press('ArrowDown');
}

// `act`: what is done on the page first; `part`: what of it is drawn, else what is in sight.
const pictures = [
  { name: 'panel', width: 1280, height: 800, scheme: 'light' },
  { name: 'panel-wide', width: 1920, height: 1080, scheme: 'light' },
  { name: 'panel-dark', width: 1280, height: 800, scheme: 'dark' },
  { name: 'panel-phone', width: 360, height: 780, scheme: 'light' },
  { name: 'panel-past', width: 1280, height: 800, scheme: 'light', act: showPast, part: '#bench' },
];

async function draw(browser, simulator, { name, width, height, scheme, act, part }) {
  const page = await browser.open(simulator, { viewport: { width, height }, colorScheme: scheme });
  await untilShown(page, await simulator.frame());
  await act?.(page);
  await page.waitForTimeout(300); // for the layout to come to rest
  await (part ? page.locator(part) : page).screenshot({ path: `${folder}/${name}.png` });
  await page.context().close();
  console.log(`docs/images/${name}.png`);
}

const [browser, simulator] = await Promise.all([Browser.start(), Simulator.start({ world: 'clock.time 2024-06-15T18:30:00\n' })]);
try {
  await simulator.untilHome();
  await simulator.post('/input/wifi.name', 'Upstairs');
  await simulator.post('/event/lost-link');
  await simulator.press('ok', 'menu', 'down', 'ok', 'left', 'menu');
  for (const picture of pictures) await draw(browser, simulator, picture);
  browser.check();
} finally {
  await Promise.all([browser.end(), simulator.end()]);
}
