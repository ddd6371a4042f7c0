// Time over sample index. Times are milliseconds from the trigger, samples count from the first one in the page.
(function (view) {
  'use strict';

  // Bytes of a base64 text. One channel at a time, so that no second copy of the whole page is made.
  view.decodeBase64 = function (text) {
    const binary = atob(text);
    const bytes = new Uint8Array(binary.length);
    for (let i = 0; i < binary.length; i++) bytes[i] = binary.charCodeAt(i);
    return bytes;
  };

  // The browsers' typed arrays are little-endian wherever there are browsers.
  view.decodeNumbers = (text, Type) => new Type(view.decodeBase64(text).buffer);

  view.TimeAxis = class {
    // json: {pieces: [[from, at, step, hertz] ...]} or {stamps: base64, resolution}
    constructor(json, count) {
      this.count = count;
      this.pieces = json.pieces || null;
      this.stamps = json.stamps === undefined ? null : view.decodeNumbers(json.stamps, Float64Array);
      this.resolution = json.resolution || 0;
    }

    // The stretch of one rate that a sample is in.
    pieceOf(sample) {
      let piece = this.pieces[0];
      for (const next of this.pieces) if (next[0] <= sample) piece = next;
      return piece;
    }

    // Whether samples from .. to - 1 have one rate; samples with stamps have none to differ in.
    isOneRate(from, to) { return Boolean(this.stamps) || this.pieceOf(from) === this.pieceOf(to - 1); }

    // Whether the stamps of samples from .. to rise by steps of the same length, to their resolution or a hundredth of a step.
    isEven(from, to, step) {
      const tolerance = Math.max(1.001 * this.resolution, step / 100);
      for (let i = from; i <= to; i++)
        if (Math.abs(this.stamps[i] - this.stamps[from] - (i - from) * step) > tolerance) return false;
      return step > 0;
    }

    timeOf(sample) {
      if (this.stamps) return this.stamps[Math.max(0, Math.min(this.count - 1, sample))];
      const [from, at, step] = this.pieceOf(sample);
      return at + (sample - from) * step;
    }

    // First sample that is not before the time; count if there is none.
    firstFrom(time) {
      if (this.stamps) return this.search(time);
      let piece = this.pieces[0];
      let end = this.count;
      for (let i = 0; i < this.pieces.length; i++) {
        piece = this.pieces[i];
        end = i + 1 < this.pieces.length ? this.pieces[i + 1][0] : this.count;
        if (i + 1 === this.pieces.length || piece[1] + (end - 1 - piece[0]) * piece[2] >= time) break;
      }
      const steps = Math.ceil((time - piece[1]) / piece[2] - 1e-6);
      return Math.max(0, Math.min(this.count, Math.max(piece[0], Math.min(end, piece[0] + steps))));
    }

    search(time) {
      let low = 0;
      let high = this.count;
      while (low < high) {
        const middle = (low + high) >> 1;
        if (this.stamps[middle] < time) low = middle + 1;
        else high = middle;
      }
      return low;
    }

    // The sample nearest to a time.
    sampleAt(time) {
      const next = Math.min(this.firstFrom(time), this.count - 1);
      if (next <= 0) return 0;
      return time - this.timeOf(next - 1) <= this.timeOf(next) - time ? next - 1 : next;
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
