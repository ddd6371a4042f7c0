// The sheet of statistics: of the faults that are found, and of the recorders.
(function (view) {
  'use strict';

  const fewLines = 15;
  const slowest = 15;
  const fewRecorders = 20;
  const dayLength = 86400000; // ms
  const silentTimes = 3;      // as long as usual
  const silentDays = 14;

  const groups = Object.keys(view.groupNames);

  view.Statistics = class {
    // goTo is called with an entry that is to be shown; date: the day to which silence is counted, null for that of the newest entry.
    constructor(element, entries, filter, { date, goTo, changed }) {
      Object.assign(this, { element, entries, filter, date, goTo, changed });
    }

    // flags: of selectEntries
    show({ flags }) {
      const { entries } = this;
      const faults = [];
      const counts = { unread: 0, gone: 0 };
      entries.forEachStretch((begin, end) => {
        for (let entry = begin; entry < end; entry++) {
          if (flags[entry] !== 2) continue;
          if (entries.is(entry, view.states.unread)) counts.unread++;
          if (entries.is(entry, view.states.gone)) counts.gone++;
          if (isCounted(entries, entry)) faults.push(entry);
        }
      });
      this.groupOf = entries.kinds.words.map(view.groupOfKind);
      const cards = [this.tiles(faults, counts)];
      if (faults.length === 0) cards.push(view.html('p', { className: 'card quiet', textContent: view.text('statNone') }));
      else cards.push(this.monthly(faults), this.slow(faults), this.byLine(faults));
      cards.push(this.recorders());
      this.element.replaceChildren(view.html('p', { className: 'quiet note', textContent: view.text('statNote') }), ...cards);
      this.drawMonths();
    }

    card(name, title, ...children) {
      return view.html('section', { className: `card ${name}` }, view.html('h2', { textContent: view.text(title) }), ...children);
    }

    tiles(faults, counts) {
      const { entries } = this;
      const lasting = this.durationsOf(faults);
      const greatest = faults.reduce((most, entry) => (entries.current[entry] > most ? entries.current[entry] : most), -1);
      const reclosed = faults.filter((entry) => entries.reclosed[entry] >= 0);
      const successful = reclosed.filter((entry) => entries.reclosed[entry] === 1).length;
      const lastingText = (milliseconds) => (milliseconds === undefined ? '—' : view.duration(milliseconds / 1000));
      const values = [
        ['statFaults', view.count(faults.length)], ['statMedian', lastingText(lasting[Math.ceil(lasting.length / 2) - 1])], ['statSlowest', lastingText(lasting[lasting.length - 1])],
        ['statCurrent', greatest < 0 ? '—' : view.quantity(greatest, 'ampere')],
        ['statReclosed', reclosed.length === 0 ? '—' : view.text('statReclosedOf', view.count(successful), view.count(reclosed.length))],
        ['statUnread', view.count(counts.unread)], ['statGone', view.count(counts.gone)],
      ];
      return view.html('dl', { className: 'tiles' }, ...values.map(([key, value]) => {
        const tile = view.html('div', {}, view.html('dt', { textContent: view.text(key) }), view.html('dd', { textContent: value }));
        tile.dataset.fact = key;
        return tile;
      }));
    }

    // Of those whose end is known, rising; numbers are sorted fast where there is no function that compares them.
    durationsOf(faults) {
      return Float32Array.from(faults, (entry) => this.entries.duration[entry]).filter((duration) => !Number.isNaN(duration)).sort();
    }

    monthly(faults) {
      const { entries } = this;
      const timed = faults.filter((entry) => !Number.isNaN(entries.time[entry]));
      const [first, last] = timed.reduce(([least, most], entry) => [Math.min(least, entries.month[entry]), Math.max(most, entries.month[entry])], [Infinity, -Infinity]);
      const length = last - first + 1;
      const counts = Object.fromEntries(groups.map((group) => [group, new Uint32Array(length)]));
      for (const entry of timed) counts[this.groupOf[entries.kind[entry]]][entries.month[entry] - first]++;
      this.months = { first, length, groups: counts };
      this.monthPlace = view.html('div', { className: 'drawing' });
      const legend = view.html('p', { className: 'legend' }, ...groups.map((group) => view.html('span', { className: `key ${group}`, textContent: view.text(view.groupNames[group]) })));
      return this.card('monthly', 'statMonthly', legend, this.monthPlace);
    }

    // The drawing is as wide as its place.
    drawMonths() {
      if (!this.monthPlace || this.element.hidden || !this.monthPlace.isConnected) return;
      this.monthPlace.replaceChildren(view.monthChart(this.months, Math.max(this.monthPlace.clientWidth, 200)));
    }

    // A table with heads; a column whose head is in numbers is right-aligned. rows: elements of cells.
    table(heads, rows, numbers) {
      const table = view.html('table', { className: 'plain' });
      const head = table.createTHead().insertRow();
      heads.forEach((text, index) => {
        const cell = view.html('th', { textContent: text, scope: 'col' });
        cell.classList.toggle('number', numbers.includes(index));
        head.append(cell);
      });
      const body = table.createTBody();
      for (const row of rows) {
        const line = body.insertRow();
        row.forEach((content, index) => {
          const cell = line.insertCell();
          cell.append(content);
          cell.classList.toggle('number', numbers.includes(index));
        });
      }
      return view.html('div', { className: 'scroll' }, table);
    }

    // A table of the first rows, and a button for the others.
    longTable(heads, rows, numbers, few) {
      const place = view.html('div', {}, this.table(heads, rows.slice(0, few), numbers));
      if (rows.length <= few) return place;
      const more = view.html('button', { type: 'button', className: 'more', textContent: view.text('more', view.count(rows.length)) });
      more.addEventListener('click', () => place.replaceChildren(this.table(heads, rows, numbers)));
      place.append(more);
      return place;
    }

    link(textContent, act) {
      const button = view.html('button', { type: 'button', className: 'link', textContent });
      button.addEventListener('click', act);
      return button;
    }

    byLine(faults) {
      const { entries } = this;
      const lines = new Map();
      for (const entry of faults) {
        const circuit = entries.faultCircuit[entry];
        if (!lines.has(circuit)) lines.set(circuit, { circuit, all: 0, ...Object.fromEntries(groups.map((group) => [group, 0])) });
        const line = lines.get(circuit);
        line.all++;
        line[this.groupOf[entries.kind[entry]]]++;
      }
      const nameOf = ({ circuit }) => entries.circuits.words[circuit];
      const sorted = [...lines.values()].sort((a, b) => b.all - a.all || nameOf(a).localeCompare(nameOf(b)));
      const most = sorted[0].all;
      const rows = sorted.map((line) => [
        nameOf(line) ? this.link(nameOf(line), () => this.chooseCircuit(nameOf(line))) : view.text('unnamed'),
        ...groups.map((group) => (line[group] > 0 ? view.count(line[group]) : '')), view.count(line.all),
        view.partBar(groups.map((group) => [group, line[group]]), most)]);
      const heads = [view.text('line'), ...groups.map((group) => view.text(view.groupNames[group])), view.text('all'), ''];
      return this.card('byLine', 'statByLine', this.longTable(heads, rows, [1, 2, 3, 4, 5], fewLines));
    }

    chooseCircuit(name) {
      this.filter.set('circuit', name);
      this.changed();
    }

    slow(faults) {
      const { entries } = this;
      const durations = this.durationsOf(faults);
      const least = durations[Math.max(durations.length - slowest, 0)];
      const first = faults.filter((entry) => entries.duration[entry] >= least).sort((a, b) => entries.duration[b] - entries.duration[a] || a - b).slice(0, slowest);
      const when = (entry) => (Number.isNaN(entries.time[entry]) ? view.text('noTime') : `${view.dayText(entries.day[entry])} ${view.clockText(entries.local[entry]).slice(0, 8)}`);
      const rows = first.map((entry) => [
        view.lastingText(entries, entry), this.link(when(entry), () => this.goTo(entry)), entries.stations.words[entries.station[entry]],
        entries.circuitOf(entry), view.faultElement(entries, entry), view.quantity(entries.current[entry], 'ampere')]);
      const heads = ['duration', 'time', 'station', 'circuit', 'fault', 'greatest'].map((key) => view.text(key));
      return this.card('slow', 'statSlow', this.table(heads, rows, [0, 5]));
    }

    // Of all entries: what a filter hides is not silence. Made once for all filters.
    recorders() {
      const made = `${this.entries.version} ${document.documentElement.lang}`;
      if (this.recordersMade !== made) this.recordersCard = this.makeRecorders();
      this.recordersMade = made;
      return this.recordersCard;
    }

    makeRecorders() {
      const all = recordersOf(this.entries);
      const day = this.date === null ? all.reduce((most, { last }) => Math.max(most, last), -Infinity) : this.date;
      for (const one of all) {
        one.silence = Math.max(day - one.last, 0);
        one.isSilent = one.silence > silentDays && !(one.silence <= silentTimes * one.usual);
      }
      all.sort((a, b) => b.isSilent - a.isSilent || b.silence - a.silence || a.station.localeCompare(b.station));
      const rows = all.map((one) => [
        one.station, one.recorder, view.dayText(one.last),
        one.isSilent ? view.html('span', {}, view.html('span', { className: 'badge silent', textContent: view.text('silent') }), ` ${view.count(one.silence)}`) : view.count(one.silence),
        Number.isNaN(one.usual) ? '—' : view.short(one.usual), view.count(one.count)]);
      const heads = ['station', 'recorder', 'lastEntry', 'silentFor', 'usualGap', 'entriesCount'].map((key) => view.text(key));
      const hint = view.html('p', { className: 'quiet', textContent: Number.isFinite(day) ? view.text('silentHint', view.dayText(day)) : '' });
      return this.card('recorders', 'statRecorders', hint, this.longTable(heads, rows, [3, 4, 5], fewRecorders));
    }
  };

  // As in the view "faults" of the catalogue, so that `archive stats` says the same.
  function isCounted(entries, entry) {
    return entries.kind[entry] > 0 && !entries.is(entry, view.states.again) && !entries.is(entry, view.states.gone);
  }

  // [{station, recorder, count, last: day, usual: half of the times between two entries are shorter, days}]
  function recordersOf(entries) {
    const found = new Map();
    entries.forEachStretch((begin, end) => {
      for (let entry = begin; entry < end; entry++) {
        if (Number.isNaN(entries.time[entry]) || entries.is(entry, view.states.again)) continue;
        const key = entries.station[entry] * 65536 + entries.recorder[entry];
        if (!found.has(key)) found.set(key, { station: entries.stations.words[entries.station[entry]], recorder: entries.recorders.words[entries.recorder[entry]], count: 0, last: entries.day[entry], times: [] });
        const one = found.get(key);
        one.count++;
        one.times.push(entries.time[entry]);
        if (entries.day[entry] > one.last) one.last = entries.day[entry];
      }
    });
    return [...found.values()].map(({ times, ...one }) => {
      const sorted = Float64Array.from(times).sort();
      const gaps = sorted.subarray(1).map((time, index) => (time - sorted[index]) / dayLength).sort();
      return { ...one, usual: gaps.length === 0 ? NaN : gaps[Math.ceil(gaps.length / 2) - 1] };
    });
  }
})(globalThis.zuView = globalThis.zuView || {});
