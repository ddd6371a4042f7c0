// The list: only the rows on the screen are there, however many entries are found.
(function (view) {
  'use strict';

  const columns = ['picture', 'time', 'place', 'circuit', 'fault', 'duration', 'greatest', 'distance', 'page'];
  const ahead = 6;       // rows above and below the screen
  const mostPrinted = 300;
  const pictureSize = { width: 132, height: 46 };

  view.List = class {
    // pictures: view.Pictures; chosen is called with the entry that is chosen, sorted when the order is another one.
    constructor(element, entries, pictures, { chosen, sorted }) {
      Object.assign(this, { element, entries, pictures, chosen, sorted });
      this.found = new Uint32Array(0);
      this.active = -1;      // place in the list
      this.rows = new Map(); // by place
      this.key = view.isSortKey(view.address.get('sort')) ? view.address.get('sort') : 'time';
      const order = view.address.get('order');
      this.isDown = order ? order === 'down' : view.sortsDown(this.key);
      globalThis.addEventListener('scroll', () => this.request(), { passive: true });
    }

    build() {
      this.head = view.html('div', { className: 'listHead' }, ...columns.map((key) => this.headCell(key)));
      this.head.setAttribute('role', 'row');
      this.head.setAttribute('aria-rowindex', 1);
      this.body = view.html('div', { className: 'listBody' });
      this.body.setAttribute('role', 'rowgroup');
      this.grid = view.html('div', { className: 'grid', tabIndex: 0 }, this.head, this.body);
      this.grid.setAttribute('role', 'grid');
      this.grid.setAttribute('aria-label', view.text('list'));
      this.grid.addEventListener('keydown', (event) => this.press(event));
      this.element.replaceChildren(this.grid);
      this.forget();
      this.show(this.found);
    }

    headCell(key) {
      const cell = view.html('div', { className: `cell ${key}` });
      cell.setAttribute('role', 'columnheader');
      if (!view.isSortKey(key)) {
        cell.textContent = view.text(key);
        return cell;
      }
      const isSorted = key === this.key;
      cell.setAttribute('aria-sort', isSorted ? (this.isDown ? 'descending' : 'ascending') : 'none');
      const button = view.html('button', { type: 'button', textContent: view.text(key), title: view.text('sortBy', view.text(key)) });
      if (isSorted) button.append(view.html('span', { className: 'arrow', textContent: this.isDown ? ' ▾' : ' ▴' }));
      button.dataset.key = key;
      button.addEventListener('click', () => this.sort(key));
      cell.append(button);
      return cell;
    }

    sort(key) {
      this.isDown = key === this.key ? !this.isDown : view.sortsDown(key);
      this.key = key;
      view.address.set('sort', key === 'time' ? '' : key);
      view.address.set('order', this.isDown === view.sortsDown(key) ? '' : this.isDown ? 'down' : 'up');
      this.build();
      this.sorted();
      this.head.querySelector(`[data-key=${key}]`).focus();
    }

    forget() {
      for (const row of this.rows.values()) row.remove();
      this.rows.clear();
    }

    // Shows these entries in this order.
    show(found) {
      const entry = this.active >= 0 ? this.found[this.active] : -1;
      this.found = found;
      this.active = entry < 0 ? -1 : found.indexOf(entry);
      this.forget();
      this.grid.setAttribute('aria-rowcount', found.length + 1);
      this.rowHeight = parseFloat(getComputedStyle(this.grid).getPropertyValue('--row')) || 54;
      this.body.style.height = `${found.length * this.rowHeight}px`;
      this.draw();
    }

    request() {
      if (this.isRequested) return;
      this.isRequested = true;
      requestAnimationFrame(() => {
        this.isRequested = false;
        this.draw();
      });
    }

    // The places of the rows that are on the screen, and some around them.
    onScreen() {
      if (this.isPrinted) return [0, Math.min(this.found.length, mostPrinted)];
      const top = -this.body.getBoundingClientRect().top;
      const first = Math.max(Math.floor(top / this.rowHeight) - ahead, 0);
      const end = Math.ceil((top + globalThis.innerHeight) / this.rowHeight) + ahead;
      return [Math.min(first, this.found.length), Math.max(Math.min(end, this.found.length), 0)];
    }

    draw() {
      if (this.element.closest('[hidden]')) return;
      const [first, end] = this.onScreen();
      for (const [place, row] of this.rows) {
        if (place >= first && place < end) continue;
        row.remove();
        this.rows.delete(place);
      }
      for (let place = first; place < end; place++) {
        if (this.rows.has(place)) continue;
        const row = this.row(place);
        this.rows.set(place, row);
        this.body.append(row);
      }
      this.markActive();
    }

    row(place) {
      const { entries } = this;
      const entry = this.found[place];
      const row = view.html('div', { className: 'row', id: `row-${place}` }, ...this.cells(entry));
      if (!this.isPrinted) row.style.transform = `translateY(${place * this.rowHeight}px)`;
      row.setAttribute('role', 'row');
      row.setAttribute('aria-rowindex', place + 2);
      row.classList.toggle('isGone', entries.is(entry, view.states.gone));
      row.addEventListener('click', (event) => {
        if (event.target.closest('a')) return;
        this.activate(this.found.indexOf(entry));
      });
      return row;
    }

    cells(entry) {
      const { entries } = this;
      const isFault = entries.kind[entry] > 0;
      const line = (...children) => view.html('div', {}, ...children);
      const quiet = (textContent) => view.html('div', { className: 'quiet', textContent });
      const contents = {
        picture: [this.pictureOf(entry)],
        time: [line(...view.whenElements(entries, entry)), quiet(entries.names[entry])],
        place: [line(entries.stations.words[entries.station[entry]]), quiet(entries.recorders.words[entries.recorder[entry]])],
        circuit: [line(entries.circuitOf(entry)), view.html('div', { className: 'quiet stationLine', textContent: entries.stations.words[entries.station[entry]] })],
        fault: [line(view.faultElement(entries, entry)), line(...view.badges(entries, entry))],
        duration: isFault ? [line(view.lastingText(entries, entry))] : [],
        greatest: isFault ? [line(view.quantity(entries.current[entry], 'ampere'))] : [],
        distance: [line(view.distanceText(entries, entry))],
        page: [this.linkOf(entry)],
      };
      return columns.map((name) => {
        const cell = view.html('div', { className: `cell ${name}` }, ...contents[name]);
        cell.setAttribute('role', 'gridcell');
        if (['place', 'circuit', 'time'].includes(name)) cell.title = contents[name].map((one) => one.textContent).join('\n');
        return cell;
      });
    }

    linkOf(entry) {
      const href = view.pageAddress(this.entries, entry);
      if (!href) return view.html('span');
      return view.html('a', { href, target: '_blank', rel: 'noopener', textContent: view.text('open'), title: view.text('openHint'), tabIndex: -1 });
    }

    pictureOf(entry) {
      const picture = this.pictures.of(entry);
      if (picture) return view.faultDrawing(picture, pictureSize);
      const place = view.html('div', { className: 'noPicture' });
      if (picture === undefined) this.pictures.load(entry, () => place.replaceWith(view.faultDrawing(this.pictures.of(entry), pictureSize)));
      return place;
    }

    // Chooses the row at a place and brings it into view.
    activate(place) {
      if (this.found.length === 0) return;
      this.active = Math.min(Math.max(place, 0), this.found.length - 1);
      const { top } = this.body.getBoundingClientRect();
      const [upper, lower] = [top + this.active * this.rowHeight, top + (this.active + 1) * this.rowHeight];
      const above = this.head.offsetHeight;
      if (upper < above) globalThis.scrollBy(0, upper - above);
      else if (lower > globalThis.innerHeight) globalThis.scrollBy(0, lower - globalThis.innerHeight);
      this.draw();
      this.chosen(this.found[this.active]);
    }

    markActive() {
      for (const [place, row] of this.rows) row.setAttribute('aria-selected', place === this.active);
      if (this.rows.has(this.active)) this.grid.setAttribute('aria-activedescendant', `row-${this.active}`);
      else this.grid.removeAttribute('aria-activedescendant');
    }

    press(event) {
      if (event.target !== this.grid || event.altKey || event.ctrlKey || event.metaKey) return;
      const page = Math.max(Math.floor(globalThis.innerHeight / this.rowHeight) - 2, 1);
      const steps = { ArrowDown: this.active + 1, ArrowUp: this.active - 1, PageDown: this.active + page, PageUp: this.active - page, Home: 0, End: this.found.length - 1 };
      if (event.key in steps) {
        event.preventDefault();
        this.activate(steps[event.key]);
      } else if (event.key === 'Enter' && this.active >= 0) {
        const link = this.rows.has(this.active) && this.rows.get(this.active).querySelector('a');
        if (link) link.click();
      } else if (event.key === 'Escape') {
        this.active = -1;
        this.markActive();
        this.chosen(-1);
      }
    }

    // On paper rows stand one after another, as many as anybody would print; returns how many.
    toPaper() {
      this.isPrinted = true;
      this.forget();
      this.draw();
      this.body.style.height = 'auto';
      return Math.min(this.found.length, mostPrinted);
    }

    fromPaper() {
      this.isPrinted = false;
      this.show(this.found);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
