// Small things that every part of the page uses.

export const byId = (id) => document.getElementById(id);

export function element(tag, properties, ...children) {
  const made = Object.assign(document.createElement(tag), properties);
  made.append(...children);
  return made;
}

const STAY_MS = { news: 4000, complaint: 10000 };
let end = 0;

// Shows `text` in one of the two toasts, instead of what either shows.
function toast(id, text) {
  for (const each of Object.keys(STAY_MS)) byId(each).textContent = '';
  // An open dialog is above everything that is not part of it.
  (document.querySelector('dialog[open]') ?? document.body).append(byId(id));
  byId(id).textContent = text;
  clearTimeout(end);
  end = setTimeout(() => { byId(id).textContent = ''; }, STAY_MS[id]);
}

// Tells what was done.
export function tell(text) {
  toast('news', text);
}

// Tells what could not be done, and why; "" takes it back.
export function complain(text) {
  if (text) toast('complaint', text);
  else byId('complaint').textContent = '';
}

const TICKS_PER_SECOND = 10;

// Ticks as minutes and seconds of router time: "12:34", and "12:34.5" with tenths.
export function minutes(tick, tenths = false) {
  const seconds = Math.floor(tick / TICKS_PER_SECOND);
  const text = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
  return tenths ? `${text}.${tick % TICKS_PER_SECOND}` : text;
}

// Saves `blob` as the file `name`.
export function save(blob, name) {
  const link = element('a', { href: URL.createObjectURL(blob), download: name });
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href));
  tell(`Saved ${name}`);
}

// Copies what `make` promises to give; ClipboardItem lets it come after the click that allowed it.
export async function copy(type, content, what) {
  try {
    await navigator.clipboard.write([new ClipboardItem({ [type]: content })]);
    tell(`Copied ${what}`);
  } catch (error) {
    complain(`Not copied: ${error.message}`);
  }
}
