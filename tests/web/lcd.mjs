// What the page's LCD shows, read from its pixels.

import assert from 'node:assert/strict';
import { setTimeout } from 'node:timers/promises';

const SHOWN_MS = 30000; // what takes longer has failed
const POLL_MS = 10;
const WIDTH = 128;
const HEIGHT = 64;
const MARGIN = 3;

// In the page: the picture as hexadecimal digits, a 0 bit for each pixel that is darker than the glass around.
function read([width, height, margin]) {
  const canvas = document.getElementById('lcd');
  const { data } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
  const size = canvas.width / (width + 2 * margin);
  const green = (x, y) => data[((y + margin) * size * canvas.width + (x + margin) * size) * 4 + 1];
  const glass = data[1];
  let digits = '';
  for (let y = 0; y < height; y++) {
    for (let x = 0; x < width; x += 4) {
      const bits = [0, 1, 2, 3].map((bit) => (glass - green(x + bit, y) > 15 ? 0 : 8 >> bit));
      digits += bits.reduce((sum, bit) => sum + bit).toString(16);
    }
  }
  return { digits, glass };
}

const shape = [WIDTH, HEIGHT, MARGIN];

export const pixelsOn = async (page) => (await page.evaluate(read, shape)).digits;

// How bright the glass is, 0..255.
export const glassOn = async (page) => (await page.evaluate(read, shape)).glass;

// Waits until the page shows `pixels`.
export async function untilShown(page, pixels) {
  for (const limit = Date.now() + SHOWN_MS; await pixelsOn(page) !== pixels;) {
    assert.ok(Date.now() < limit, 'the page does not show what the LCD shows');
    await setTimeout(POLL_MS);
  }
}

// The colours of the LCD that are neither black nor white.
export const coloursOn = (page) => page.evaluate(() => {
  const canvas = document.getElementById('lcd');
  const { data } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
  const colours = new Set();
  for (let i = 0; i < data.length; i += 4) colours.add(`${data[i]} ${data[i + 1]} ${data[i + 2]}`);
  return [...colours].filter((colour) => !['0 0 0', '255 255 255'].includes(colour));
});
