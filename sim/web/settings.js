// The settings store as a table: every key with its value, escaped as in scenario scripts.

import { card } from './inputs.js';

const pathOf = (key) => `/input/setting.${encodeURIComponent(key)}`;

export class Settings {
  #body;
  #rows = new Map();
  #send;
  #remove;

  // A card below `place`; `send(path, value)` and `remove(path)` change the router.
  constructor(place, send, remove) {
    this.#send = send;
    this.#remove = remove;
    const template = document.getElementById('settings-table').content.cloneNode(true);
    this.#body = template.querySelector('tbody');
    const form = template.querySelector('form');
    form.addEventListener('submit', (event) => {
      event.preventDefault();
      this.#add(form);
    });
    place.append(card('Settings store', template));
  }

  async #add(form) {
    const { key, value } = form.elements;
    if (await this.#send(pathOf(key.value), value.value)) form.reset();
  }

  // Shows `settings`, all of them.
  show(settings) {
    for (const [key, row] of this.#rows) {
      if (key in settings) continue;
      row.remove();
      this.#rows.delete(key);
    }
    for (const key of Object.keys(settings).sort()) {
      if (!this.#rows.has(key)) this.#rows.set(key, this.#row(key));
      const row = this.#rows.get(key);
      const field = row.querySelector('input');
      if (document.activeElement !== field) field.value = settings[key];
      this.#body.append(row);
    }
  }

  #row(key) {
    const row = document.getElementById('settings-row').content.firstElementChild.cloneNode(true);
    row.querySelector('th').textContent = key;
    const field = row.querySelector('input');
    field.ariaLabel = key;
    field.addEventListener('change', () => this.#send(pathOf(key), field.value));
    const button = row.querySelector('button');
    button.ariaLabel = `Remove ${key}`;
    button.addEventListener('click', () => this.#remove(pathOf(key)));
    return row;
  }
}
