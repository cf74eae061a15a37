// The page of the simulated router: shows the LCD and the inputs' values as they change, sends keys and new values.

import { Inputs } from './inputs.js';
import { Lcd } from './lcd.js';
import { Settings } from './settings.js';

const byId = (id) => document.getElementById(id);
const lcd = new Lcd(byId('lcd'), byId('place'));

const keyboard = {
  ArrowUp: 'up', ArrowDown: 'down', ArrowLeft: 'left', ArrowRight: 'right',
  Enter: 'ok', m: 'menu', M: 'menu', Escape: 'menu',
};
const TICKS_PER_SECOND = 10;
const RETRY_MS = 2000; // the browser itself tries again, unless the server has answered with an error

// Requests go one after the other: keys arrive in the order in which they were pressed.
let lastRequest = Promise.resolve();

// Whether the router has taken it; if not, the page says why.
function request(method, path, body) {
  const done = lastRequest.then(async () => {
    try {
      const response = await fetch(path, { method, body });
      byId('message').textContent = response.ok ? '' : await response.text();
      return response.ok;
    } catch {
      byId('message').textContent = 'The router does not answer.';
      return false;
    }
  });
  lastRequest = done;
  return done;
}

const send = (path, value) => request('POST', path, value);
const remove = (path) => request('DELETE', path);

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
    const { target } = event;
    if (event.ctrlKey || event.altKey || event.metaKey || byId('help').open || target.closest('input, select')) return;
    if (event.key === '?') byId('help').showModal();
    const key = keyboard[event.key];
    const pressesFocused = event.key === 'Enter' && target.closest('button, summary');
    if (!key || pressesFocused || (event.repeat && !event.key.startsWith('Arrow'))) return;
    event.preventDefault();
    press(key);
  });
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

function showSpeed(speed) {
  byId('speed').textContent = speed === 'pause' ? 'paused' : `×${speed}`;
}

function connectStream(inputs, settings) {
  const stream = new EventSource('/stream');
  stream.addEventListener('open', () => showConnection('live', 'Live'));
  stream.addEventListener('error', () => {
    showConnection('lost', 'Reconnecting…');
    if (stream.readyState === EventSource.CLOSED) setTimeout(() => connectStream(inputs, settings), RETRY_MS);
  });
  stream.addEventListener('frame', (event) => {
    const { tick, lit, pixels } = JSON.parse(event.data);
    lcd.show(pixels, lit);
    showTime(tick);
  });
  stream.addEventListener('state', (event) => {
    const state = JSON.parse(event.data);
    inputs.show(state.values);
    if (state.settings) settings.show(state.settings);
    if ('clock.speed' in state.values) showSpeed(state.values['clock.speed']);
    showTime(state.tick);
  });
}

async function start() {
  const { inputs } = await (await fetch('/inputs')).json();
  connectStream(new Inputs(inputs, byId('controls'), send), new Settings(byId('controls'), send, remove));
}

byId('help-open').addEventListener('click', () => byId('help').showModal());
connectKeys();
start();
