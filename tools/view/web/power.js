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
    return { module: Math.hypot(sine, cosine), angle: view.degrees([sine, cosine]) };
  }

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
    const vectors = measured.map(({ sine, cosine }) => [sine, cosine]);
    const least = leastSequence * Math.max(...vectors.map((vector) => polar(vector).module));
    const { positive, negative, zero } = view.quantities.components(vectors);
    return [positive, negative, zero.map((part) => 3 * part)]
      .map(polar).map(({ module, angle }) => ({ module, angle: module > least ? angle : NaN }));
  };
})(globalThis.zuView = globalThis.zuView || {});
