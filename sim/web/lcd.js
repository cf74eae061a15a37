// The LCD: a dot-matrix drawn at the largest integer zoom that its place has room for, sharp at every pixel density.

const WIDTH = 128;
const HEIGHT = 64;
const MARGIN = 3; // LCD pixels of glass around the picture

// `gap` is what is left between two drawn pixels.
const looks = {
  lit: { glass: '#c2cfac', off: '#bac7a3', gap: '#5a664c', on: '#1b2416' },
  dark: { glass: '#3a4138', off: '#363d34', gap: '#2a3028', on: '#20261e' },
};

export class Lcd {
  #canvas;
  #place;
  #pixels = 'ff'.repeat((WIDTH * HEIGHT) / 8);
  #lit = true;
  #scheduled = false;

  // Draws on `canvas` as large as the width of the element `place` lets it.
  constructor(canvas, place) {
    this.#canvas = canvas;
    this.#place = place;
    new ResizeObserver(() => this.#schedule()).observe(place);
  }

  // Shows a frame as the LCD driver gets it: hexadecimal digits, rows from the top, a 0 bit is a drawn pixel.
  show(pixels, lit) {
    this.#pixels = pixels;
    this.#lit = lit;
    this.#schedule();
  }

  // However fast frames come, one is drawn for each picture of the browser's.
  #schedule() {
    if (this.#scheduled) return;
    this.#scheduled = true;
    requestAnimationFrame(() => {
      this.#scheduled = false;
      this.#draw();
    });
  }

  // Fits the canvas to its place; the device pixels of one LCD pixel.
  #fit() {
    const density = window.devicePixelRatio;
    const room = this.#place.clientWidth * density;
    const zoom = Math.max(1, Math.floor(room / (WIDTH + 2 * MARGIN)));
    const [width, height] = [WIDTH, HEIGHT].map((size) => (size + 2 * MARGIN) * zoom);
    if (this.#canvas.width !== width || this.#canvas.height !== height) {
      Object.assign(this.#canvas, { width, height });
      this.#canvas.style.width = `${width / density}px`;
      this.#canvas.style.height = `${height / density}px`;
    }
    return zoom;
  }

  #draw() {
    const zoom = this.#fit();
    const dot = zoom - (zoom < 3 ? 0 : Math.max(1, Math.round(zoom / 8)));
    const look = this.#lit ? looks.lit : looks.dark;
    const context = this.#canvas.getContext('2d', { alpha: false });
    context.fillStyle = look.glass;
    context.fillRect(0, 0, this.#canvas.width, this.#canvas.height);
    this.#fill(context, 1, look.off, zoom, dot);
    this.#fill(context, 0, look.gap, zoom, zoom);
    this.#fill(context, 0, look.on, zoom, dot);
  }

  // Draws the pixels whose bit is `bit` as squares of `size`.
  #fill(context, bit, colour, zoom, size) {
    context.fillStyle = colour;
    for (let y = 0; y < HEIGHT; y++) {
      for (let x = 0; x < WIDTH; x++) {
        if (this.#bit(x, y) === bit) context.fillRect((x + MARGIN) * zoom, (y + MARGIN) * zoom, size, size);
      }
    }
  }

  #bit(x, y) {
    const digit = parseInt(this.#pixels[(y * WIDTH + x) >> 2], 16);
    return (digit >> (3 - (x & 3))) & 1;
  }
}
