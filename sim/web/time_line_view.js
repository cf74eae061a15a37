// The time line on the page. Only the lines in sight are elements, so that thousands of them are as quick as ten.

import { byId, copy, element, minutes } from './page.js';
import { oncePerPicture } from './redraw.js';
import { TimeLine, kinds } from './time_line.js';

const emptyRow = () => element('div', { className: 'line', role: 'option' },
  ...['tick', 'minutes', 'kind', 'text'].map((className) => element('span', { className })));
const textOf = (line) => `${line.tick}\t${minutes(line.tick, true)}\t${line.kind}\t${line.text}\n`;

function copyLines(lines) {
  if (lines.length === 0) return;
  copy('text/plain', lines.map(textOf).join(''), lines.length === 1 ? 'a line' : `${lines.length} lines`);
}

export class TimeLineView {
  #lines = new TimeLine();
  #list = byId('lines');
  #rows = element('div', { className: 'rows-in-sight' });
  #space = element('div', { role: 'presentation' }, this.#rows); // as high as all lines
  #rowHeight = 0;
  #schedule = oncePerPicture(() => this.#draw());
  #waiting = null; // what comes while all that has happened before is fetched
  #pressed = 0; // id of the line that the pointer went down on
  #view;

  // Shows pictures of the past in `view`.
  constructor(view) {
    this.#view = view;
    this.#list.append(this.#space);
    this.#measure();
    this.#connectList();
    this.#connectBar();
    new ResizeObserver(() => this.#measure()).observe(this.#list);
  }

  // Begins anew, with all that is known of the past.
  async reload() {
    const waiting = this.#waiting = [];
    let happenings = [];
    try {
      ({ happenings } = await (await fetch('/happenings')).json());
    } catch {
      // The stream tells of the newest, and that there is no connection.
    }
    if (this.#waiting !== waiting) return; // begun anew meanwhile
    this.#waiting = null;
    this.#lines.clear();
    this.#lines.add(happenings);
    this.add(waiting);
  }

  add(happenings) {
    if (this.#waiting) {
      this.#waiting.push(...happenings);
      return;
    }
    const gone = this.#lines.add(happenings);
    // Who stands still goes on seeing the same lines.
    if (!this.#follows) this.#list.scrollTop -= gone * this.#rowHeight;
    this.#schedule();
  }

  // The LCD shows now again.
  follow() {
    this.#lines.unselect();
    this.#follows = true;
  }

  get #follows() {
    return byId('follow').checked;
  }

  set #follows(follows) {
    byId('follow').checked = follows;
    this.#schedule();
  }

  #measure() {
    const probe = emptyRow();
    probe.lastChild.textContent = 'x';
    this.#rows.append(probe);
    this.#rowHeight = probe.getBoundingClientRect().height;
    probe.remove();
    this.#schedule();
  }

