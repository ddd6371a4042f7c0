// Bars of the entries over time, by day, month or year; a span of time is chosen by dragging over them.
(function (view) {
  'use strict';

  const height = 86;     // of the bars, pixels
  const foot = 18;       // of the dates below them
  const leastDays = 31;
  const mostDays = 400;  // with bars of days
  const mostMonths = 480;
  const leastLabel = 62; // pixels for a date

  const units = {
    day: { key: 'eachDay', of: (day) => day, first: (bar) => bar, text: view.dayText },
    month: { key: 'eachMonth', of: view.monthOfDay, first: view.dayOfMonth, text: view.monthText },
    year: { key: 'eachYear', of: (day) => Math.floor(view.monthOfDay(day) / 12), first: (bar) => view.dayOfMonth(bar * 12), text: (bar) => String(1970 + bar) },
  };

  function unitFor(days) {
    if (days <= mostDays) return units.day;
    return days <= mostMonths * 31 ? units.month : units.year;
  }

  view.Timeline = class {
    constructor(element, entries, filter, changed) {
      Object.assign(this, { element, entries, filter, changed });
      this.span = null; // [first, last] day that is shown; null: all
    }

    build() {
      this.title = view.html('h2', { textContent: view.text('timeline') });
      this.unitText = view.html('span', { className: 'quiet' });
      this.zoom = view.html('button', { type: 'button', id: 'zoomTime', textContent: view.text('zoomTime') });
      this.whole = view.html('button', { type: 'button', id: 'wholeTime', textContent: view.text('wholeTime') });
      this.zoom.addEventListener('click', () => { this.span = this.chosen(); this.draw(); });
      this.whole.addEventListener('click', () => { this.span = null; this.choose(null); });
      const legend = ['faults', 'others'].map((key) => view.html('span', { className: `key ${key}`, textContent: view.text(key) }));
      this.place = view.html('div', { className: 'bars' });
      this.element.replaceChildren(view.html('div', { className: 'timesHead' }, this.title, this.unitText, ...legend, view.html('span', { className: 'gap' }), this.zoom, this.whole), this.place);
      this.listen();
    }

    // The days that the filter has; null if it has none.
    chosen() {
      const [from, to] = [view.dayOfText(this.filter.from), view.dayOfText(this.filter.to)];
      if (from === null && to === null) return null;
      const [first, last] = this.reach;
      return [from === null ? first : from, to === null ? Math.max(last, from) : to];
    }

    choose(days) {
      this.filter.set('from', days ? view.dayText(days[0]) : '');
      this.filter.set('to', days ? view.dayText(days[1]) : '');
      this.changed();
    }

    // Counts the entries that pass all filters but the time, and draws them.
    show({ flags }) {
      this.flags = flags;
      this.draw();
    }

    // The first and the last day of all entries.
    findReach() {
      if (this.reachOf === this.entries.version) return;
      this.reachOf = this.entries.version;
      let [first, last] = [Infinity, -Infinity];
      const { day, time } = this.entries;
      this.entries.forEachStretch((begin, end) => {
        for (let entry = begin; entry < end; entry++) {
          if (Number.isNaN(time[entry])) continue;
          if (day[entry] < first) first = day[entry];
          if (day[entry] > last) last = day[entry];
        }
      });
      this.reach = first <= last ? [first, last] : null;
      this.padding = Math.max(Math.ceil((leastDays - (last - first + 1)) / 2), 0); // so that one day is no wall
    }

    count() {
      const { entries, flags } = this;
      const [first, last] = this.span || [this.reach[0] - this.padding, this.reach[1] + this.padding];
      this.unit = unitFor(last - first + 1);
      this.firstBar = this.unit.of(first);
      const bars = this.unit.of(last) - this.firstBar + 1;
      this.faults = new Uint32Array(bars);
      this.others = new Uint32Array(bars);
      const barOf = new Int32Array(last - first + 1);
      for (let day = first; day <= last; day++) barOf[day - first] = this.unit.of(day) - this.firstBar;
      entries.forEachStretch((begin, end) => {
        for (let entry = begin; entry < end; entry++) {
          if (flags[entry] === 0 || entries.is(entry, view.states.again) || Number.isNaN(entries.time[entry])) continue;
          const day = entries.day[entry];
          if (day < first || day > last) continue;
          (entries.kind[entry] > 0 ? this.faults : this.others)[barOf[day - first]]++;
        }
      });
    }

    draw() {
      this.findReach();
      const isEmpty = !this.reach || !this.flags;
      this.element.hidden = isEmpty;
      if (isEmpty) return;
      this.count();
      const width = Math.max(Math.floor(this.place.clientWidth), 100);
      const bars = this.faults.length;
      this.step = width / bars;
      this.most = this.faults.reduce((most, count, bar) => Math.max(most, count + this.others[bar]), 0);
      this.unitText.textContent = view.text(this.unit.key);
      const chosen = this.chosen();
      this.zoom.disabled = chosen === null;
      this.whole.disabled = this.span === null && chosen === null;
      const drawing = view.svg('svg', { width, height: height + foot, viewBox: `0 0 ${width} ${height + foot}`, role: 'img' });
      drawing.setAttribute('aria-label', this.describe());
      if (chosen) this.drawChosen(drawing, chosen);
      view.svg('path', { d: this.outline(this.faults, this.others), class: 'others' }, drawing);
      view.svg('path', { d: this.outline(null, this.faults), class: 'faults' }, drawing);
      view.svg('path', { d: `M0 ${height + 0.5}H${width}`, class: 'zero' }, drawing);
      this.drawDates(drawing, width);
      const most = view.svgText(drawing, view.count(this.most), width - 3, 11, { class: 'most', 'text-anchor': 'end' });
      most.setAttribute('aria-hidden', 'true');
      this.place.replaceChildren(drawing);
      this.drawing = drawing;
    }

    describe() {
      const [first, last] = this.span || this.reach;
      const sum = (counts) => counts.reduce((all, count) => all + count, 0);
      const faults = sum(this.faults);
      return view.text('timelineText', view.text(this.unit.key), view.count(faults + sum(this.others)), view.count(faults), view.dayText(first), view.dayText(last), view.count(this.most));
    }

    // Bars of counts, upon others if there are any, as one shape.
    outline(below, counts) {
      const gap = this.step > 3 ? 1 : 0;
      const scale = (height - 6) / Math.max(this.most, 1);
      let shape = '';
      counts.forEach((count, bar) => {
        if (count === 0) return;
        const base = below ? below[bar] : 0;
        const top = Math.max(count * scale, 1.5); // a single one is seen among thousands
        shape += `M${(bar * this.step).toFixed(1)} ${(height - base * scale).toFixed(1)}v${(-top).toFixed(1)}h${(this.step - gap).toFixed(1)}v${top.toFixed(1)}z`;
      });
      return shape;
    }

    xOfDay(day, isEnd) {
      const bar = this.unit.of(day) - this.firstBar + (isEnd ? 1 : 0);
      return Math.min(Math.max(bar, 0), this.faults.length) * this.step;
    }

    drawChosen(drawing, [first, last]) {
      const [from, to] = [this.xOfDay(first, false), this.xOfDay(last, true)];
      view.svg('rect', { x: from, y: 0, width: Math.max(to - from, 1), height, class: 'chosen' }, drawing);
    }

    drawDates(drawing, width) {
      let free = 0;
      for (let bar = 0; bar < this.faults.length; bar++) {
        const x = bar * this.step;
        if (x < free || x + leastLabel > width || !this.isRound(bar)) continue;
        view.svg('path', { d: `M${x + 0.5} ${height}v5`, class: 'zero' }, drawing);
        view.svgText(drawing, this.unit.text(this.firstBar + bar), x + 3, height + 14, { 'aria-hidden': 'true' });
        free = x + leastLabel + 24;
      }
    }

    // Whether the date of a bar may stand below it: years where there are many months, months where there are many days.
    isRound(bar) {
      const number = this.firstBar + bar;
      if (this.unit === units.month) return this.step > 30 || number % (this.step > 12 ? 3 : 12) === 0;
      if (this.unit === units.day) return this.step > 30 || view.dayText(number).endsWith('-01') || (this.step > 8 && /-(08|15|22)$/.test(view.dayText(number)));
      return true;
    }

    barAt(event) {
      const x = event.clientX - this.place.getBoundingClientRect().left;
      return Math.min(Math.max(Math.floor(x / this.step), 0), this.faults.length - 1);
    }

    daysOf(one, other) {
      const [low, high] = [Math.min(one, other) + this.firstBar, Math.max(one, other) + this.firstBar];
      return [this.unit.first(low), this.unit.first(high + 1) - 1];
    }

    listen() {
      const { place } = this;
      let start = null;
      place.title = view.text('timelineHint');
      place.addEventListener('pointerdown', (event) => {
        if (event.button !== 0) return;
        place.setPointerCapture(event.pointerId);
        start = this.barAt(event);
      });
      place.addEventListener('pointermove', (event) => {
        const bar = this.barAt(event);
        if (start === null) {
          place.title = view.text('barHint', this.unit.text(this.firstBar + bar), view.count(this.faults[bar]), view.count(this.others[bar]));
          return;
        }
        for (const old of this.drawing.querySelectorAll('.chosen')) old.remove();
        this.drawChosen(this.drawing, this.daysOf(start, bar));
      });
      place.addEventListener('pointerup', (event) => {
        if (start === null) return;
        const days = this.daysOf(start, this.barAt(event));
        start = null;
        this.choose(days);
      });
      place.addEventListener('pointercancel', () => { start = null; this.draw(); });
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
