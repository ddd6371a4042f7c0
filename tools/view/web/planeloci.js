// The impedances of a circuit's loops along the record, as the plane shows them.
(function (view) {
  'use strict';

  const leastCurrent = 0.005; // of the circuit's largest; below it an impedance is that of noise
  const quantile = 0.02;      // of the points that are passed over at each end when the plane is fitted to them
  const mostFitted = 20000;

  // The phases of each loop, and its colour.
  view.planeLoops = {
    AG: { phases: [0], color: '--phaseA' }, BG: { phases: [1], color: '--phaseB' }, CG: { phases: [2], color: '--phaseC' },
    AB: { phases: [0, 1], color: '--other2' }, BC: { phases: [1, 2], color: '--other4' }, CA: { phases: [2, 0], color: '--other3' },
  };

  const largest = (values) => values.reduce((most, value) => (value > most ? value : most), 0);

  view.PlaneLoci = class {
    // circuit: place in data.answer.circuits
    constructor(page, circuit) {
      this.page = page;
      this.place = circuit;
      this.circuit = view.derived.circuit(page.data.answer.circuits[circuit], page.analog);
      this.series = null;
      this.currents = null;
      this.limit = 0;
    }

    get hasVoltages() { return view.derived.hasPhases(this.circuit.voltages); }
    get hasCurrents() { return view.derived.hasPhases(this.circuit.currents); }

    // Asks for the impedances and the currents; ready is called when both are there.
    request(ready) {
      const { derivations } = this.page;
      derivations.request('plane', { kind: 'impedance', circuit: this.place }, ({ series }) => {
        this.series = series;
        derivations.request('planeCurrents', { kind: 'rms', circuit: this.place }, (result) => {
          this.takeCurrents(result.series);
          ready();
        });
      });
    }

    // The same at once.
    compute() {
      const now = (kind) => this.page.derivations.now({ kind, circuit: this.place }).series;
      this.series = now('impedance');
      this.takeCurrents(now('rms'));
    }

    takeCurrents(series) {
      this.currents = ['Ia', 'Ib', 'Ic'].map((name) => series[name]);
      this.limit = leastCurrent * Math.max(...this.currents.map(largest));
      this.known = {};
    }

    get isReady() { return this.currents !== null; }

    // Whether the loop has the current for an impedance at a sample.
    isLive(loop, sample) { return this.live(loop)[sample] === 1; }

    // The same for all samples: 1 or 0.
    live(loop) {
      this.known[loop] = this.known[loop] || this.liveSamples(view.planeLoops[loop].phases.map((phase) => this.currents[phase]));
      return this.known[loop];
    }

    liveSamples(currents) {
      const live = new Uint8Array(this.page.axis.count);
      for (const current of currents) current.forEach((rms, sample) => { if (rms > this.limit) live[sample] = 1; });
      return live;
    }

    r(loop) { return this.series[`R.${loop}`]; }
    x(loop) { return this.series[`X.${loop}`]; }

    // [R, X] at a sample, null where there is none: computed for the cursor, without waiting for the tracks.
    at(sample) {
      const values = view.derived.values('impedance', this.page.periods, this.circuit, sample);
      return Object.fromEntries(Object.keys(view.planeLoops).map((loop) => {
        const point = [values[`R.${loop}`], values[`X.${loop}`]];
        return [loop, point.every(Number.isFinite) && (!this.isReady || this.isLive(loop, sample)) ? point : null];
      }));
    }

    // Samples first .. end - 1 of the shown span.
    span() {
      const { axis, frame } = this.page;
      return [axis.firstFrom(frame.from), Math.min(axis.firstFrom(frame.to) + 1, axis.count)];
    }

    // How many samples of the shown span have no impedance in a loop for lack of current.
    deadIn(loops) {
      const [first, end] = this.span();
      const [current] = this.currents;
      let dead = 0;
      for (const live of loops.map((loop) => this.live(loop)))
        for (let i = first; i < end; i++) if (!live[i] && current[i] >= 0) dead++;
      return dead;
    }

    // {loop, sample, distance} nearest to a pixel, at most so many pixels away; null if there is none.
    nearest(loops, plane, [x, y], within) {
      const [first, end] = this.span();
      const [placeR, placeX] = [plane.rAt(x), plane.reactanceAt(y)];
      let found = null;
      let least = (within * plane.ohms) ** 2;
      for (const loop of loops) {
        const [r, reactance, live] = [this.r(loop), this.x(loop), this.live(loop)];
        for (let sample = first; sample < end; sample++) {
          const away = (r[sample] - placeR) ** 2 + (reactance[sample] - placeX) ** 2;
          if (away <= least && live[sample]) {
            least = away;
            found = { loop, sample };
          }
        }
      }
      return found;
    }

    // What of the loci the plane is fitted to: corners around nearly all points from one period after each onset to the clearing;
    // without a fault, of the shown span.
    corners(loops) {
      const { axis, frame, periods, marks } = this.page;
      const faults = marks.faultSpans().map(({ from, to }) => [from + periods.milliseconds, to]).filter(([from, to]) => to > from);
      const spans = faults.length > 0 ? faults : [[frame.from, frame.to]];
      const points = spans.flatMap(([from, to]) => this.pointsOf(loops, axis.firstFrom(from), axis.firstFrom(to)));
      if (points.length === 0) return [];
      const ends = [0, 1].map((part) => {
        const values = points.map((point) => point[part]).sort((a, b) => a - b);
        const last = values.length - 1;
        return [values[Math.floor(quantile * last)], values[Math.ceil((1 - quantile) * last)]];
      });
      return [[ends[0][0], ends[1][0]], [ends[0][1], ends[1][1]]];
    }

    pointsOf(loops, first, end) {
      const points = [];
      const step = Math.ceil(((end - first) * loops.length) / mostFitted) || 1;
      for (const loop of loops) {
        const [r, x] = [this.r(loop), this.x(loop)];
        for (let i = first; i < end; i += step) if (Number.isFinite(r[i]) && Number.isFinite(x[i]) && this.isLive(loop, i)) points.push([r[i], x[i]]);
      }
      return points;
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
