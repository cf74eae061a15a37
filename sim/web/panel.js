// The page of the simulated router: puts its parts together and tells them what the router's stream brings.

import { connectFind } from './find.js';
import { Inputs } from './inputs.js';
import { connectKeys } from './keys.js';
import { Lcd } from './lcd.js';
import { byId, minutes } from './page.js';
import { Recorder } from './record.js';
import { Settings } from './settings.js';
import { TimeLineView } from './time_line_view.js';
import { View } from './view.js';
import { showWorlds } from './worlds.js';

const RETRY_MS = 2000; // the browser itself tries again, unless the server has answered with an error

const lcd = new Lcd(byId('lcd'), byId('place'), document.querySelector('main'));
const view = new View(lcd);
const timeLine = new TimeLineView(view);
const recorder = new Recorder(lcd, view);
view.onBack = () => timeLine.follow();

function showConnection(state, text) {
  const status = byId('connection');
  if (status.dataset.state === state) return;
  status.dataset.state = state;
  status.textContent = text;
  byId('lost').hidden = state !== 'lost';
  byId('device').classList.toggle('lost', state === 'lost');
}

function showTime(tick) {
  byId('time').textContent = minutes(tick);
  recorder.showTime(tick);
}

function showSpeed(speed) {
  byId('speed').textContent = speed === 'pause' ? 'paused' : `×${speed}`;
}

// What each event of the stream is for.
function listeners(inputs, settings) {
  return {
    frame: (frame) => {
      view.show(frame);
      showTime(frame.tick);
    },
    state: ({ tick, values, settings: store }) => {
      inputs.show(values);
      if (store) settings.show(store);
      if ('clock.speed' in values) showSpeed(values['clock.speed']);
      showTime(tick);
    },
    happenings: (happenings) => timeLine.add(happenings),
  };
}

function connectStream(handlers) {
  const stream = new EventSource('/stream');
  stream.addEventListener('open', () => {
    showConnection('live', 'Live');
    view.back(); // another simulator has other pictures
    timeLine.reload();
  });
  stream.addEventListener('error', () => {
    showConnection('lost', 'Reconnecting…');
    if (stream.readyState === EventSource.CLOSED) setTimeout(() => connectStream(handlers), RETRY_MS);
  });
  for (const [name, handle] of Object.entries(handlers)) {
    stream.addEventListener(name, (event) => handle(JSON.parse(event.data)));
  }
}

// Zoom and look are kept by the browser, where it keeps anything.
function connectChoice(id, property, apply) {
  const control = byId(id);
  try {
    const kept = localStorage.getItem(id);
    if (kept !== null) control[property] = JSON.parse(kept);
  } catch {
    // The page begins as it is.
  }
  const change = () => apply(control[property]);
  control.addEventListener('change', () => {
    change();
    try {
      localStorage.setItem(id, JSON.stringify(control[property]));
    } catch {
      // It holds until the page is closed.
    }
  });
  change();
}

// Tries until the router tells what it has.
async function fetchInputs() {
  for (;;) {
    try {
      return (await (await fetch('/inputs')).json()).inputs;
    } catch {
      showConnection('lost', 'Reconnecting…');
      await new Promise((resolve) => { setTimeout(resolve, RETRY_MS); });
    }
  }
}

connectKeys(() => view.back());
connectChoice('zoom', 'value', (zoom) => { lcd.zoom = Number(zoom); });
connectChoice('look', 'checked', (isLcd) => { lcd.look = isLcd ? 'lcd' : 'plain'; });
const inputs = await fetchInputs();
const cards = byId('cards');
showWorlds(cards);
connectFind(byId('find-control'), cards);
connectStream(listeners(new Inputs(inputs, cards), new Settings(cards)));