  #draw() {
    const { shown, active } = this.#lines;
    const list = this.#list;
    this.#space.style.height = `${shown.length * this.#rowHeight}px`;
    if (this.#follows) list.scrollTop = list.scrollHeight;
    const first = Math.max(0, Math.min(Math.floor(list.scrollTop / this.#rowHeight), shown.length - 1));
    const count = Math.ceil(list.clientHeight / this.#rowHeight) + 1;
    this.#rows.style.top = `${first * this.#rowHeight}px`;
    const inSight = shown.slice(first, first + count);
    // The elements stay, so that a line that is clicked on is there until the click is over.
    while (this.#rows.childElementCount < inSight.length) this.#rows.append(emptyRow());
    while (this.#rows.childElementCount > inSight.length) this.#rows.lastChild.remove();
    inSight.forEach((line, index) => this.#fill(this.#rows.children[index], line, first + index));
    const row = document.getElementById(`line-${active}`);
    if (row) list.setAttribute('aria-activedescendant', `line-${active}`);
    else list.removeAttribute('aria-activedescendant');
    this.#tellCounts();
    this.#tellWhole(row?.lastChild);
  }

  // The text that the cursor is on, when its line is too short for it.
  #tellWhole(text) {
    const whole = byId('whole-line');
    whole.hidden = !text || text.scrollWidth <= text.clientWidth;
    if (!whole.hidden) whole.textContent = text.textContent;
  }

  #tellCounts() {
    const { shown, length, selected } = this.#lines;
    const number = (value) => value.toLocaleString('en');
    byId('count').textContent = shown.length === length ? number(length) : `${number(shown.length)} of ${number(length)}`;
    byId('copy-lines').textContent = selected.length > 1 ? `Copy ${number(selected.length)}` : 'Copy all';
  }

  #fill(row, line, index) {
    [line.tick, minutes(line.tick, true), line.kind, line.text].forEach((text, part) => {
      row.children[part].textContent = text;
    });
    row.id = `line-${line.id}`;
    row.dataset.kind = line.kind;
    row.ariaSelected = this.#lines.isSelected(line);
    row.ariaPosInSet = index + 1;
    row.ariaSetSize = this.#lines.shown.length;
    row.classList.toggle('active', line.id === this.#lines.active);
  }

  #connectList() {
    const list = this.#list;
    list.addEventListener('scroll', () => this.#schedule());
    // Who scrolls up or points at a line wants to stand still.
    list.addEventListener('wheel', (event) => { if (event.deltaY < 0) this.#follows = false; }, { passive: true });
    list.addEventListener('pointerdown', (event) => {
      this.#follows = false;
      this.#pressed = Number(event.target.closest('.line')?.id.slice('line-'.length) ?? 0);
    });
    list.addEventListener('click', (event) => {
      if (!this.#pressed) return;
      this.#go(this.#lines.indexOf(this.#pressed), event.shiftKey);
      if (!event.shiftKey) this.#open();
    });
    list.addEventListener('keydown', (event) => this.#onKey(event));
  }

  #onKey(event) {
    const { shown, active, selected } = this.#lines;
    const page = Math.max(1, Math.floor(this.#list.clientHeight / this.#rowHeight) - 1);
    const from = active ? this.#lines.indexOf(active) : shown.length;
    const goals = {
      ArrowUp: from - 1, ArrowDown: from + 1, PageUp: from - page, PageDown: from + page, Home: 0, End: shown.length - 1,
    };
    const control = event.ctrlKey || event.metaKey;
    if (event.key in goals) this.#go(goals[event.key], event.shiftKey);
    else if (event.key === 'Enter') this.#open();
    else if (event.key === 'Escape') this.#view.back();
    else if (control && event.key === 'a') this.#lines.selectAll();
    else if (control && event.key === 'c') copyLines(selected);
    else return;
    event.preventDefault();
    this.#schedule();
  }

  // Puts the cursor on the line at `index` among those shown, in sight.
  #go(index, extend) {
    const { shown } = this.#lines;
    if (shown.length === 0) return;
    const at = Math.max(0, Math.min(index, shown.length - 1));
    this.#follows = false;
    this.#lines.select(shown[at].id, extend);
    const top = at * this.#rowHeight;
    const bottom = top + this.#rowHeight - this.#list.clientHeight;
    this.#list.scrollTop = Math.min(top, Math.max(this.#list.scrollTop, bottom));
    if (this.#view.past && !extend) this.#open();
    this.#schedule();
  }

  #open() {
    const line = this.#lines.shown[this.#lines.indexOf(this.#lines.active)];
    if (line) this.#view.showPast(line);
  }

  #connectBar() {
    for (const kind of kinds) {
      const box = element('input', { type: 'checkbox', checked: true });
      box.addEventListener('change', () => this.#refilter(() => this.#lines.toggleKind(kind, box.checked)));
      const label = element('label', { className: 'chip' }, box, kind);
      label.dataset.kind = kind;
      byId('kinds').append(label);
    }
    const find = byId('find-line');
    find.addEventListener('input', () => this.#refilter(() => this.#lines.find(find.value)));
    byId('follow').addEventListener('change', () => this.#schedule());
    byId('copy-lines').addEventListener('click', () => {
      const { shown, selected } = this.#lines;
      copyLines(selected.length > 1 ? selected : shown);
    });
  }

  // The line of the cursor stays in sight while others come and go.
  #refilter(change) {
    change();
    const { active } = this.#lines;
    if (active && !this.#follows) this.#list.scrollTop = this.#lines.indexOf(active) * this.#rowHeight;
    this.#schedule();
  }
}
