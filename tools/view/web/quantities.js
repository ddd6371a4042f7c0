// Quantities of three phases from their phasors, which are [re, im] in V or A, of the phases a, b, c; as the program's own (analysis/phasor.h,
// power.h, unbalance.h, impedance.h).
(function (view) {
  'use strict';

  const third = [-0.5, Math.sqrt(3) / 2]; // a turn by 120 degrees
  const twoThirds = [-0.5, -Math.sqrt(3) / 2];

  const plus = (...phasors) => [0, 1].map((part) => phasors.reduce((sum, phasor) => sum + phasor[part], 0));
  const minus = ([a, b], [x, y]) => [a - x, b - y];
  const times = ([a, b], [x, y]) => [a * x - b * y, a * y + b * x];
  const by = ([a, b], [x, y]) => {
    const square = x * x + y * y;
    return square > 0 ? [(a * x + b * y) / square, (b * x - a * y) / square] : [NaN, NaN];
  };
  const scaled = ([a, b], factor) => [a * factor, b * factor];

  // The angle of a phasor, from 0 to 360 degrees.
  view.degrees = ([re, im]) => ((Math.atan2(im, re) * 180) / Math.PI + 360) % 360;

  view.quantities = {
    loops: ['AG', 'BG', 'CG', 'AB', 'BC', 'CA'],

    // {zero, positive, negative} (C. L. Fortescue, 1918); the zero sequence once, not threefold.
    components: ([a, b, c]) => ({
      zero: scaled(plus(a, b, c), 1 / 3),
      positive: scaled(plus(a, times(third, b), times(twoThirds, c)), 1 / 3),
      negative: scaled(plus(a, times(twoThirds, b), times(third, c)), 1 / 3),
    }),

    // {negative, zero}: the sequences by the positive one (IEC 61000-4-30); NaN without it.
    unbalance({ zero, positive, negative }) {
      const size = Math.hypot(...positive);
      const part = (sequence) => (size > 0 ? Math.hypot(...sequence) / size : NaN);
      return { negative: part(negative), zero: part(zero) };
    },

    // {active, reactive, apparent, factor} of all phases together: W, var, VA (IEEE 1459-2010, of the fundamental; the vector apparent
    // power). Positive is into the circuit. The factor has the sign of the active power; NaN without power.
    power(voltages, currents) {
      const [active, reactive] = plus(...voltages.map((voltage, phase) => times(voltage, [currents[phase][0], -currents[phase][1]])));
      const apparent = Math.hypot(active, reactive);
      return { active, reactive, apparent, factor: apparent > 0 ? active / apparent : NaN };
    },

    // [re, im] in ohms for each of the loops: those to ground with the residual compensation k0, those between phases by
    // differences (G. Ziegler, "Numerical Distance Protection"). NaN for a loop without current.
    impedances(voltages, currents, k0) {
      const compensation = times(k0, plus(...currents));
      const between = (phasors, phase) => minus(phasors[phase], phasors[(phase + 1) % 3]);
      return [
        ...voltages.map((voltage, phase) => by(voltage, plus(currents[phase], compensation))),
        ...voltages.map((_, phase) => by(between(voltages, phase), between(currents, phase))),
      ];
    },
  };
})(globalThis.zuView = globalThis.zuView || {});
