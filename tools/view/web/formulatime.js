// The functions of formulas that look at more than one sample. Each takes the values, the record (see formula.js) and, some,
// a number; what needs a missing sample is missing.
(function (view) {
  'use strict';

  const spread = 1e-3; // by which steps in time may differ and still be called even

  // The last sample that is not after a time; -1 if there is none. `from` is a sample not after it, to start from.
  function lastUntil(times, time, from) {
    let sample = from;
    while (sample + 1 < times.length && times[sample + 1] <= time) sample++;
    return sample < 0 || times[sample] > time ? -1 : sample;
  }

  // Between samples by the cubic through the four around (Lagrange); at the ends and where steps differ by a straight line.
  function between(values, times, sample, part) {
    if (part === 0) return values[sample];
    const [a, b, c, d] = [values[sample - 1], values[sample], values[sample + 1], values[sample + 2]];
    const step = times[sample + 1] - times[sample];
    const isEven = Math.abs(times[sample + 2] - times[sample - 1] - 3 * step) <= spread * step; // not if one is not there
    if (!isEven || !Number.isFinite(a) || !Number.isFinite(d)) return b + (c - b) * part;
    return (-a * part * (part - 1) * (part - 2)) / 6 + (b * (part + 1) * (part - 1) * (part - 2)) / 2
      - (c * (part + 1) * part * (part - 2)) / 2 + (d * (part + 1) * part * (part - 1)) / 6;
  }

  // Each value as it was some seconds before.
  function delayed(values, { times }, seconds) {
    const least = 1e-9 * Math.abs(times[times.length - 1] - times[0]); // so that whole steps are just that
    let sample = -1;
    return Float64Array.from(values, (_, i) => {
      const time = times[i] - seconds;
      sample = lastUntil(times, time + least, sample);
      if (sample < 0 || (sample + 1 === times.length && time - times[sample] > least)) return NaN;
      const part = (time - times[sample]) / (times[sample + 1] - times[sample]);
      return between(values, times, sample, time - times[sample] <= least ? 0 : part);
    });
  }

  view.alongTime = {
    // Change per second: the slope between the samples before and after.
    d: (values, { times }) => Float64Array.from(values, (_, i) => {
      const [before, after] = [Math.max(i - 1, 0), Math.min(i + 1, values.length - 1)];
      return (values[after] - values[before]) / (times[after] - times[before]);
    }),

    // Area from the first sample, by trapezoids. After a missing sample it is not known.
    int(values, { times }) {
      let area = 0;
      return Float64Array.from(values, (value, i) => {
        area += i === 0 ? 0 * value : ((value + values[i - 1]) / 2) * (times[i] - times[i - 1]);
        return area;
      });
    },

    delay: (values, record, milliseconds) => delayed(values, record, milliseconds / 1000),

    // By degrees of the mains: what turns a sine forward by them.
    turn(values, record, degrees) {
      const back = ((360 - (degrees % 360)) % 360) / 360;
      return delayed(values, record, back * record.period);
    },
  };
})(globalThis.zuView = globalThis.zuView || {});
