// The numbers of the fault report, as it calculates them: the RMS of the codes, scaled afterwards, so that an offset is
// added to it; the angle from the place of the largest sample, in steps of 360° by the number of samples; sequences from
// phases shifted by thirds of a period. At the trigger, and ten periods before it, they are those that it prints.
(function (view) {
  'use strict';

  const none = { module: NaN, angle: NaN };

  // {from, count}: the period before a sample, of the nearest whole number of samples; near the start of the record the first one. Or
  // {reason}.
  function periodOf(periods, sample) {
    const { perPeriod, reason } = periods.before(sample);
    const count = Math.round(perPeriod);
    if (!reason) return { from: sample - count, count };
    const isFirst = reason === 'whyBeginning' && count > 0 && sample < count && periods.axis.isOneRate(0, count);
    return isFirst ? { from: 0, count } : { reason };
  }

  function angleOfPeak(position, count) {
    const angle = 450 - (position / count) * 360;
    return angle > 360 ? angle - 360 : angle;
  }

  // In single precision, as the report scales.
  const scaled = (channel, sample) =>
    Math.fround(Math.fround(channel.codes[sample] * Math.fround(channel.a)) + Math.fround(channel.b));

  // Of a quantity over one period: part(i) returns its i-th sample. The first sample is the largest unless another one is larger
  // than `largest`, at the least.
  function ofParts(count, largest, part) {
    let squares = 0;
    let position = 0;
    for (let i = 0; i < count; i++) {
      const value = part(i);
      squares += value * value;
      if (value > largest) {
        largest = value;
        position = i;
      }
    }
    const rms = Math.sqrt(squares / count);
    return Number.isFinite(rms) ? { rms, angle: angleOfPeak(position, count) } : null;
  }

  function shifts(count) {
    const third = Math.floor(count / 3);
    if (count % 3 === 0) return [third, 2 * third];
    return count % 3 === 1 ? [third, 2 * third + 1] : [third + 1, 2 * third + 1];
  }

  view.reportPhasor = function (periods, channel, sample) {
    const { from, count, reason } = periodOf(periods, sample);
    if (reason) return { reason, ...none };
    const parts = ofParts(count, -Infinity, (i) => channel.codes[from + i]);
    if (!parts) return { reason: 'whyMissing', ...none };
    return { module: (Math.fround(channel.a) * parts.rms + Math.fround(channel.b)) * channel.shownFactor, angle: parts.angle };
  };

  view.reportSequences = function (periods, phases, sample) {
    const { from, count, reason } = periodOf(periods, sample);
    if (reason) return [none, none, none];
    const start = from > count ? from - count : 0; // two periods, for the shifts
    if (start + 2 * count > periods.axis.count || !periods.axis.isOneRate(start, start + 2 * count)) return [none, none, none];
    const [one, two] = shifts(count);
    const [a, b, c] = phases.map((channel) => (i) => scaled(channel, start + count + i));
    const sums = [
      (i) => b(i - two) + a(i) + c(i - one),
      (i) => b(i - one) + a(i) + c(i - two),
      (i) => a(i) + b(i) + c(i),
    ].map((part) => ofParts(count, 0, part));
    return sums.map((parts, index) => (parts ? { module: (parts.rms / (index < 2 ? 3 : 1)) * phases[0].shownFactor, angle: parts.angle } : none));
  };
})(globalThis.zuView = globalThis.zuView || {});
