// RMS values, angles and symmetrical components at a sample, over the mains period before it.
//
// Two methods. `report` is that of the fault report: RMS in the time domain, the angle from the position of the
// largest sample, sequences from phases shifted by thirds of a period; at the trigger it gives the report's numbers.
// `fourier` takes the fundamental, exact in angle and blind to harmonics and to most of a direct component.
// Angles are in degrees: a sine that rises through zero at the beginning of the period has 0.
(function (view) {
  'use strict';

  const none = { module: NaN, angle: NaN };

  // The period before a sample; near the beginning of the record the first one.
  view.periodBefore = (sample, count) => (count >= sample ? 0 : sample - count);

  function angleOfPeak(position, count) {
    const angle = 450 - (position / count) * 360;
    return angle > 360 ? angle - 360 : angle;
  }

  // In single precision, as the report scales.
  const scaled = (channel, sample) =>
    Math.fround(Math.fround(channel.codes[sample] * Math.fround(channel.a)) + Math.fround(channel.b));

  function reportPhasor(channel, sample, count) {
    const from = view.periodBefore(sample, count);
    const codes = channel.codes;
    if (!(count > 0) || from + count > codes.length) return none;
    let squares = 0;
    let position = 0;
    for (let i = 0; i < count; i++) {
      squares += codes[from + i] * codes[from + i];
      if (codes[from + i] > codes[from + position]) position = i;
    }
    const rms = Math.sqrt(squares / count);
    return { module: (Math.fround(channel.a) * rms + Math.fround(channel.b)) * channel.shownFactor, angle: angleOfPeak(position, count) };
  }

  function shifts(count) {
    const third = Math.floor(count / 3);
    if (count % 3 === 0) return [third, 2 * third];
    return count % 3 === 1 ? [third, 2 * third + 1] : [third + 1, 2 * third + 1];
  }

  // Of a sum over one period: part(i) gives the sum at its i-th sample.
  function ofSum(count, part) {
    let squares = 0;
    let largest = 0;
    let position = 0;
    for (let i = 0; i < count; i++) {
      const value = part(i);
      squares += value * value;
      if (value > largest) {
        largest = value;
        position = i;
      }
    }
    return { module: Math.sqrt(squares / count), angle: angleOfPeak(position, count) };
  }

  function reportSequences(phases, sample, count) {
    const index = view.periodBefore(sample, count);
    const start = index > count ? index - count : 0;
    if (!(count > 0) || phases.some((channel) => start + 2 * count > channel.codes.length)) return [none, none, none];
    const [one, two] = shifts(count);
    const [a, b, c] = phases.map((channel) => (i) => scaled(channel, start + count + i));
    const sums = [
      ofSum(count, (i) => b(i - two) + a(i) + c(i - one)),
      ofSum(count, (i) => b(i - one) + a(i) + c(i - two)),
      ofSum(count, (i) => a(i) + b(i) + c(i)),
    ];
    const factor = phases[0].shownFactor;
    sums[0].module /= 3;
    sums[1].module /= 3;
    return sums.map((sum) => ({ module: sum.module * factor, angle: sum.angle }));
  }

  // Real and imaginary part of the fundamental, effective, against a sine from the beginning of the period.
  function fundamental(channel, sample, count) {
    const from = view.periodBefore(sample, count);
    if (!(count > 0) || from + count > channel.codes.length) return [NaN, NaN];
    let real = 0;
    let imaginary = 0;
    for (let i = 0; i < count; i++) {
      const value = channel.codes[from + i];
      const turn = (2 * Math.PI * i) / count;
      real += value * Math.sin(turn);
      imaginary += value * Math.cos(turn);
    }
    const factor = (Math.SQRT2 / count) * channel.a * channel.shownFactor;
    return [real * factor, imaginary * factor];
  }

  function polar([real, imaginary]) {
    const angle = (Math.atan2(imaginary, real) * 180) / Math.PI;
    return { module: Math.hypot(real, imaginary), angle: angle <= 0 ? angle + 360 : angle };
  }

  const turned = ([real, imaginary], degrees) => {
    const cosine = Math.cos((degrees * Math.PI) / 180);
    const sine = Math.sin((degrees * Math.PI) / 180);
    return [real * cosine - imaginary * sine, real * sine + imaginary * cosine];
  };

  const sum = (...vectors) => [0, 1].map((part) => vectors.reduce((total, vector) => total + vector[part], 0));

  function fourierSequences(phases, sample, count) {
    const [a, b, c] = phases.map((channel) => fundamental(channel, sample, count));
    const third = (vector) => vector.map((part) => part / 3);
    return [
      polar(third(sum(a, turned(b, 120), turned(c, 240)))),
      polar(third(sum(a, turned(b, 240), turned(c, 120)))),
      polar(sum(a, b, c)),
    ];
  }

  // {module, angle} of a channel in its shown unit; NaN where the record is shorter than the period.
  view.phasor = (method, channel, sample, count) =>
    method === 'fourier' ? polar(fundamental(channel, sample, count)) : reportPhasor(channel, sample, count);

  // Positive, negative and threefold zero sequence of the phases a, b, c.
  view.sequences = (method, phases, sample, count) =>
    method === 'fourier' ? fourierSequences(phases, sample, count) : reportSequences(phases, sample, count);
})(globalThis.zuView = globalThis.zuView || {});
