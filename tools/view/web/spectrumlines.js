// The spectrum of a channel over one period before a cursor, or over several.
//
// Over n periods of f Hz the lines are f / n apart. The harmonics are those of the filters of so many periods, which suppress each
// other entirely. What is left of the samples without them has the lines between the harmonics, by plain sums over the window: a
// steady wave has none, whether the window is a whole number of samples or not.
(function (view) {
  'use strict';

  const mostKept = 8; // windows whose filters are kept

  // {harmonics: filters by order, step: of a line, rad} of a window.
  class LongWindow {
    constructor(perPeriod, periods) {
      this.fit = new view.WindowFit(perPeriod, periods);
      this.periods = periods;
      this.filters = Array.from({ length: this.fit.harmonics + 1 }, (_, order) => new view.Filter(this.fit.weights(order), order * this.fit.step, 0));
    }

    // {direct, harmonics: [[re, im] ...], between: [{order, rms}]} of the values of the window.
    spectrum(values) {
      const [direct, ...harmonics] = this.filters.map((filter) => filter.of(values));
      return { direct: direct[0], harmonics, between: this.between(this.rest(values, direct[0], harmonics)) };
    }

    // What the values have besides direct component and harmonics.
    rest(values, direct, harmonics) {
      const rest = values.map((value) => value - direct);
      harmonics.forEach(([re, im], index) => {
        const step = (index + 1) * this.fit.step;
        for (let k = 0; k < rest.length; k++) {
          const angle = step * (k - rest.length + 1);
          rest[k] -= Math.SQRT2 * (re * Math.cos(angle) - im * Math.sin(angle));
        }
      });
      return rest;
    }

    between(rest) {
      const lines = [];
      for (let line = 1; line < this.fit.harmonics * this.periods; line++) if (line % this.periods !== 0) lines.push({ order: line / this.periods, rms: this.line(rest, line) });
      return lines;
    }

    // The effective value of a line. Sine and cosine go on by turning.
    line(rest, line) {
      const step = (line / this.periods) * this.fit.step;
      const [turnX, turnY] = [Math.cos(step), Math.sin(step)];
      let [x, y, re, im] = [1, 0, 0, 0];
      for (const value of rest) {
        re += value * x;
        im += value * y;
        [x, y] = [x * turnX - y * turnY, x * turnY + y * turnX];
      }
      return (Math.SQRT2 / rest.length) * Math.hypot(re, im);
    }
  }

  view.Spectra = class {
    constructor(axis, frequency) {
      Object.assign(this, { axis, frequency });
      this.periods = new Map(); // by their number
      this.windows = new Map();
    }

    periodsOf(count) {
      if (!this.periods.has(count)) this.periods.set(count, new view.Periods(this.axis, this.frequency / count));
      return this.periods.get(count);
    }

    windowOf(perPeriod, count) {
      const key = `${perPeriod}/${count}`;
      if (this.windows.size >= mostKept && !this.windows.has(key)) this.windows.clear();
      if (!this.windows.has(key)) this.windows.set(key, new LongWindow(perPeriod, count));
      return this.windows.get(key);
    }

    // {direct, harmonics: [{order, rms, angle}], between: [{order, rms}], thd, highest} of a channel over a number of periods before a
    // sample, in V, A ...; or {reason}.
    of(channel, sample, count) {
      if (count === 1) return { between: [], ...view.derived.harmonics(this.periodsOf(1), channel, sample) };
      const { from, count: length, perPeriod, reason } = this.periodsOf(count).before(sample);
      if (reason) return { reason };
      const values = Float64Array.from({ length }, (_, k) => channel.value(from + k) * channel.baseFactor);
      if (!values.every(Number.isFinite)) return { reason: 'whyMissing' };
      const window = this.windowOf(perPeriod / count, count);
      const { direct, harmonics, between } = window.spectrum(values);
      const rows = harmonics.map((phasor, index) => ({ order: index + 1, rms: Math.hypot(...phasor), angle: view.degrees(view.atCursor(phasor, (index + 1) * window.fit.step)) }));
      const [fundamental, ...others] = rows.map(({ rms }) => rms);
      return { direct, harmonics: rows, between, thd: fundamental > 0 ? Math.hypot(...others) / fundamental : NaN, highest: rows.length };
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
