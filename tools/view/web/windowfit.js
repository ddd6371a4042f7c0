// The weights of filters that take one harmonic out of a window of samples, found as the program itself finds them
// (analysis/windowfit.h): they pass one harmonic and suppress the direct component and all others, with the least sum of squares.
//
// In a window of one period and more than 32 samples only the outer 8 weights at each end are fitted; those between are the
// plain Fourier kernel, whose sum can slide along a wave. The ends make up for a period that is not a whole number of samples.
(function (view) {
  'use strict';

  const mostHarmonics = 50;
  const fittedEnds = 8;
  const mostFittedWindow = 32; // samples
  // What a large weight at an end costs against a harmonic that leaks.
  const damping = 1e-4;

  // Samples of a window that has to hold a length of time, given in samples.
  view.windowLength = (samples) => Math.ceil(samples - 1e-6);

  // The highest harmonic below half the rate that leaves no more unknowns than samples. One nearer to half the rate than a
  // quarter of the fundamental cannot be told from its mirror image within a period.
  function harmonicsOf(window, perPeriod) {
    const below = Math.ceil(perPeriod / 2 - 0.25) - 1;
    return Math.max(1, Math.min(mostHarmonics, Math.floor((window - 1) / 2), below));
  }

  const product = (one, other) => one.reduce((sum, value, i) => sum + value * other[i], 0);

  // Vectors as sums of units at right angles to each other: vector i is the sum of shares[i][j] times units[j], j up to i. (Gram
  // and Schmidt, twice, as once leaves the units askew.)
  function orthogonal(vectors) {
    const units = [];
    const shares = [];
    for (const vector of vectors) {
      const rest = Float64Array.from(vector);
      const share = new Float64Array(units.length + 1);
      for (let round = 0; round < 2; round++)
        units.forEach((unit, j) => {
          const part = product(rest, unit);
          share[j] += part;
          for (let i = 0; i < rest.length; i++) rest[i] -= part * unit[i];
        });
      share[units.length] = Math.sqrt(product(rest, rest));
      units.push(rest.map((value) => value / share[share.length - 1]));
      shares.push(share);
    }
    return { units, shares };
  }

  // The shortest x whose products with the vectors are as wanted.
  function shortest({ units, shares }, wanted) {
    const x = new Float64Array(units[0].length);
    const parts = [];
    units.forEach((unit, i) => {
      const known = parts.reduce((sum, part, j) => sum + shares[i][j] * part, 0);
      parts.push((wanted[i] - known) / shares[i][i]);
      for (let k = 0; k < x.length; k++) x[k] += parts[i] * unit[k];
    });
    return x;
  }

  // The x for which the sum of x[i] times vector i is nearest to the wanted one.
  function nearest({ units, shares }, wanted) {
    const x = new Float64Array(units.length);
    for (let i = x.length - 1; i >= 0; i--) {
      let rest = product(units[i], wanted);
      for (let k = i + 1; k < x.length; k++) rest -= shares[k][i] * x[k];
      x[i] = rest / shares[i][i];
    }
    return x;
  }

  view.WindowFit = class {
    // perPeriod: samples of a period, at least 3; the window has so many periods, rounded up to whole samples.
    constructor(perPeriod, periods = 1) {
      this.step = (2 * Math.PI) / perPeriod; // of the fundamental, rad per sample
      this.window = view.windowLength(perPeriod * periods);
      this.harmonics = harmonicsOf(this.window, perPeriod);
      this.pairs = (this.window + 1) >> 1; // samples at equal distances from the centre; the middle one of an odd window is one too
      this.ends = periods === 1 && this.window > mostFittedWindow ? fittedEnds : 0;
      this.even = this.part(0, Math.cos);
      this.odd = this.part(1, Math.sin);
    }

    // Pair 0 is the outermost.
    time(pair) { return (this.window - 1) / 2 - pair; }

    // Samples of a pair, as a root: with it, the least sum of squares over the pairs is that over the samples.
    share(pair) { return 2 * pair + 1 === this.window ? 1 : Math.SQRT2; }

    // The conditions on one half of the symmetric (cosine) or antisymmetric (sine) part of the weights: one row for each
    // harmonic from `first` on, and what solves them.
    part(first, wave) {
      const orders = Array.from({ length: this.harmonics + 1 - first }, (_, i) => first + i);
      const rows = orders.map((order) =>
        Float64Array.from({ length: this.pairs }, (_, pair) => wave(order * this.step * this.time(pair)) * this.share(pair)));
      if (this.ends === 0) return { first, wave, rows, solved: orthogonal(rows) };
      const importance = orders.map((order) => 1 / Math.max(order, 1));
      const columns = Array.from({ length: this.ends }, (_, pair) => Float64Array.from(
        { length: rows.length + this.ends }, (_, i) => (i < rows.length ? importance[i] * rows[i][pair] : i - rows.length === pair ? damping : 0)));
      return { first, wave, rows, importance, solved: orthogonal(columns) };
    }

    // The weights of one sample of each pair.
    halfOf({ first, wave, rows, importance, solved }, order) {
      const half = new Float64Array(this.pairs);
      if (order < first) return half;
      const wanted = rows.map((_, i) => (first + i === order ? 1 : 0));
      if (this.ends === 0) return shortest(solved, wanted).map((value, pair) => value / this.share(pair));
      const amplitude = ((order === 0 ? 1 : 2) * this.step) / (2 * Math.PI);
      for (let pair = 0; pair < this.pairs; pair++) half[pair] = amplitude * wave(order * this.step * this.time(pair));
      const lacking = rows.map((row, i) => importance[i] * (wanted[i] - half.reduce((sum, value, pair) => sum + value * row[pair] * this.share(pair), 0)));
      nearest(solved, [...lacking, ...new Array(this.ends).fill(0)]).forEach((value, pair) => { half[pair] += value / this.share(pair); });
      return half;
    }

    // Weights {re, im} of a harmonic from 0 to `harmonics` for its phasor, an effective value with the angle of a cosine at the last
    // sample; of 0 for the direct component.
    weights(order) {
      const cosine = this.halfOf(this.even, order);
      const sine = this.halfOf(this.odd, order);
      const turn = (order * this.step * (this.window - 1)) / 2;
      const [x, y] = order === 0 ? [1, 0] : [Math.SQRT1_2 * Math.cos(turn), Math.SQRT1_2 * Math.sin(turn)];
      const weights = { re: new Float64Array(this.window), im: new Float64Array(this.window) };
      const put = (place, c, s) => {
        weights.re[place] = c * x - s * y;
        weights.im[place] = c * y + s * x;
      };
      for (let pair = 0; pair < this.pairs; pair++) {
        const odder = this.time(pair) === 0 ? 0 : sine[pair];
        put(pair, cosine[pair], odder);
        put(this.window - 1 - pair, cosine[pair], -odder);
      }
      return weights;
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
