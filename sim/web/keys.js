// The panel's six keys: buttons and keyboard.

import { byId } from './page.js';
import { send } from './requests.js';

const keyboard = {
  ArrowUp: 'up', ArrowDown: 'down', ArrowLeft: 'left', ArrowRight: 'right',
  Enter: 'ok', m: 'menu', M: 'menu', Escape: 'menu',
};
const PRESSED_MS = 120; // how long a key looks pressed

function press(key) {
  const button = document.querySelector(`[data-key="${key}"]`);
  button.classList.add('pressed');
  setTimeout(() => button.classList.remove('pressed'), PRESSED_MS);
  return send(`/key/${key}`);
}

// The key of the panel that a key of the keyboard is; none where it has a meaning of its own.
function keyOf(event) {
  const { target } = event;
  if (event.ctrlKey || event.altKey || event.metaKey) return undefined;
  if (document.querySelector('dialog[open]') || target.closest('input, select, textarea, [role=listbox]')) return undefined;
  if (event.key === 'Enter' && target.closest('button, summary')) return undefined;
  if (event.repeat && !event.key.startsWith('Arrow')) return undefined;
  return event.key === '?' ? 'help' : keyboard[event.key];
}

// Calls `onPress` before each key.
export function connectKeys(onPress) {
  const take = (key) => {
    onPress();
    press(key);
  };
  for (const button of document.querySelectorAll('[data-key]')) {
    button.addEventListener('click', () => take(button.dataset.key));
    // A mouse leaves the focus where it is, so that Enter goes on meaning OK.
    button.addEventListener('pointerdown', (event) => event.preventDefault());
  }
  document.addEventListener('keydown', (event) => {
    const key = keyOf(event);
    if (!key) return;
    event.preventDefault();
    if (key === 'help') byId('help').showModal();
    else take(key);
  });
  byId('help-open').addEventListener('click', () => byId('help').showModal());
}
