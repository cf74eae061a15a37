// The lines of the time line: which are kept, which are looked for, which are selected.

const MOST_LINES = 5000;

export const kinds = ['input', 'print', 'command', 'setting', 'frame', 'router'];

export class TimeLine {
  #lines = []; // happenings: {id, tick, kind, text, picture}, oldest first
  #shown = []; // those of them that are looked for
  #kinds = new Set(kinds);
  #text = '';
  #anchor = 0; // id of the line at which the selection began; 0: none
  active = 0; // id of the line at which it ends, where the cursor is

  get shown() {
    return this.#shown;
  }

  get length() {
    return this.#lines.length;
  }

  // Takes new happenings; those that it has already it leaves out. Returns how many of the lines shown had to go.
  add(happenings) {
    const last = this.#lines.at(-1)?.id ?? 0;
    const fresh = happenings.filter(({ id }) => id > last);
    this.#lines.push(...fresh);
    this.#shown.push(...fresh.filter((line) => this.#isLookedFor(line)));
    this.#lines.splice(0, Math.max(0, this.#lines.length - MOST_LINES));
    const first = this.#lines[0]?.id ?? 0;
    const gone = this.#shown.findIndex(({ id }) => id >= first);
    return this.#shown.splice(0, gone < 0 ? this.#shown.length : gone).length;
  }

  clear() {
    this.#lines = [];
    this.#shown = [];
    this.unselect();
  }

  // Shows only lines of a kind or of all but that.
  toggleKind(kind, wanted) {
    if (wanted) this.#kinds.add(kind);
    else this.#kinds.delete(kind);
    this.#filter();
  }

  // Shows only lines with `text` in them, in small or capital letters.
  find(text) {
    this.#text = text.toLowerCase();
    this.#filter();
  }

  // Puts the cursor on the line `id`; `extend`: the selection goes on from where it began.
  select(id, extend) {
    this.active = id;
    if (!extend || !this.#anchor) this.#anchor = id;
  }

  selectAll() {
    this.#anchor = this.#shown[0]?.id ?? 0;
    this.active = this.#shown.at(-1)?.id ?? 0;
  }

  unselect() {
    this.#anchor = this.active = 0;
  }

  isSelected({ id }) {
    return this.#anchor > 0 && (id - this.#anchor) * (id - this.active) <= 0;
  }

  get selected() {
    return this.#shown.filter((line) => this.isSelected(line));
  }

  // Where the line `id` is among those shown, or else the first after it; -1: nowhere.
  indexOf(id) {
    return this.#shown.findIndex((line) => line.id >= id);
  }

  #isLookedFor({ kind, text }) {
    return this.#kinds.has(kind) && (this.#text === '' || text.toLowerCase().includes(this.#text));
  }

  #filter() {
    this.#shown = this.#lines.filter((line) => this.#isLookedFor(line));
  }
}
