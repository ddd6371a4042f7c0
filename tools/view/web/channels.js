// The channels: their samples, decoded when they are first asked for, and the extremes of any span of them.
(function (view) {
  'use strict';

  const branch = 8; // samples or blocks under one block of the level above

  // Least and greatest of blocks of 8, 64, 512 ... samples: a span of any length costs a few look-ups, and no peak
  // is lost. Samples that are no numbers are passed over.
  view.Pyramid = class {
    constructor(samples) {
      this.samples = samples;
      this.levels = [];
      let least = samples;
      let greatest = samples;
      while (least.length > branch) {
        [least, greatest] = this.above(least, greatest);
        this.levels.push([least, greatest]);
      }
    }

    above(least, greatest) {
      const count = Math.ceil(least.length / branch);
      const Type = this.samples.constructor;
      const low = new Type(count);
      const high = new Type(count);
      for (let block = 0; block < count; block++) {
        const from = block * branch;
        const to = Math.min(from + branch, least.length);
        let lowest = least[from];
        let highest = greatest[from];
        for (let i = from + 1; i < to; i++) {
          if (!(lowest <= least[i])) lowest = Number.isNaN(least[i]) ? lowest : least[i];
          if (!(highest >= greatest[i])) highest = Number.isNaN(greatest[i]) ? highest : greatest[i];
        }
        low[block] = lowest;
        high[block] = highest;
      }
      return [low, high];
    }

    // [least, greatest] of the samples from .. to - 1; Infinity and -Infinity if none is a number.
    extremes(from, to) {
      const result = [Infinity, -Infinity];
      let level = -1; // the samples themselves
      while (from < to) {
        const [least, greatest] = level < 0 ? [this.samples, this.samples] : this.levels[level];
        const top = level + 1 >= this.levels.length;
        const nextFrom = Math.ceil(from / branch);
        const nextTo = Math.floor(to / branch);
        if (top || nextFrom >= nextTo) {
          this.scan(least, greatest, from, to, result);
          break;
        }
        this.scan(least, greatest, from, nextFrom * branch, result);
        this.scan(least, greatest, nextTo * branch, to, result);
        from = nextFrom;
        to = nextTo;
        level++;
      }
      return result;
    }

    scan(least, greatest, from, to, result) {
      for (let i = from; i < to; i++) {
        if (least[i] < result[0]) result[0] = least[i];
        if (greatest[i] > result[1]) result[1] = greatest[i];
      }
    }
  };

  view.AnalogChannel = class {
    // encoded: returns the samples in base64, as 16-bit codes or (json.wide) in single precision
    constructor(json, index, encoded) {
      Object.assign(this, json);
      this.index = index;
      this.encoded = encoded;
      this.inKilo = false;
      this.visible = true;
    }

    get codes() {
      if (!this.decoded) {
        this.decoded = view.decodeNumbers(this.encoded(), this.wide ? Float32Array : Int16Array);
        this.encoded = null;
      }
      return this.decoded;
    }

    get pyramid() {
      this.blocks = this.blocks || new view.Pyramid(this.codes);
      return this.blocks;
    }

    get shownUnit() { return this.inKilo ? this.kiloUnit : this.unit; }
    get shownFactor() { return this.factor / (this.inKilo ? 1000 : 1); }
    // From values in the shown unit to those in V, A, W ...
    get baseFactor() { return (this.base || 1) * (this.inKilo ? 1000 : 1); }
    get isBaseUnit() { return this.kiloUnit !== this.unit; }

    // In the unit in which the channel is shown, primary.
    valueOfCode(code) { return (this.a * code + this.b) * this.shownFactor; }
    value(sample) { return this.valueOfCode(this.codes[sample]); }
    // In V, A, W ..., primary.
    baseValue(sample) { return (this.a * this.codes[sample] + this.b) * (this.factor * (this.base || 1)); }

    // Least and greatest code; NaN where all are missing.
    get ends() { return [this.least, this.greatest].map((code) => (code === null ? NaN : code)); }

    // Least and greatest value of a span of samples, or of the whole record. Not finite where all samples are missing.
    range(from, to) {
      const codes = from === undefined ? this.ends : this.pyramid.extremes(from, to);
      const values = codes.map((code) => this.valueOfCode(code));
      return values[0] <= values[1] ? values : values.reverse();
    }

    // What of it the axis of a strip has to show.
    axisRange(from, to) { return this.range(from, to); }
  };

  // A channel whose values are computed in the page, one for each sample of the record, in its unit; until they are
  // given it has none. json: {name, circuit, unit}, and what else AnalogChannel has.
  view.ComputedChannel = class extends view.AnalogChannel {
    constructor(json, index, count) {
      super({ a: 1, b: 0, factor: 1, primary: 1, secondary: 1, wide: true, kiloUnit: json.unit, phase: '', quantity: '', role: '', isWave: false, ...json }, index, null);
      this.isComputed = true;
      this.setValues(new Float32Array(count).fill(NaN));
    }

    setValues(values) {
      this.decoded = values;
      this.blocks = null;
      const [least, greatest] = this.pyramid.extremes(0, values.length);
      this.least = least <= greatest ? least : null;
      this.greatest = least <= greatest ? greatest : null;
    }
  };

  view.StateChannel = class {
    constructor(json, index, count) {
      Object.assign(this, json);
      this.index = index;
      this.visible = true;
      this.changes = json.bits === undefined ? view.decodeNumbers(json.changes, Int32Array)
        : view.changesOfBits(view.decodeBase64(json.bits), count);
    }

    // Number of changes up to and with a sample.
    changesUntil(sample) {
      let low = 0;
      let high = this.changes.length;
      while (low < high) {
        const middle = (low + high) >> 1;
        if (this.changes[middle] <= sample) low = middle + 1;
        else high = middle;
      }
      return low;
    }

    state(sample) { return this.initial ^ (this.changesUntil(sample) & 1); }
  };

  view.changesOfBits = function (bytes, count) {
    const changes = [];
    const bit = (i) => (bytes[i >> 3] >> (i & 7)) & 1;
    for (let i = 1; i < count; i++) if (bit(i) !== bit(i - 1)) changes.push(i);
    return Int32Array.from(changes);
  };
})(globalThis.zuView = globalThis.zuView || {});
