// The span of time that is shown, common to all strips; whoever draws listens to it.
(function (view) {
  'use strict';

  const leastSamples = 8; // the narrowest span

  view.Frame = class {
    constructor(axis) {
      this.axis = axis;
      const last = Math.max(axis.count - 1, 0);
      this.start = axis.timeOf(0);
      this.end = Math.max(axis.timeOf(last), this.start + 1e-3);
      this.narrowest = Math.min(this.end - this.start, (leastSamples * (this.end - this.start)) / Math.max(last, 1));
      this.from = this.start;
      this.to = this.end;
      this.listeners = [];
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
