// The fault on its line: busbar with the recorder, the breaker, three conductors, and the fault where it is.
(function (view) {
  'use strict';

  const height = 222;
  const conductors = { A: 66, B: 84, C: 102 };
  const joint = 124;    // where the phases of the fault meet
  const scale = 178;    // of the kilometres
  const farGap = 46;    // pixels right of the far end
  const mostTicks = 8;

  const lacks = { lineData: 'answerLackLineData', voltages: 'answerLackVoltages', currents: 'answerLackCurrents', tooShort: 'answerLackTooShort', saturated: 'answerLackSaturated' };

  // A step of 1, 2 or 5 times a power of ten, so that a length has at most so many of them.
  function niceStep(length, most) {
    const power = 10 ** Math.floor(Math.log10(length / most));
    return [1, 2, 5, 10].map((factor) => factor * power).find((step) => step * most >= length * (1 - 1e-9));
  }

  // As much of a text as a width has room for.
  function fitting(text, width) {
    if (view.textWidth(text) <= width) return text;
    let most = text.length;
    while (most > 1 && view.textWidth(`${text.slice(0, most)}…`) > width) most--;
    return `${text.slice(0, most)}…`;
  }

  // The middle of a text that stands at x as far as the width allows.
  const inside = (x, text, width) => {
    const half = view.textWidth(text, 14) / 2;
    return Math.max(half, Math.min(width - half, x));
  };

  class Diagram {
    // facts: {fault, circuit, line, breaker}: of the summary, the name, the data of the line or null, seconds or null
    constructor(facts, width) {
      Object.assign(this, facts);
      this.width = width;
      this.isBehind = this.fault.direction === 'reverse';
      this.opening = this.breaker === null ? [] : [view.text('answerBreaker'), view.text('answerOpened', view.duration(this.breaker))];
      const beside = Math.max(40, ...this.opening.map((text) => view.textWidth(text, 12, 400)));
      this.bus = this.isBehind ? 236 : beside + 14;
      this.end = width - farGap;
      this.best = this.fault.best ? this.fault.distance[this.fault.best] : null;
      this.range = this.isBehind ? null : this.fault.range;
      this.isPlaced = !this.isBehind && Boolean(this.best || this.range);
      this.svg = view.svg('svg', { width, height, viewBox: `0 0 ${width} ${height}`, role: 'img', class: 'faultDiagram' });
    }

    xOf(percent) { return this.bus + (Math.max(0, Math.min(percent, 103)) / 100) * (this.end - this.bus); }

    get place() {
      if (this.isBehind) return this.bus - 120;
      if (!this.isPlaced) return (this.bus + this.end) / 2;
      return this.xOf(this.best ? this.best.percent : (this.range.from + this.range.to) / 2);
    }

    draw() {
      this.drawRange();
      this.drawLine();
      this.drawStation();
      this.drawFault();
      if (this.isPlaced) this.drawScale();
      else this.drawLack();
      return this.svg;
    }

    drawLine() {
      const phases = view.phasesOf(this.fault.kind);
      for (const [phase, y] of Object.entries(conductors)) {
        const isFaulted = phases.includes(phase);
        const style = `stroke: var(--phase${phase})`;
        const from = this.isBehind ? 24 : this.bus;
        view.svg('path', { d: `M${from} ${y}H${this.end}`, class: isFaulted ? 'conductor faulted' : 'conductor', style }, this.svg);
        view.svgText(this.svg, phase, this.end + 14, y + 4, { class: 'phase', style: `fill: var(--phase${phase})` });
      }
      view.svg('path', { d: `M${this.end} 54V114`, class: 'farBus' }, this.svg);
      const length = this.line ? ` · ${view.text('answerKilometres', view.decimal(this.line.length, this.line.length % 1 === 0 ? 0 : 1))}` : '';
      const room = this.end - this.bus - 140;
      view.svgText(this.svg, fitting(this.circuit, room - view.textWidth(length)) + length, this.end, 20, { class: 'name', 'text-anchor': 'end' });
    }

    // Busbar, breaker (hollow if it opened), current transformers and the recorder.
    drawStation() {
      const { bus, svg } = this;
      view.svg('path', { d: `M${bus} 50V118`, class: 'bus' }, svg);
      const lead = view.svg('g', { class: 'recorder' }, svg);
      view.svg('path', { d: `M${bus + 52} 28V${conductors.C}` }, lead);
      for (const y of Object.values(conductors)) {
        view.svg('rect', { x: bus + 18, y: y - 6, width: 12, height: 12, class: this.breaker === null ? 'pole' : 'pole opened' }, svg);
        view.svg('circle', { cx: bus + 52, cy: y, r: 4.5 }, lead);
      }
      const text = view.text('answerRecorder');
      const half = view.textWidth(text, 12) / 2 + 9;
      view.svg('rect', { x: bus + 52 - half, y: 6, width: 2 * half, height: 22, rx: 5 }, lead);
      view.svgText(lead, text, bus + 52, 21, { 'text-anchor': 'middle' });
      this.drawDirection(bus + 52 + half + 8);
      const [side, anchor] = this.isBehind ? [bus + 8, 'start'] : [bus - 10, 'end'];
      view.svgText(svg, view.text('answerBusbar'), bus, 134, { class: 'note', 'text-anchor': 'middle' });
      this.opening.forEach((words, line) => view.svgText(svg, words, side, (this.isBehind ? 150 : 82) + 15 * line, { class: 'note', 'text-anchor': anchor }));
    }

    drawDirection(x) {
      const { direction } = this.fault;
      if (direction === 'unknown') return;
      const path = direction === 'forward' ? `M${x} 17h16m-6 -5l6 5l-6 5` : `M${x + 16} 17h-16m6 -5l-6 5l6 5`;
      view.svg('path', { d: path, class: 'arrow' }, this.svg);
    }

    get hasResistance() { return !this.isBehind && Boolean(this.best) && this.best.resistance !== null; }

    drawRange() {
      if (!this.range) return;
      const [from, to] = [this.xOf(this.range.from), this.xOf(this.range.to)];
      view.svg('rect', { x: from, y: 52, width: Math.max(to - from, 2), height: scale - 52, class: 'range' }, this.svg);
    }

    // A dot on each phase, joined below the conductors by the resistance, and from there to earth.
    drawFault() {
      const { place, svg } = this;
      const phases = view.phasesOf(this.fault.kind);
      const isArc = phases.length === 2 && !view.hasEarth(this.fault.kind);
      const group = view.svg('g', { class: 'fault' }, svg);
      const places = phases.map((phase, index) => place + (index - (phases.length - 1) / 2) * (isArc ? 30 : 13));
      phases.forEach((phase, index) => {
        view.svg('path', { d: `M${places[index]} ${conductors[phase]}V${joint}` }, group);
        view.svg('circle', { cx: places[index], cy: conductors[phase], r: 4.2 }, group);
      });
      view.svg('path', { d: `M${places[0]} ${joint}H${places[places.length - 1]}` }, group);
      if (view.hasEarth(this.fault.kind)) this.drawEarth(group);
      if (isArc && this.hasResistance) view.svg('rect', { x: place - 9, y: joint - 4.5, width: 18, height: 9, class: 'resistor' }, group);
      view.svg('path', { d: `M${place + 3} 32l-9 13h6l-3 12l9 -14h-6z`, class: 'bolt' }, group);
      this.drawResistance(group, places[places.length - 1] + 12);
    }

    drawEarth(group) {
      const x = this.place;
      view.svg('path', { d: `M${x} ${joint}V152m-9 0h18m-15 4h12m-9 4h6` }, group);
      if (this.hasResistance) view.svg('rect', { x: x - 4.5, y: joint + 4, width: 9, height: 19, class: 'resistor' }, group);
    }

    drawResistance(group, x) {
      if (!this.hasResistance) return;
      const text = view.text('answerOhms', view.decimal(this.best.resistance, 1));
      const isRight = x + view.textWidth(text, 12) < this.end;
      const side = isRight ? x : 2 * this.place - x;
      view.svgText(group, text, side, joint + 18, { 'text-anchor': isRight ? 'start' : 'end', 'data-value': 'resistance' });
    }

    drawScale() {
      const { svg, place } = this;
      const { length } = this.line;
      const step = niceStep(length, Math.min(mostTicks, Math.max(1, (this.end - this.bus) / 60)));
      view.svg('path', { d: `M${this.bus} ${scale}H${this.end}`, class: 'scale' }, svg);
      for (let km = 0; km <= length * (1 + 1e-9); km += step) {
        const x = this.xOf((km / length) * 100);
        view.svg('path', { d: `M${x} ${scale}v5`, class: 'scale' }, svg);
        view.svgText(svg, view.decimal(km, step < 1 ? 1 : 0), x, scale + 17, { class: 'note', 'text-anchor': 'middle' });
      }
      view.svgText(svg, view.text('answerHeadKm'), this.end + 14, scale + 4, { class: 'note' });
      view.svg('path', { d: `M${place} ${scale}l-5 -8h10z`, class: 'pointer' }, svg);
      const text = this.distanceText();
      view.svgText(svg, text, inside(place, text, this.width), height - 6, { class: 'distance', 'text-anchor': 'middle', 'data-value': 'distance' });
    }

    distanceText() {
      const parts = [];
      if (this.best) parts.push(view.text('answerKilometres', view.decimal(this.best.km, 1)), `${view.decimal(this.best.percent, 1)} %`);
      const range = this.range ? view.text('answerNoteRange', view.decimal(this.range.from, 1), view.decimal(this.range.to, 1)) : '';
      if (!this.best) return range;
      return parts.join(' · ') + (range ? ` (${range})` : '');
    }

    // Where the fault is not known: what is missing, and of a fault behind the recorder that it is there.
    drawLack() {
      const text = this.isBehind ? view.text('answerBehind') : view.text('answerSomewhere');
      const x = inside(this.place, text, this.width);
      view.svgText(this.svg, text, x, scale + 4, { class: 'distance', 'text-anchor': 'middle' });
      if (this.isBehind || !this.fault.lack) return;
      const lack = view.text(lacks[this.fault.lack]);
      view.svgText(this.svg, lack, inside(this.place, lack, this.width), scale + 24, { class: 'note', 'text-anchor': 'middle', 'data-value': 'lack' });
    }
  }

  // A drawing as wide as that, in pixels.
  view.faultDiagram = (facts, width) => new Diagram(facts, width).draw();

  view.niceStep = niceStep;
})(globalThis.zuView = globalThis.zuView || {});
