// The LCD: a dot matrix drawn at an integer zoom, sharp at every pixel density.

import { oncePerPicture } from './redraw.js';

const WIDTH = 128;
const HEIGHT = 64;
const MARGIN = 3; // LCD pixels of glass around the picture
const LARGEST_ZOOM = 8;
const SHARE = 0.5; // of the window's height, which a zoom that fits takes at most
const BLANK = 'ff'.repeat((WIDTH * HEIGHT) / 8);

// A colour as ImageData has it in memory.
const colour = (red, green, blue) => new Uint32Array(Uint8Array.of(red, green, blue, 255).buffer)[0];

// `gap` is what is left between two drawn pixels.
const looks = {
  lit: { glass: colour(194, 207, 172), off: colour(186, 199, 163), gap: colour(90, 102, 76), on: colour(27, 36, 22) },
  dark: { glass: colour(58, 65, 56), off: colour(54, 61, 52), gap: colour(42, 48, 40), on: colour(32, 38, 30) },
  plain: { glass: colour(255, 255, 255), off: colour(255, 255, 255), gap: colour(0, 0, 0), on: colour(0, 0, 0) },
};

// Makes `count` rows of the one that begins at `row`.
function repeat(dots, width, row, count) {
  for (let copy = 1; copy < count; copy++) dots.copyWithin(row + copy * width, row, row + width);
}

export class Lcd {
  #canvas;
  #place;
  #page;
  #frame = { pixels: BLANK, lit: true };
  #chosen = 0; // zoom; 0: the largest that fits
  #zoom = 1; // in use
  #size = 0; // device pixels of one LCD pixel; 0: its place may have changed
  #look = 'lcd';
  #schedule = oncePerPicture(() => this.#draw());

  // Draws on `canvas` in the element `place`. `page` is enlarged (a class) while the chosen zoom needs more room.
  constructor(canvas, place, page) {
    this.#canvas = canvas;
    this.#place = place;
    this.#page = page;
    new ResizeObserver(() => this.#refit()).observe(document.body);
    addEventListener('resize', () => this.#refit()); // also another pixel density or height
  }

  // Shows a frame as the LCD driver gets it: hexadecimal digits, rows from the top, a 0 bit is a drawn pixel.
  show(frame) {
    this.#frame = frame;
    this.#schedule();
  }

  set zoom(zoom) {
    this.#chosen = zoom;
    this.#refit();
  }

  get zoom() {
    return this.#zoom;
  }

  // "lcd" with pixel grid, colours and backlight, or "plain": black on white.
  set look(look) {
    this.#look = look;
    this.#schedule();
  }

  get look() {
    return this.#look;
  }

  #refit() {
    this.#size = 0;
    this.#schedule();
  }

  // Fits the canvas to its place.
  #fit() {
    this.#page.classList.remove('enlarged');
    const frame = 2 * this.#canvas.parentElement.clientLeft;
    const room = (this.#place.clientWidth - frame) / (WIDTH + 2 * MARGIN);
    const fits = Math.min(room, (SHARE * innerHeight) / (HEIGHT + 2 * MARGIN), LARGEST_ZOOM);
    this.#zoom = this.#chosen || Math.max(1, Math.floor(fits));
    this.#page.classList.toggle('enlarged', this.#zoom > room);
    this.#size = Math.round(this.#zoom * devicePixelRatio);
    const [width, height] = [WIDTH, HEIGHT].map((pixels) => (pixels + 2 * MARGIN) * this.#size);
    if (this.#canvas.width !== width || this.#canvas.height !== height) {
      Object.assign(this.#canvas, { width, height });
      this.#canvas.style.width = `${width / devicePixelRatio}px`;
      this.#canvas.style.height = `${height / devicePixelRatio}px`;
    }
  }

  #draw() {
    if (this.#size === 0) this.#fit();
    // Kept in memory: every picture is put there as a whole.
    const context = this.#canvas.getContext('2d', { alpha: false, willReadFrequently: true });
    const image = context.createImageData(this.#canvas.width, this.#canvas.height);
    this.#paint(new Uint32Array(image.data.buffer), image.width);
    context.putImageData(image, 0, 0);
  }

  // Paints the picture on `dots`, `width` of which are a row: first the glass, then each LCD pixel.
  #paint(dots, width) {
    const size = this.#size;
    const dot = size - (size < 3 ? 0 : Math.max(1, Math.round(size / 8)));
    const { glass, off, gap, on } = this.#look === 'plain' ? looks.plain : looks[this.#frame.lit ? 'lit' : 'dark'];
    dots.fill(glass);
    for (let y = 0; y < HEIGHT; y++) {
      const top = (y + MARGIN) * size * width;
      const between = top + dot * width;
      for (let x = 0; x < WIDTH; x++) {
        const left = (x + MARGIN) * size;
        const isDrawn = this.#bit(x, y) === 0;
        if (isDrawn && dot < size) {
          dots.fill(gap, top + left, top + left + size).fill(gap, between + left, between + left + size);
        }
        dots.fill(isDrawn ? on : off, top + left, top + left + dot);
      }
      repeat(dots, width, top, dot);
      repeat(dots, width, between, size - dot);
    }
  }

  #bit(x, y) {
    const digit = parseInt(this.#frame.pixels[(y * WIDTH + x) >> 2], 16);
    return (digit >> (3 - (x & 3))) & 1;
  }
}
