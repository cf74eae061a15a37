// What the LCD shows: the picture of now, or that of a moment of the time line, marked as past.

import { byId, minutes } from './page.js';
import { get } from './requests.js';

const hexadecimal = (bytes) => Array.from(bytes, (byte) => byte.toString(16).padStart(2, '0')).join('');

export class View {
  #lcd;
  #now = null; // the newest frame
  #past = null; // the happening whose picture is shown instead
  onBack = () => {}; // called when the LCD shows now again

  constructor(lcd) {
    this.#lcd = lcd;
    const button = byId('back');
    button.addEventListener('click', () => this.back());
    button.addEventListener('pointerdown', (event) => event.preventDefault());
  }

  get past() {
    return this.#past;
  }

  // The newest frame: {tick, lit, pixels}.
  show(frame) {
    this.#now = frame;
    if (!this.#past) this.#draw(frame);
  }

  // Shows what the LCD showed when `happening` came.
  async showPast(happening) {
    if (happening.picture === 0) return;
    this.#past = happening;
    const response = await get(`/picture/${happening.picture}`);
    if (this.#past !== happening) return; // another one was asked for meanwhile
    if (!response) {
      this.back();
      return;
    }
    const lit = response.headers.get('Lit') !== 'no';
    this.#draw({ pixels: hexadecimal(new Uint8Array(await response.arrayBuffer())), lit });
  }

  back() {
    if (!this.#past) return;
    this.#past = null;
    if (this.#now) this.#draw(this.#now);
    this.onBack();
  }

  #draw(frame) {
    const past = this.#past;
    this.#lcd.show(frame);
    const moment = past ? `Past: tick ${past.tick} (${minutes(past.tick, true)}), picture ${past.picture}` : 'Now';
    const text = `${moment}, backlight ${frame.lit ? 'on' : 'off'}`;
    // Only what changes is spoken.
    if (byId('moment').textContent !== text) byId('moment').textContent = text;
    byId('back').hidden = !past;
    byId('device').classList.toggle('past', Boolean(past));
  }
}
