// Filters over a window of samples, at one place and along a wave: phasors, RMS values, harmonics; as the program's own
// (analysis/phasor.h, rms.h, harmonics.h). A wave is an array of values, NaN where one is missing.
(function (view) {
  'use strict';

  const block = 256; // sums that slide start afresh with each block, so that no rounding error grows with the wave
  const fewSamples = 32; // of a window all of whose weights are fitted

  // Adds the products of one weight with the values from `first` on.
  function add(sums, weights, k, values, first) {
    const { re, im } = sums;
    const x = weights.re[k];
    const y = weights.im[k];
    for (let i = 0; i < block; i++) {
      const value = values[first + i];
      re[i] += x * value;
      im[i] += y * value;
    }
  }

  const newSums = (count) => ({ re: new Float64Array(count), im: new Float64Array(count) });

  // Puts NaN where the window that ends with a sample has a missing value.
  function removeMissing(wave, window, ...results) {
    let until = 0;
    for (let i = 0; i < wave.length; i++) {
      if (!Number.isFinite(wave[i])) until = i + window;
      if (i < until) for (const result of results) result[i] = NaN;
    }
  }

  // A sum of products of complex weights with the values of a window.
  view.Filter = class {
    // step: by how much the kernel between the ends turns from sample to sample, rad; ends: weights at each end that are not of that
    // kernel, 0 where none is.
    constructor(weights, step, ends) {
      this.weights = weights;
      this.window = weights.re.length;
      this.step = step;
      this.ends = ends;
    }

    // [re, im] of the values from `first` on.
    of(values, first = 0) {
      let re = 0;
      let im = 0;
      for (let k = 0; k < this.window; k++) {
        re += this.weights.re[k] * values[first + k];
        im += this.weights.im[k] * values[first + k];
      }
      return [re, im];
    }

    // {re, im} of each sample as the last of its window, as of() gives them; NaN without a whole window of values.
    track(wave) {
      const result = { re: new Float64Array(wave.length).fill(NaN), im: new Float64Array(wave.length).fill(NaN) };
      const values = new Float64Array(wave.length + block); // a missing value must not stay in a sum that slides
      for (let i = 0; i < wave.length; i++) values[i] = Number.isFinite(wave[i]) ? wave[i] : 0;
      for (let last = this.window - 1; last < wave.length; last += block) this.trackBlock(values, last, Math.min(block, wave.length - last), result);
      removeMissing(wave, this.window, result.re, result.im);
      return result;
    }

    trackBlock(values, last, count, result) {
      const { weights, window, ends } = this;
      const first = last + 1 - window;
      const sums = newSums(block);
      for (let k = 0; k < window; k++) if (ends === 0 || k < ends || k >= window - ends) add(sums, weights, k, values, first + k);
      if (ends > 0) this.addBetween(sums, values, first);
      result.re.set(sums.re.subarray(0, count), last);
      result.im.set(sums.im.subarray(0, count), last);
    }

    // The sum between the ends: from each sample to the next it turns, one value leaves it and one enters.
    addBetween(sums, values, first) {
      const { weights, window, ends } = this;
      const turnX = Math.cos(this.step);
      const turnY = Math.sin(this.step);
      const entering = window - ends - 1;
      const leavingX = weights.re[ends] * turnX - weights.im[ends] * turnY;
      const leavingY = weights.re[ends] * turnY + weights.im[ends] * turnX;
      let x = 0;
      let y = 0;
      for (let k = ends; k <= entering; k++) {
        x += weights.re[k] * values[first + k];
        y += weights.im[k] * values[first + k];
      }
      for (let i = 0; i < block; i++) {
        sums.re[i] += x;
        sums.im[i] += y;
        const enters = values[first + i + window - ends];
        const leaves = values[first + i + ends];
        const next = x * turnX - y * turnY + weights.re[entering] * enters - leavingX * leaves;
        y = x * turnY + y * turnX + weights.im[entering] * enters - leavingY * leaves;
        x = next;
      }
    }
  };

  // The filters of one number of samples a period, made when they are first needed.
  view.PeriodFilters = class {
    constructor(perPeriod) {
      this.perPeriod = perPeriod;
      this.fit = new view.WindowFit(perPeriod);
      this.window = this.fit.window;
      this.orders = [];
      this.mean = this.order(0);
      this.fundamental = this.order(1);
    }

    order(order) {
      if (!this.orders[order]) this.orders[order] = new view.Filter(this.fit.weights(order), order * this.fit.step, this.fit.ends);
      return this.orders[order];
    }

    get highest() { return this.fit.harmonics; }

    // {direct, harmonics: [[re, im] ...] from 1 on} of the values from `first` on, the angles at the last of them.
    spectrum(values, first = 0) {
      const harmonics = [];
      for (let order = 1; order <= this.highest; order++) harmonics.push(this.order(order).of(values, first));
      return { direct: this.mean.of(values, first)[0], harmonics };
    }

    // The root of the mean square. Squares have twice the frequencies of the wave, and what of them is above half the rate is
    // folded: with few samples the squares of all harmonics are added, with more those of direct component and fundamental to
    // the mean square of the rest.
    rms(values, first = 0) {
      if (this.window <= fewSamples) {
        const { direct, harmonics } = this.spectrum(values, first);
        return Math.sqrt(harmonics.reduce((sum, [re, im]) => sum + re * re + im * im, direct * direct));
      }
      const direct = this.mean.of(values, first)[0];
      const [re, im] = this.fundamental.of(values, first);
      const { unit } = this;
      let rest = 0;
      for (let k = 0; k < this.window; k++) {
        const value = values[first + k] - direct - re * unit.re[k] - im * unit.im[k];
        rest += this.mean.weights.re[k] * value * value;
      }
      return Math.sqrt(Math.max(direct * direct + re * re + im * im + rest, 0));
    }

    // Of which the real part of the product with the conjugate phasor is the fundamental.
    get unit() {
      if (!this.units) {
        this.units = newSums(this.window);
        for (let k = 0; k < this.window; k++) {
          const angle = this.fit.step * (this.window - 1 - k);
          this.units.re[k] = Math.SQRT2 * Math.cos(angle);
          this.units.im[k] = Math.SQRT2 * Math.sin(angle);
        }
      }
      return this.units;
    }

    rmsTrack(wave) {
      if (this.window > fewSamples) return this.rmsOfRest(wave);
      return this.perPeriod === this.window ? this.rmsOfWhole(wave) : this.rmsOfHarmonics(wave);
    }

    // With a whole number of samples a period the squares of all harmonics together are the mean square, without that of half the rate, which
    // only an even number has.
    rmsOfWhole(wave) {
      const { window } = this;
      const squares = this.mean.track(wave.map((value) => value * value)).re;
      if (window % 2 === 1) return squares.map(Math.sqrt);
      const weights = { re: Float64Array.from({ length: window }, (_, k) => (k % 2 === 0 ? 1 : -1) / window), im: new Float64Array(window) };
      const alternating = new view.Filter(weights, 0, 0).track(wave).re;
      return squares.map((square, i) => Math.sqrt(Math.max(square - alternating[i] * alternating[i], 0)));
    }

    rmsOfHarmonics(wave) {
      const result = this.mean.track(wave).re.map((direct) => direct * direct);
      for (let order = 1; order <= this.highest; order++) {
        const { re, im } = this.order(order).track(wave);
        for (let i = 0; i < wave.length; i++) result[i] += re[i] * re[i] + im[i] * im[i];
      }
      return result.map(Math.sqrt);
    }

    // The mean square of the rest, multiplied out into sums that slide: of the squares, of the values, and of the values times the
    // unit of the fundamental.
    rmsOfRest(wave) {
      const { unit, constants } = this;
      const weights = this.mean.weights.re;
      const direct = this.mean.track(wave).re;
      const squares = this.mean.track(wave.map((value) => value * value)).re;
      const sine = this.fundamental.track(wave);
      this.alongUnit = this.alongUnit || new view.Filter(
        { re: unit.re.map((value, k) => value * weights[k]), im: unit.im.map((value, k) => value * weights[k]) }, this.fit.step, this.fit.ends);
      const along = this.alongUnit.track(wave);
      return squares.map((square, i) => {
        const d = direct[i];
        const re = sine.re[i];
        const im = sine.im[i];
        const ofFundamental = re * re * constants.reRe + 2 * re * im * constants.reIm + im * im * constants.imIm;
        const crossed = re * along.re[i] + im * along.im[i] - d * (re * constants.re + im * constants.im);
        const rest = square - 2 * d * d + d * d * constants.one + ofFundamental - 2 * crossed;
        return Math.sqrt(Math.max(d * d + re * re + im * im + rest, 0));
      });
    }

    // Means of the unit of the fundamental and of its products.
    get constants() {
      if (!this.means) {
        const { unit } = this;
        const mean = (value) => this.mean.weights.re.reduce((sum, weight, k) => sum + weight * value(unit.re[k], unit.im[k]), 0);
        this.means = {
          one: mean(() => 1), re: mean((x) => x), im: mean((x, y) => y),
          reRe: mean((x) => x * x), reIm: mean((x, y) => x * y), imIm: mean((x, y) => y * y),
        };
      }
      return this.means;
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
