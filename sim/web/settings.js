// The settings store as a table: every key with its value, escaped as in scenario scripts.

import { card } from './inputs.js';
import { remove, send } from './requests.js';

const pathOf = (key) => `/input/setting.${encodeURIComponent(key)}`;

export class Settings {
  #body;
  #rows = new Map();
  #settings = {};

  // A card below `place`.
  constructor(place) {
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
    if (await send(pathOf(key.value), value.value)) form.reset();
  }

  // Shows `settings`, all of them.
  show(settings) {
    this.#settings = settings;
    for (const [key, row] of this.#rows) {
      if (key in settings) continue;
      row.remove();
      this.#rows.delete(key);
    }
    Object.keys(settings).sort().forEach((key, index) => {
      if (!this.#rows.has(key)) this.#rows.set(key, this.#row(key));
      const row = this.#rows.get(key);
      const field = row.querySelector('input');
      if (document.activeElement !== field) field.value = settings[key];
      // A row that is moved loses the focus of who writes in it.
      const there = this.#body.children[index];
      if (there !== row) this.#body.insertBefore(row, there ?? null);
    });
  }

  #row(key) {
    const row = document.getElementById('settings-row').content.firstElementChild.cloneNode(true);
    // A key that is too long for its column breaks behind an underscore.
    row.querySelector('th').append(...key.split(/(?<=_)/).flatMap((part) => [part, document.createElement('wbr')]));
    const field = row.querySelector('input');
    field.ariaLabel = key;
    field.addEventListener('change', async () => {
      // A refused value gives way to the one that holds.
      if (!await send(pathOf(key), field.value)) field.value = this.#settings[key];
    });
    const button = row.querySelector('button');
    button.ariaLabel = `Remove ${key}`;
    button.addEventListener('click', () => remove(pathOf(key)));
    return row;
  }
}
