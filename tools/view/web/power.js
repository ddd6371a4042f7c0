// RMS values, phasors and symmetrical components of the period before a cursor: full-cycle Fourier.
//
// An angle is that of the fundamental at the cursor, in degrees: a sine that rises through zero there has 0 (the same
// as one that does so at the start of the period).
(function (view) {
  'use strict';

  // A channel whose fundamental is a smaller part of its RMS is no sine: its angle would be that of its noise.
  const leastPart = 0.5;
  // A sequence that is a smaller part of its phases has no angle for the same reason.
  const leastSequence = 1e-3;

  const none = { module: NaN, angle: NaN };

  function polar([sine, cosine]) {
    const angle = (Math.atan2(cosine, sine) * 180) / Math.PI;
    return { module: Math.hypot(sine, cosine), angle: (angle + 360) % 360 };
  }

  const turned = ([sine, cosine], degrees) => {
    const [x, y] = [Math.cos((degrees * Math.PI) / 180), Math.sin((degrees * Math.PI) / 180)];
    return [sine * x - cosine * y, sine * y + cosine * x];
  };

  const sum = (...vectors) => [0, 1].map((part) => vectors.reduce((total, vector) => total + vector[part], 0));

  // What a channel comes to before a cursor, in its shown unit: {rms, module and angle of the fundamental, direct}. The
  // angle is NaN where the channel is no sine, direct unless it is larger than the fundamental. Without values: reason.
  view.reading = function (periods, channel, sample) {
    const { rms, direct, sine, cosine, reason } = periods.measure(channel, sample);
    if (reason) return { rms: NaN, direct: NaN, reason, ...none };
    const { module, angle } = polar([sine, cosine]);
    const isSine = channel.isWave && module > 0 && module >= leastPart * rms;
    return { rms, module, angle: isSine ? angle : NaN, direct: Math.abs(direct) > module ? direct : NaN };
  };

  // Positive, negative and threefold zero sequence of the phases a, b, c.
  view.sequences = function (periods, phases, sample) {
    const measured = phases.map((channel) => periods.measure(channel, sample));
    if (measured.some(({ reason }) => reason)) return [none, none, none];
    const [a, b, c] = measured.map(({ sine, cosine }) => [sine, cosine]);
    const third = (vector) => vector.map((part) => part / 3);
    const least = leastSequence * Math.max(...[a, b, c].map((vector) => polar(vector).module));
    return [third(sum(a, turned(b, 120), turned(c, 240))), third(sum(a, turned(b, 240), turned(c, 120))), sum(a, b, c)]
      .map(polar).map(({ module, angle }) => ({ module, angle: module > least ? angle : NaN }));
  };
})(globalThis.zuView = globalThis.zuView || {});
