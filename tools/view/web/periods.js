// The period of the mains before a cursor, and what the samples in it come to.
//
// A rate r and a line frequency f give N = r / f samples per period, which is rarely a whole number. The window is the n
// samples before the cursor, n being N rounded up. The filters of fourier.js take out of it the mean and the fundamental: where N
// is whole these are the plain mean and the full-cycle Fourier transform; where it is not, they are still exact for whatever
// repeats with the period. The angle is that at the cursor, one step after the last sample of the window.
(function (view) {
  'use strict';

  const fewest = 3;    // samples of a period that determine a constant and a sine
  const mostKnown = 64; // filters that are kept
  const finest = -20;   // of the steps in which samples per period are counted where only stamps are known, as a power of 2

  view.Periods = class {
    constructor(axis, frequency) {
      this.axis = axis;
      this.frequency = frequency;
      this.milliseconds = 1000 / frequency;
      this.known = new Map();
    }

    // {from, count, perPeriod}: the period before a sample; or {reason} why there is none.
    before(sample) {
      return this.axis.stamps ? this.stamped(sample) : this.rated(sample);
    }

    rated(sample) {
      const [start, , , hertz] = this.axis.pieceOf(sample);
      const perPeriod = hertz / this.frequency;
      if (perPeriod < fewest) return { reason: 'whySlow' };
      const count = view.windowLength(perPeriod);
      const from = sample - count;
      if (from < start) return { reason: start > 0 ? 'whyRates' : 'whyBeginning', perPeriod };
      return { from, count, perPeriod };
    }

    stamped(sample) {
      const { axis } = this;
      const start = axis.timeOf(sample) - this.milliseconds;
      const nearest = axis.sampleAt(start);
      const step = sample > nearest ? (axis.timeOf(sample) - axis.timeOf(nearest)) / (sample - nearest) : 0;
      const perPeriod = step > 0 ? this.perPeriodOf(step) : 0;
      if (axis.timeOf(0) > start + step / 2 + axis.resolution) return { reason: 'whyBeginning' };
      if (perPeriod < fewest) return { reason: 'whySlow' };
      const isWhole = Math.abs(axis.timeOf(nearest) - start) <= step / 2 + axis.resolution; // no gap where it starts
      const count = view.windowLength(perPeriod);
      const from = sample - count;
      if (from < 0) return { reason: 'whyBeginning' };
      if (!isWhole || !axis.isEven(from, sample, step)) return { reason: 'whyUneven' };
      return { from, count, perPeriod };
    }

    // Stamps are rounded, so neighbouring windows differ a little in their steps: samples per period are rounded to as much as the
    // resolution of the stamps leaves unknown, so that few filters are needed and a whole number stays one.
    perPeriodOf(step) {
      const unknown = this.axis.resolution / step;
      const unit = 2 ** Math.max(finest, unknown > 0 ? Math.ceil(Math.log2(unknown)) : finest);
      return Math.round(this.milliseconds / step / unit) * unit;
    }

    // The sample a period after another one (direction 1) or before it (-1), at least one sample away.
    moved(sample, direction) {
      const target = this.axis.sampleAt(this.axis.timeOf(sample) + direction * this.milliseconds);
      return target === sample ? sample + direction : target;
    }

    // Kept for the last ones, as cursors and channels ask in turn.
    filtersOf(perPeriod) {
      if (this.known.size >= mostKnown && !this.known.has(perPeriod)) this.known.clear();
      if (!this.known.has(perPeriod)) this.known.set(perPeriod, new view.PeriodFilters(perPeriod));
      return this.known.get(perPeriod);
    }

    // {values, filters}: those of the period before a sample, in the shown unit; or {reason} why there are none.
    windowOf(channel, sample) {
      const { from, count, perPeriod, reason } = this.before(sample);
      if (reason) return { reason };
      const values = Float64Array.from({ length: count }, (_, k) => channel.value(from + k));
      return values.every(Number.isFinite) ? { values, filters: this.filtersOf(perPeriod) } : { reason: 'whyMissing' };
    }

    // {rms, direct, sine, cosine} of a channel over the period before a sample, in its shown unit, sine and cosine being
    // effective values; or {reason} why there are none.
    measure(channel, sample) {
      const { values, filters, reason } = this.windowOf(channel, sample);
      if (reason) return { reason };
      const [sine, cosine] = view.atCursor(filters.fundamental.of(values), filters.fit.step);
      return { rms: filters.rms(values), direct: filters.mean.of(values)[0], sine, cosine };
    }
  };

  // A phasor with the angle of a cosine at the last sample of its window as that of a sine at the sample after it, `step` rad later.
  view.atCursor = function ([re, im], step) {
    const [x, y] = [Math.cos(step + Math.PI / 2), Math.sin(step + Math.PI / 2)];
    return [re * x - im * y, re * y + im * x];
  };
})(globalThis.zuView = globalThis.zuView || {});
