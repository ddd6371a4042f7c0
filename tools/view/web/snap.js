// The samples at which something happened: changes of the discrete channels that are shown, marks, the trigger. Cursors
// snap to them and go from one to the next.
(function (view) {
  'use strict';

  // Place of the first sample that is not below a sample, in a rising list.
  function placeFrom(samples, sample) {
    let low = 0;
    let high = samples.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (samples[middle] < sample) low = middle + 1;
      else high = middle;
    }
    return low;
  }

  view.EventSamples = class {
    // states: all discrete channels; others: samples of what else is an event
    constructor(axis, states, others) {
      this.axis = axis;
      this.states = states;
      this.others = others.filter((sample) => sample >= 0 && sample < axis.count);
      this.known = null;
    }

    // To be called when other channels are shown.
    forget() { this.known = null; }

    // Rising, each once. A list of flags, as there may be more changes than samples.
    get samples() {
      if (this.known) return this.known;
      const isEvent = new Uint8Array(this.axis.count);
      for (const sample of this.others) isEvent[sample] = 1;
      for (const { changes, visible } of this.states) if (visible) for (const sample of changes) isEvent[sample] = 1;
      const samples = [];
      isEvent.forEach((flag, sample) => { if (flag) samples.push(sample); });
      this.known = Int32Array.from(samples);
      return this.known;
    }

    // The event nearest to a time, if it is within so many milliseconds of it; otherwise null.
    nearest(time, within) {
      const { axis, samples } = this;
      const away = (sample) => Math.abs(axis.timeOf(sample) - time);
      const place = placeFrom(samples, axis.firstFrom(time));
      const [best] = [place - 1, place].filter((at) => at >= 0 && at < samples.length).map((at) => samples[at])
        .sort((a, b) => away(a) - away(b));
      return best !== undefined && away(best) <= within ? best : null;
    }

    // The event after a sample (direction 1) or before it (-1); null if there is none.
    beside(sample, direction) {
      const { samples } = this;
      const place = direction > 0 ? placeFrom(samples, sample + 1) : placeFrom(samples, sample) - 1;
      return place >= 0 && place < samples.length ? samples[place] : null;
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
