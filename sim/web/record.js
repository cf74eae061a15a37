// Pictures, animated recordings and the script: saved and copied as the page shows the LCD, in look and zoom.

import { byId, copy, minutes, save, tell } from './page.js';
import { get } from './requests.js';

const LARGEST_ANIMATED = 4; // zoom, at which every picture that is kept can be part of a recording
const MOST_SHOWN = 200000; // characters of a script in its window

async function tick() {
  const response = await get('/state');
  return response ? (await response.json()).tick : null;
}

export class Recorder {
  #lcd;
  #view;
  #began = null; // tick at which the animated recording began
  #script = '';

  constructor(lcd, view) {
    this.#lcd = lcd;
    this.#view = view;
    byId('save-picture').addEventListener('click', () => this.#savePicture());
    byId('copy-picture').addEventListener('click', () => this.#copyPicture());
    byId('record').addEventListener('click', () => (this.#began === null ? this.#begin() : this.#end()));
    byId('script-open').addEventListener('click', () => this.#openScript());
    byId('script-name').addEventListener('input', () => this.#nameScript());
    byId('script-save').addEventListener('click', () => this.#saveScript());
    byId('script-copy').addEventListener('click', () => copy('text/plain', this.#script, 'the script'));
  }

  // The router's time, for what the button tells.
  showTime(now) {
    if (this.#began !== null) byId('record').textContent = `Stop ${minutes(Math.max(0, now - this.#began))}`;
  }

  #asShown(zoom) {
    return `look=${this.#lcd.look}&scale=${zoom}`;
  }

  async #picture() {
    const { past } = this.#view;
    const response = await get(`${past ? `/picture/${past.picture}` : '/screenshot'}.png?${this.#asShown(this.#lcd.zoom)}`);
    if (!response) throw new Error('no picture');
    return response.blob();
  }

  async #savePicture() {
    const name = `panel-${this.#view.past?.tick ?? await tick()}.png`;
    await this.#picture().then((blob) => save(blob, name)).catch(() => {});
  }

  #copyPicture() {
    copy('image/png', this.#picture(), 'the picture');
  }

  async #begin() {
    const now = await tick();
    if (now === null) return;
    this.#began = now;
    byId('record').classList.add('recording');
    this.showTime(now);
    tell('Recording');
  }

  async #end() {
    const began = this.#began;
    const now = await tick();
    if (now === null) return;
    const look = this.#asShown(Math.min(this.#lcd.zoom, LARGEST_ANIMATED));
    const response = await get(`/recording.gif?from=${began}&to=${now}&${look}`);
    // What has not come can be asked for again, but not of another simulator, which began later.
    if (!response && began <= now) return;
    this.#began = null;
    const button = byId('record');
    button.classList.remove('recording');
    button.textContent = 'Record';
    if (response) save(await response.blob(), `panel-${began}-${now}.gif`);
  }

  async #openScript() {
    const response = await get('/script');
    if (!response) return;
    this.#script = await response.text();
    byId('script-text').value = this.#script.slice(-MOST_SHOWN);
    byId('script-cut').hidden = this.#script.length <= MOST_SHOWN;
    this.#nameScript();
    byId('script').showModal();
    byId('script-text').scrollTop = 0;
  }

  get #scriptFile() {
    return `${byId('script-name').value}.scenario`;
  }

  #nameScript() {
    byId('script-command').textContent =
      `root=$(mktemp -d) && cp -r build/root/. $root && build/bin/panel-replay --root $root ${this.#scriptFile}`;
  }

  #saveScript() {
    if (byId('script-name').reportValidity()) save(new Blob([this.#script], { type: 'text/plain' }), this.#scriptFile);
  }
}
