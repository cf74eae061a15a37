// The ready worlds: a card with a button for each.

import { card } from './inputs.js';
import { element, tell } from './page.js';
import { get, send } from './requests.js';

function button(name) {
  const made = element('button', { type: 'button', className: 'plain', textContent: name });
  made.addEventListener('click', async () => await send('/world', name) && tell(`The router is in the world ${name}`));
  made.addEventListener('pointerdown', (event) => event.preventDefault());
  return made;
}

// Puts the card first into `place`.
export async function showWorlds(place) {
  const response = await get('/worlds');
  if (!response) return;
  const names = await response.json();
  place.prepend(card('Worlds', element('div', { className: 'actions' }, ...names.map(button))));
}
