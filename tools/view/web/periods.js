// The period of the mains before a cursor, and what the samples in it come to.
//
// A rate r and a line frequency f give N = r / f samples per period, which is rarely a whole number.
// The window is the n samples before the cursor, n being N rounded. Sample k of it is at the angle
// 2π (k - n) / N, so that the cursor has 0. The sum of a constant and of the sines and cosines of the first harmonics that is
// nearest to the samples (least squares) gives the mean, as its constant, and the fundamental. Where N is whole these
// are the plain mean and the full-cycle Fourier transform; where it is not, they are still exact for whatever repeats with
// the period and has no higher harmonics than that sum.
(function (view) {
  'use strict';

  const fewest = 3;   // samples that determine a constant and a sine
  const highest = 20; // harmonic of the sum
  const mostKnown = 8; // weights that are kept

  // Columns of the sum at the samples of a period: 1, sin, cos, sin 2, cos 2 ...
  function columnsOf(count, perPeriod) {
    const harmonics = Math.min(highest, Math.floor((count - 1) / 2));
    const columns = [new Float64Array(count).fill(1)];
    for (let harmonic = 1; harmonic <= harmonics; harmonic++)
      for (const part of [Math.sin, Math.cos])
        columns.push(Float64Array.from({ length: count }, (_, k) => part((2 * Math.PI * harmonic * (k - count)) / perPeriod)));
    return columns;
  }

  const product = (one, other) => one.reduce((sum, value, k) => sum + value * other[k], 0);

  // The first three columns of the inverse of a matrix that is symmetric and positive (Gauss and Jordan).
  function inverseColumns(matrix) {
    const rows = matrix.map((row, i) => [...row, ...[0, 1, 2].map((j) => (i === j ? 1 : 0))]);
    rows.forEach((pivot, column) => {
      const scale = pivot[column];
      for (let k = column; k < pivot.length; k++) pivot[k] /= scale;
      for (const row of rows) {
        const factor = row[column];
        if (row !== pivot) for (let k = column; k < row.length; k++) row[k] -= factor * pivot[k];
      }
    });
    return [0, 1, 2].map((j) => rows.map((row) => row[rows.length + j]));
  }

  // What each sample weighs in the constant, the sine and the cosine of the sum.
  view.periodWeights = function (count, perPeriod) {
    const columns = columnsOf(count, perPeriod);
    const inverse = inverseColumns(columns.map((one) => columns.map((other) => product(one, other))));
    return inverse.map((part) => Float64Array.from({ length: count }, (_, k) => columns.reduce((sum, column, i) => sum + part[i] * column[k], 0)));
  };

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
      const count = Math.round(perPeriod);
      const from = sample - count;
      if (count < fewest) return { reason: 'whySlow' };
      if (from < start) return { reason: start > 0 ? 'whyRates' : 'whyBeginning', count };
      return { from, count, perPeriod };
    }

    stamped(sample) {
      const { axis } = this;
      const start = axis.timeOf(sample) - this.milliseconds;
      const from = axis.sampleAt(start);
      const count = sample - from;
      const step = count > 0 ? (axis.timeOf(sample) - axis.timeOf(from)) / count : 0;
      if (axis.timeOf(0) > start + step / 2 + axis.resolution) return { reason: 'whyBeginning', count };
      if (count < fewest) return { reason: 'whySlow' };
      const isWhole = Math.abs(axis.timeOf(from) - start) <= step / 2 + axis.resolution; // no gap where it starts
      if (!isWhole || !axis.isEven(from, sample, step)) return { reason: 'whyUneven' };
      return { from, count, perPeriod: this.milliseconds / step };
    }

    // The sample a period after another one (direction 1) or before it (-1), at least one sample away.
    moved(sample, direction) {
      const target = this.axis.sampleAt(this.axis.timeOf(sample) + direction * this.milliseconds);
      return target === sample ? sample + direction : target;
    }

    // Kept for the last few, as two cursors and many channels ask in turn.
    weightsOf({ count, perPeriod }) {
      const key = `${count}/${perPeriod}`;
      if (this.known.size >= mostKnown && !this.known.has(key)) this.known.clear();
      if (!this.known.has(key)) this.known.set(key, view.periodWeights(count, perPeriod));
      return this.known.get(key);
    }

    // {rms, direct, sine, cosine} of a channel over the period before a sample, in its shown unit, sine and cosine being
    // effective values; or {reason} why there are none.
    measure(channel, sample) {
      const period = this.before(sample);
      if (period.reason) return { reason: period.reason };
      const [mean, sine, cosine] = this.weightsOf(period);
      const sums = [0, 0, 0, 0];
      for (let k = 0; k < period.count; k++) {
        const value = channel.value(period.from + k);
        if (!Number.isFinite(value)) return { reason: 'whyMissing' };
        sums[0] += mean[k] * value * value;
        sums[1] += mean[k] * value;
        sums[2] += sine[k] * value;
        sums[3] += cosine[k] * value;
      }
      return { rms: Math.sqrt(Math.max(sums[0], 0)), direct: sums[1], sine: sums[2] / Math.SQRT2, cosine: sums[3] / Math.SQRT2 };
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
