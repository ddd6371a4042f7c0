// The span of time that is shown, common to all strips; whoever draws listens to it.
(function (view) {
  'use strict';

  const leastSamples = 8; // the narrowest span

  view.Frame = class {
    constructor(axis) {
      this.axis = axis;
      const last = Math.max(axis.count - 1, 0);
      const start = axis.timeOf(0);
      this.ends = [start, Math.max(axis.timeOf(last), start + 1e-3)]; // of the record itself
      this.step = (this.ends[1] - start) / Math.max(last, 1);
      this.reach(...this.ends, Infinity);
      this.from = this.start;
      this.to = this.end;
      this.listeners = [];
    }

    // Lets the span go beyond the record, to what is shown over it from .. to with its own step between samples.
    reach(from, to, step) {
      this.start = Math.min(this.ends[0], from);
      this.end = Math.max(this.ends[1], to);
      this.narrowest = Math.min(this.ends[1] - this.ends[0], leastSamples * Math.min(this.step, step));
    }

    listen(listener) { this.listeners.push(listener); }

    get span() { return this.to - this.from; }

    // Shows from .. to as far as the record goes; a span that is moved against its ends keeps its length.
    show(from, to) {
      const span = Math.min(Math.max(to - from, this.narrowest), this.end - this.start);
      const middle = (from + to) / 2;
      this.from = Math.min(Math.max(middle - span / 2, this.start), this.end - span);
      this.to = this.from + span;
      for (const listener of this.listeners) listener();
    }

    showAll() { this.show(this.start, this.end); }

    // Changes the length of the span by a factor; the time stays where it is on the screen.
    zoom(factor, time) {
      const span = Math.min(Math.max(this.span * factor, this.narrowest), this.end - this.start);
      const from = time - ((time - this.from) / this.span) * span;
      this.show(from, from + span);
    }

    pan(milliseconds) { this.show(this.from + milliseconds, this.to + milliseconds); }
  };
})(globalThis.zuView = globalThis.zuView || {});
