// What of the plane is on the screen: both axes have the same scale.
(function (view) {
  'use strict';

  const margin = { left: 54, right: 14, top: 14, bottom: 34 }; // for the labels, pixels
  const leastSpan = 1e-3; // ohms over the narrower side
  const mostSpan = 1e6;
  const air = 1.12;
  const perTick = 64; // pixels, at least

  view.PlaneView = class {
    constructor() {
      this.middle = [0, 0]; // R, X
      this.ohms = 1;        // of a pixel
      this.resize(600, 600);
    }

    resize(width, height) {
      this.area = {
        left: margin.left, top: margin.top,
        width: Math.max(width - margin.left - margin.right, 1), height: Math.max(height - margin.top - margin.bottom, 1),
      };
      this.centre = [this.area.left + this.area.width / 2, this.area.top + this.area.height / 2];
    }

    get side() { return Math.min(this.area.width, this.area.height); }

    xOf(r) { return this.centre[0] + (r - this.middle[0]) / this.ohms; }
    yOf(x) { return this.centre[1] - (x - this.middle[1]) / this.ohms; }
    rAt(x) { return this.middle[0] + (x - this.centre[0]) * this.ohms; }
    reactanceAt(y) { return this.middle[1] - (y - this.centre[1]) * this.ohms; }

    // The least and greatest R and X that are seen.
    get ends() {
      const { left, top, width, height } = this.area;
      return { r: [this.rAt(left), this.rAt(left + width)], x: [this.reactanceAt(top + height), this.reactanceAt(top)] };
    }

    // Shows the points [[r, x] ...] with some air around them.
    fit(points) {
      if (points.length === 0) return;
      const [low, high] = [Math.min, Math.max].map((end) => [0, 1].map((part) => points.reduce((found, point) => end(found, point[part]), points[0][part])));
      this.middle = [0, 1].map((part) => (low[part] + high[part]) / 2);
      const needed = Math.max((high[0] - low[0]) / this.area.width, (high[1] - low[1]) / this.area.height, 1e-9 * Math.hypot(...this.middle));
      this.setScale((needed || 1) * air);
    }

    setScale(ohms) { this.ohms = Math.min(Math.max(ohms, leastSpan / this.side), mostSpan / this.side); }

    // What is under the pixel stays there.
    zoom(factor, x, y) {
      const [r, reactance] = [this.rAt(x), this.reactanceAt(y)];
      this.setScale(this.ohms * factor);
      this.middle[0] += r - this.rAt(x);
      this.middle[1] += reactance - this.reactanceAt(y);
    }

    pan(x, y) {
      this.middle[0] -= x * this.ohms;
      this.middle[1] += y * this.ohms;
    }

    // Ohms between two lines of the grid: 1, 2 or 5 times a power of ten.
    get step() {
      const least = perTick * this.ohms;
      const power = 10 ** Math.floor(Math.log10(least));
      return [1, 2, 5, 10].find((times) => times * power >= least * (1 - 1e-9)) * power;
    }

    // Where the grid's lines are between two ends, in ohms.
    ticks([from, to]) {
      const { step } = this;
      const first = Math.ceil(from / step - 1e-9);
      return Array.from({ length: Math.max(Math.floor(to / step + 1e-9) - first + 1, 0) }, (_, i) => (first + i) * step);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
