// The page of the simulated router: shows the LCD as it changes, sends keys, events and the state of the links.

import { Lcd } from './lcd.js';

const byId = (id) => document.getElementById(id);
const lcd = new Lcd(byId('lcd'), byId('place'));

const keyboard = {
  ArrowUp: 'up', ArrowDown: 'down', ArrowLeft: 'left', ArrowRight: 'right',
  Enter: 'ok', m: 'menu', M: 'menu', Escape: 'menu',
};
const linkLabels = { wan: 'WAN', lan: 'LAN' };
const linkStates = ['off', 'on', 'blink'];
const TICKS_PER_SECOND = 10;
const RETRY_MS = 2000; // the browser itself tries again, unless the server has answered with an error

const capitalised = (text) => text[0].toUpperCase() + text.slice(1);

// Requests go one after the other: keys arrive in the order in which they were pressed.
let lastRequest = Promise.resolve();

function send(path, body) {
  lastRequest = lastRequest.then(async () => {
    try {
      const response = await fetch(path, { method: 'POST', body });
      byId('message').textContent = response.ok ? '' : await response.text();
    } catch {
      byId('message').textContent = 'The router does not answer.';
    }
  });
}

function press(key) {
  const button = document.querySelector(`[data-key="${key}"]`);
  button.classList.add('pressed');
  setTimeout(() => button.classList.remove('pressed'), 120);
  send(`/key/${key}`);
}

function connectKeys() {
  for (const button of document.querySelectorAll('[data-key]')) {
    button.addEventListener('click', () => press(button.dataset.key));
    // A mouse leaves the focus where it is, so that Enter goes on meaning OK.
    button.addEventListener('pointerdown', (event) => event.preventDefault());
  }
  document.addEventListener('keydown', (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey || byId('help').open || event.target.closest('input')) return;
    if (event.key === '?') byId('help').showModal();
    const key = keyboard[event.key];
    const pressesFocused = event.key === 'Enter' && event.target.closest('button');
    if (!key || pressesFocused || (event.repeat && !event.key.startsWith('Arrow'))) return;
    event.preventDefault();
    press(key);
  });
}

function linkControl(name) {
  const set = document.createElement('fieldset');
  const legend = document.createElement('legend');
  legend.textContent = linkLabels[name] ?? capitalised(name);
  set.append(legend);
  for (const state of linkStates) {
    const label = document.createElement('label');
    const input = document.createElement('input');
    Object.assign(input, { type: 'radio', name, value: state });
    input.addEventListener('change', () => send(`/link/${name}/${state}`));
    label.append(input, state);
    set.append(label);
  }
  return set;
}

function eventControl(event) {
  const button = document.createElement('button');
  Object.assign(button, { type: 'button', className: 'plain', textContent: capitalised(event) });
  const body = () => (event === 'info' ? byId('info').value : undefined);
  button.addEventListener('click', () => send(`/event/${event.replaceAll(' ', '-')}`, body()));
  return button;
}

function showState(state) {
  if (!byId('links').hasChildNodes()) {
    byId('links').append(...Object.keys(state.links).map(linkControl));
    byId('events').append(...state.events.map(eventControl));
  }
  for (const [name, value] of Object.entries(state.links)) {
    byId('links').querySelector(`[name="${name}"][value="${value}"]`).checked = true;
  }
  byId('clients').value = state.clients;
  byId('speed').textContent = `×${state.speed}`;
}

async function readState() {
  try {
    showState(await (await fetch('/state')).json());
  } catch {
    // The stream tells that the connection is gone.
  }
}

function showConnection(state, text) {
  const status = byId('connection');
  if (status.dataset.state === state) return;
  status.dataset.state = state;
  status.textContent = text;
  byId('lost').hidden = state !== 'lost';
  byId('device').classList.toggle('lost', state === 'lost');
}

function showTime(tick) {
  const seconds = Math.floor(tick / TICKS_PER_SECOND);
  byId('time').textContent = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
}

function connectStream() {
  const stream = new EventSource('/stream');
  stream.addEventListener('open', () => {
    showConnection('live', 'Live');
    readState();
  });
  stream.addEventListener('error', () => {
    showConnection('lost', 'Reconnecting…');
    if (stream.readyState === EventSource.CLOSED) setTimeout(connectStream, RETRY_MS);
  });
  stream.addEventListener('frame', (event) => {
    const { tick, lit, pixels } = JSON.parse(event.data);
    lcd.show(pixels, lit);
    showTime(tick);
  });
}

byId('clients').addEventListener('change', (event) => {
  if (event.target.reportValidity()) send(`/clients/${Number(event.target.value)}`);
});
byId('help-open').addEventListener('click', () => byId('help').showModal());
// What another window has changed.
window.addEventListener('focus', readState);
connectKeys();
connectStream();
