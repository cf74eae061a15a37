// Finding a control among the cards.

import { byId } from './page.js';

// Shows those cards and controls of `place` whose group, label, name or place has what is written in `field`.
export function connectFind(field, place) {
  field.addEventListener('input', () => {
    const wanted = field.value.trim().toLowerCase();
    const has = (text) => text.toLowerCase().includes(wanted);
    for (const card of place.children) {
      const isWhole = has(card.querySelector('summary').textContent);
      const controls = [...card.querySelectorAll('.row, .actions > button, tbody > tr')];
      for (const control of controls) control.hidden = !isWhole && !has(`${control.textContent} ${control.title}`);
      card.hidden = controls.length > 0 && controls.every((control) => control.hidden);
      if (wanted && !card.hidden) card.open = true;
    }
    const isFound = [...place.children].some((card) => !card.hidden);
    byId('none-found').textContent = isFound ? '' : 'No control has this text.';
  });
}
