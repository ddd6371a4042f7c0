// What protection and breaker did, as bars over the time from the onset.
(function (view) {
  'use strict';

  const rowHeight = 26;
  const barHeight = 13;
  const least = 60; // pixels of the longest bar

  const names = { fault: 'answerRowFault', start: 'answerRowStart', trip: 'answerRowTrip', breaker: 'answerRowBreaker', deadTime: 'answerRowDeadTime' };

  // Stretches of fault current from the reference on, in seconds; without an end where the record ends first.
  function currents(fault, from) {
    const stretches = [];
    for (const part of fault.parts) {
      if (part.afterReclosing || stretches.length === 0) stretches.push({ from: part.onset - from });
      stretches[stretches.length - 1].to = part.clearing === null ? null : part.clearing - from;
    }
    return stretches;
  }

  // [{key, bars: [{from, to, text}]}] in seconds from the reference; rows without a time are left out.
  view.operatingRows = function ({ fault, operating }) {
    const rows = [];
    const add = (key, from, to, note = '') => {
      if (to !== null) rows.push({ key, bars: [{ from, to: from + to, text: view.duration(to) + note }] });
    };
    if (fault)
      rows.push({ key: 'fault', bars: currents(fault, operating.from).map(({ from, to }) =>
        ({ from, to, text: to === null ? view.text('answerLasts') : view.duration(to - from) })) });
    if (operating.reference === 'onset') add('start', 0, operating.start);
    add('trip', 0, operating.trip);
    add('breaker', 0, operating.breaker);
    const outcome = operating.reclosed === null ? '' : `, ${view.text(operating.reclosed ? 'answerSuccess' : 'answerNoSuccess')}`;
    add('deadTime', operating.breaker === null ? 0 : operating.breaker, operating.deadTime, outcome);
    return rows;
  };

  class Chart {
    constructor(rows, width) {
      this.rows = rows;
      this.width = width;
      this.labels = Math.max(...rows.map(({ key }) => view.textWidth(view.text(names[key]), 13, 400))) + 12;
      this.numbers = Math.max(...rows.map(({ bars }) => view.textWidth(bars[bars.length - 1].text))) + 8;
      this.height = rows.length * rowHeight + 28;
      const ends = rows.flatMap(({ bars }) => bars.flatMap(({ from, to }) => [from, to === null ? from : to]));
      const last = Math.max(...ends, 0.001);
      this.start = Math.min(0, ...ends);
      this.last = rows.some(({ bars }) => bars.some(({ to }) => to === null)) ? last * 1.2 : last;
      this.svg = view.svg('svg', { width, height: this.height, viewBox: `0 0 ${width} ${this.height}`, role: 'img', class: 'operatingChart' });
    }

    xOf(seconds) {
      const room = Math.max(least, this.width - this.labels - this.numbers);
      return this.labels + ((seconds - this.start) / (this.last - this.start)) * room;
    }

    draw() {
      this.drawAxis();
      this.rows.forEach((row, index) => this.drawRow(row, 4 + index * rowHeight));
      return this.svg;
    }

    drawAxis() {
      const bottom = this.height - 22;
      const milliseconds = (this.last - this.start) * 1000;
      const step = view.niceStep(milliseconds, Math.max(2, Math.floor((this.width - this.labels) / 70)));
      for (let time = Math.ceil((this.start * 1000) / step) * step; this.xOf(time / 1000) < this.width - 30; time += step) {
        const x = this.xOf(time / 1000);
        view.svg('path', { d: `M${x} 2V${bottom}`, class: Math.abs(time) < step / 1000 ? 'zero' : 'grid' }, this.svg);
        view.svgText(this.svg, view.text('answerAxisMilliseconds', view.inLanguage(view.tick(time))), x, bottom + 16, { class: 'note', 'text-anchor': 'middle' });
      }
    }

    drawRow({ key, bars }, y) {
      const group = view.svg('g', { class: key, 'data-row': key }, this.svg);
      view.svgText(group, view.text(names[key]), this.labels - 10, y + 12, { 'text-anchor': 'end', class: 'label' });
      bars.forEach(({ from, to, text }, index) => {
        const left = this.xOf(Math.min(from, to === null ? from : to));
        const right = to === null ? this.width - this.numbers : this.xOf(Math.max(from, to));
        view.svg('rect', { x: left, y: y + 1, width: Math.max(right - left, 2), height: barHeight, rx: 2 }, group);
        const next = bars[index + 1];
        const isRoom = !next || this.xOf(next.from) - right > view.textWidth(text) + 8;
        if (isRoom) view.svgText(group, text, right + 6, y + 12, { class: 'number' });
        else view.svgText(group, text, right, y - 2, { class: 'number', 'text-anchor': 'end' });
      });
    }
  }

  view.operatingChart = (rows, width) => new Chart(rows, width).draw();
})(globalThis.zuView = globalThis.zuView || {});
