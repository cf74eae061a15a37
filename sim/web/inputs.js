// The controls of the router's inputs, made from the list that the router gives, a card a group.

import { element } from './page.js';
import { send } from './requests.js';

const languageNames = {
  en: 'English', es: 'Español', fr: 'Français', de: 'Deutsch', it: 'Italiano', du: 'Nederlands',
  tc: '繁體中文', jp: '日本語', kr: '한국어',
};
const SWITCH_CHARACTERS = 13; // of a choice's words together: more are a list to choose from
const TOLD_MS = 1000; // within which the stream has told of a change
const OWN_GROUPS = ['Keys']; // those that the page has drawn itself

// A choice of few words: buttons side by side.
function switchControl(input, give) {
  const radios = input.choices.map((value) => {
    const radio = element('input', { type: 'radio', name: input.id, value });
    radio.addEventListener('change', () => give(value));
    // A mouse leaves no focus behind: the arrow keys go on being the panel's.
    radio.addEventListener('click', (event) => event.detail > 0 && radio.blur());
    return radio;
  });
  const labels = radios.map((radio) => element('label', {}, radio, radio.value));
  const legend = element('legend', { textContent: input.label });
  const buttons = element('div', { className: 'switch' }, ...labels);
  const set = element('fieldset', { className: 'row' }, legend, buttons);
  return { node: set, show: (value) => radios.forEach((radio) => { radio.checked = radio.value === value; }) };
}

function labelled(input, control) {
  control.id = input.id;
  return element('div', { className: 'row' }, element('label', { htmlFor: input.id, textContent: input.label }), control);
}

function listControl(input, give) {
  const select = element('select');
  const offer = (value) => select.add(new Option(languageNames[value] ?? value, value));
  input.choices.forEach(offer);
  select.addEventListener('change', () => give(select.value));
  const show = (value) => {
    if (![...select.options].some((option) => option.value === value)) offer(value);
    select.value = value;
  };
  return { node: labelled(input, select), show };
}

const fieldProperties = {
  number: ({ least, most }) => ({ type: 'number', min: least, max: most, inputMode: 'numeric', required: true }),
  text: () => ({ type: 'text', spellcheck: false, autocomplete: 'off' }),
  address: () => ({ type: 'text', inputMode: 'decimal', autocomplete: 'off' }),
  time: () => ({ type: 'datetime-local', step: 1, min: '1970-01-01T00:00', max: '2037-12-31T23:59', required: true }),
};

function fieldControl(input, give) {
  const field = element('input', fieldProperties[input.kind](input));
  if (document.getElementById(`${input.id}-texts`)) field.setAttribute('list', `${input.id}-texts`);
  // What someone is writing is not taken out of their hands.
  let late = null; // the value that has come meanwhile
  field.addEventListener('change', () => {
    late = null;
    give(field.value);
  });
  field.addEventListener('blur', () => {
    field.value = late ?? field.value;
    late = null;
  });
  const show = (value) => {
    if (document.activeElement === field) late = value;
    else field.value = value;
  };
  return { node: labelled(input, field), show };
}

function actionControl(input, give) {
  const button = element('button', { type: 'button', className: 'plain', textContent: input.label });
  button.addEventListener('click', () => give(''));
  button.addEventListener('pointerdown', (event) => event.preventDefault());
  return { node: button, show: () => {} };
}

function control(input, give) {
  if (input.kind === 'action') return actionControl(input, give);
  if (input.kind !== 'choice') return fieldControl(input, give);
  return (input.choices.join('').length <= SWITCH_CHARACTERS ? switchControl : listControl)(input, give);
}

export class Inputs {
  #controls = new Map();
  #values = {};

  // Makes the controls of `list` below `place`.
  constructor(list, place) {
    for (const [group, inputs] of groupsOf(list)) {
      const rows = element('div', { className: 'rows' });
      const actions = element('div', { className: 'actions' });
      for (const input of inputs) {
        const made = control(input, (value) => this.#give(input.id, value));
        made.node.title = `${input.id}: ${input.place}`;
        this.#controls.set(input.id, made);
        (input.kind === 'action' ? actions : rows).append(made.node);
      }
      place.append(card(group, ...[rows, actions].filter((part) => part.hasChildNodes())));
    }
  }

  async #give(id, value) {
    // A value that was refused, or was another again before anyone was told, gives way to the one that holds.
    const taken = await send(`/input/${encodeURIComponent(id)}`, value);
    setTimeout(() => this.#controls.get(id).show(this.#values[id]), taken ? TOLD_MS : 0);
  }

  // Shows the values that have changed, by the ids of their inputs.
  show(values) {
    Object.assign(this.#values, values);
    for (const [id, value] of Object.entries(values)) this.#controls.get(id)?.show(value);
  }
}

function groupsOf(list) {
  const groups = new Map();
  for (const input of list) {
    if (OWN_GROUPS.includes(input.group)) continue;
    groups.set(input.group, [...(groups.get(input.group) ?? []), input]);
  }
  return groups;
}

// A card that can be folded; on a narrow page it begins so.
export function card(title, ...content) {
  const open = matchMedia('(min-width: 760px)').matches;
  return element('details', { className: 'card', open }, element('summary', { textContent: title }), ...content);
}
