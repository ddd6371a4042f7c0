// Frequency and its rate of change for each sample, from three voltages, as the program's own (analysis/frequency.h): how fast the
// positive sequence turns within a period, by a filter that is made again for the frequency found until nothing changes any more.
(function (view) {
  'use strict';

  const farthest = 0.2;       // from the nominal frequency, as a part of it
  const settled = 1e-6;       // Hz
  const mostRounds = 20;
  const mostScatter = 0.1;    // rad: of the angles about their line
  const bankStep = 0.01;      // Hz, from a filter to the next one
  const leastMagnitude = 0.1; // of the largest
  const mostBlockRounds = 6;
  const blockPeriods = 4;     // that share a filter
  const changePeriods = 2;    // between the means whose difference is the rate of change

  // Three waves as one complex one, whose part that turns forwards is the positive sequence (E. Clarke, 1943).
  class SpaceVector {
    constructor([a, b, c]) {
      this.re = a.map((value, i) => (value - (b[i] + c[i]) / 2) / 3);
      this.im = b.map((value, i) => ((value - c[i]) * Math.sqrt(3)) / 6);
      this.count = a.length;
    }

    // Phasors of samples from .. to - 1, which turn with the wave.
    track(filter, from, to) {
      const one = filter.track(this.re.subarray(from, to));
      const other = filter.track(this.im.subarray(from, to));
      for (let i = 0; i < one.re.length; i++) {
        one.re[i] -= other.im[i];
        one.im[i] += other.re[i];
      }
      return one;
    }
  }

  // By how much more than `step` a sample the phasors turn from `before` to `now`, rad within half a turn; NaN without one of them.
  function turnBetween({ re, im }, before, now, step) {
    const x = re[now] * re[before] + im[now] * im[before];
    const y = im[now] * re[before] - re[now] * im[before];
    const turn = Math.atan2(y, x) - step * (now - before);
    return turn - 2 * Math.PI * Math.round(turn / (2 * Math.PI));
  }

  // {slope, scatter} of the line through the angles of phasors against one that turns by `step` a sample: rad per sample, and rad as the
  // root of the mean square. Missing ones are passed over.
  function lineThroughAngles(phasors, step) {
    const total = phasors.re.length;
    let [count, x, y, xx, xy, yy] = [0, 0, 0, 0, 0, 0];
    let angle = 0;
    let before = -1;
    for (let i = 0; i < total; i++) {
      if (!(Math.hypot(phasors.re[i], phasors.im[i]) > 0)) continue;
      if (before >= 0) angle += turnBetween(phasors, before, i, step);
      before = i;
      const at = i - total / 2; // sums of small numbers are more exact
      count += 1;
      x += at;
      y += angle;
      xx += at * at;
      xy += at * angle;
      yy += angle * angle;
    }
    const spread = xx - (x * x) / count;
    const slope = (xy - (x * y) / count) / spread;
    const rest = yy - (y * y) / count - slope * slope * spread;
    return { slope, scatter: Math.sqrt(Math.max(0, rest) / count) };
  }

  const middleOf = (values) => {
    const known = values.filter((value) => !Number.isNaN(value)).sort();
    return known.length > 0 ? known[known.length >> 1] : NaN;
  };

  class Tracker {
    constructor(waves, rate, nominal) {
      this.rate = rate;
      this.nominal = nominal;
      this.vector = new SpaceVector(waves);
      this.filters = new Map();
      this.period = Math.round(rate / nominal);
    }

    // Finds the filter to start with, and the largest voltage.
    * prepare() {
      this.guess = this.nearest(yield* this.whole());
      const { re, im } = this.vector.track(this.filterFor(this.guess), 0, this.vector.count);
      this.largest = 0;
      for (let i = 0; i < re.length; i++) {
        const size = Math.hypot(re[i], im[i]);
        if (size > this.largest) this.largest = size; // what is missing is no larger
      }
      yield;
    }

    filterOf(hertz) {
      const fit = new view.WindowFit(this.rate / hertz);
      return new view.Filter(fit.weights(1), fit.step, fit.ends);
    }

    filterFor(hertz) {
      if (!this.filters.has(hertz)) this.filters.set(hertz, this.filterOf(hertz));
      return this.filters.get(hertz);
    }

    isNear(hertz) { return Math.abs(hertz - this.nominal) <= farthest * this.nominal; }

    // The frequency whose filter serves.
    nearest(hertz) {
      const known = Number.isNaN(hertz) ? this.nominal : hertz;
      const within = Math.min(Math.max(known, this.nominal * (1 - farthest)), this.nominal * (1 + farthest));
      return Math.round(within / bankStep) * bankStep;
    }

    stepOf(hertz) { return (2 * Math.PI * hertz) / this.rate; }

    // Of the whole stretch: the best straight line through all angles; NaN where they do not lie on one.
    * whole() {
      if (this.vector.count < (1.5 * this.rate) / this.nominal) return NaN;
      let hertz = this.nominal;
      for (let round = 0; round < mostRounds; round++) {
        yield;
        const { slope, scatter } = lineThroughAngles(this.vector.track(this.filterOf(hertz), 0, this.vector.count), this.stepOf(hertz));
        const change = (slope * this.rate) / (2 * Math.PI);
        if (!this.isNear(hertz + change)) return NaN;
        hertz += change;
        if (Math.abs(change) < settled) return scatter <= mostScatter ? hertz : NaN;
      }
      return NaN;
    }

    // Hz of samples from .. to - 1, which share a filter: that for their own frequency.
    block(from, to) {
      let hertz;
      for (let round = 0; round < mostBlockRounds; round++) {
        hertz = this.by(this.filterFor(this.guess), this.guess, from, to);
        const next = this.nearest(middleOf(hertz));
        if (Math.abs(next - this.guess) < bankStep / 2) break;
        this.guess = next;
      }
      return hertz;
    }

    // How far the phasor turns in a period.
    by(filter, own, from, to) {
      const { period, largest } = this;
      const back = Math.min(from, period + filter.window - 1);
      const phasors = this.vector.track(filter, from - back, to);
      const size = (i) => Math.hypot(phasors.re[i], phasors.im[i]);
      const step = this.stepOf(own);
      return Float64Array.from({ length: to - from }, (_, i) => {
        const now = i + back;
        if (now < period || !(largest > 0) || !(Math.min(size(now), size(now - period)) >= leastMagnitude * largest)) return NaN;
        return own + (turnBetween(phasors, now - period, now, step) * this.rate) / (2 * Math.PI * period);
      });
    }

    // Fills in the frequencies of all samples, a block at a time.
    * fill(result) {
      const block = blockPeriods * this.period;
      for (let from = 0; from < this.vector.count; from += block) {
        result.set(this.block(from, Math.min(from + block, this.vector.count)), from);
        yield;
      }
      for (let i = 0; i < result.length; i++) if (!this.isNear(result[i])) result[i] = NaN;
    }
  }

  // The difference of the means over the last `length` samples and those before them, Hz/s.
  function changeOf(hertz, rate, length) {
    const change = new Float64Array(hertz.length).fill(NaN);
    let newer = 0; // sums
    let older = 0;
    let begin = 0; // of the values without a gap
    for (let i = 0; i < hertz.length; i++) {
      if (Number.isNaN(hertz[i])) {
        begin = i + 1;
        newer = 0;
        older = 0;
        continue;
      }
      newer += hertz[i];
      if (i - begin >= length) {
        newer -= hertz[i - length];
        older += hertz[i - length];
      }
      if (i - begin >= 2 * length) older -= hertz[i - 2 * length];
      if (i + 1 - begin >= 2 * length) change[i] = (((newer - older) / length) * rate) / length;
    }
    return change;
  }

  // {hertz, change} for each sample of three waves of one rate, samples per second; NaN without the periods before it, below a tenth of the
  // largest voltage, and farther than 20 % from the nominal frequency. A generator that yields between its blocks.
  view.frequencyTrack = function* (waves, rate, nominal) {
    const hertz = new Float64Array(waves[0].length).fill(NaN);
    const tracker = new Tracker(waves, rate, nominal);
    yield* tracker.prepare();
    yield* tracker.fill(hertz);
    return { hertz, change: changeOf(hertz, rate, changePeriods * Math.round(rate / nominal)) };
  };
})(globalThis.zuView = globalThis.zuView || {});
