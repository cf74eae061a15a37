// Requests to the simulator. What changes the router goes one after the other: keys arrive in the order in which they
// were pressed.

import { complain } from './page.js';

let last = Promise.resolve();

// The answer, or null when there is none; then the page says why.
async function ask(path, options) {
  try {
    const response = await fetch(path, options);
    complain(response.ok ? '' : await response.text());
    return response.ok ? response : null;
  } catch {
    complain('The router does not answer.');
    return null;
  }
}

function inTurn(path, options) {
  last = last.then(() => ask(path, options));
  return last.then(Boolean);
}

// Both: whether the router has taken it.
export const send = (path, value) => inTurn(path, { method: 'POST', body: value });
export const remove = (path) => inTurn(path, { method: 'DELETE' });

export const get = (path) => ask(path);
