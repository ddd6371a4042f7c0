// What follows from the period before a sample: primary values in V, A, W, var, ohm; as docs/analysis.md defines them. The same functions
// make the values at a cursor and, for each sample in turn, the tracks of deriving.js.
//
// A circuit is what view.derived.circuit makes of an entry of data.answer.circuits. NaN stands where there is no value.
(function (view) {
  'use strict';

  const none = [NaN, NaN];
  const places = ['a', 'b', 'c', '0'];
  const hasPhases = (channels) => channels.slice(0, 3).every(Boolean);
  const named = (quantity, place) => (places[place] === '0' ? `3${quantity}0` : quantity + places[place]);
  const size = ([re, im]) => Math.hypot(re, im);

  const sizesOfSequences = (phasors) => {
    const { positive, negative, zero } = view.quantities.components(phasors);
    return [size(positive), size(negative), 3 * size(zero)];
  };

  // What is made of the phasors of voltages U and currents I: its names and, in their order, its values.
  const madeOfPhasors = {
    components: {
      names: ({ voltages, currents }) => [...(hasPhases(voltages) ? ['U1', 'U2', '3U0'] : []), ...(hasPhases(currents) ? ['I1', 'I2', '3I0'] : [])],
      values: (U, I) => [...(U ? sizesOfSequences(U) : []), ...(I ? sizesOfSequences(I) : [])],
    },
    power: {
      names: ({ voltages, currents }) => (hasPhases(voltages) && hasPhases(currents) ? ['P', 'Q'] : []),
      values(U, I) {
        const { active, reactive } = view.quantities.power(U, I);
        return [active, reactive];
      },
    },
    impedance: {
      names: ({ voltages, currents }) => (hasPhases(voltages) && hasPhases(currents) ? view.quantities.loops.flatMap((loop) => [`R.${loop}`, `X.${loop}`]) : []),
      values: (U, I, { k0 }) => view.quantities.impedances(U, I, k0).flat(),
    },
  };

  // [[name, channel] ...] of the phases and residuals that a circuit has.
  const channelsOf = ({ voltages, currents }) => [['U', voltages], ['I', currents]].flatMap(([quantity, channels]) =>
    channels.map((channel, place) => [named(quantity, place), channel]).filter(([, channel]) => channel));

  view.derived = {
    kinds: ['rms', 'components', 'power', 'frequency', 'impedance'],
    madeOfPhasors,
    hasPhases,
    channelsOf,

    // {name, voltages: [a, b, c, 3U0], currents: [a, b, c, 3I0], k0, line} with the channels in place of their places, null for none.
    circuit({ name, voltages, currents, line }, channels) {
      const found = (all) => all.map((place) => (place === null ? null : channels[place] || null));
      return { name, voltages: found(voltages), currents: found(currents), k0: line ? line.k0 : [0, 0], line };
    },

    // The names of the series of a kind, in their order; none where the circuit lacks the channels for it.
    names(kind, circuit) {
      if (kind === 'rms') return channelsOf(circuit).map(([name]) => name);
      if (kind === 'frequency') return hasPhases(circuit.voltages) ? ['f', 'dfdt'] : [];
      return madeOfPhasors[kind].names(circuit);
    },

    // The fundamental of a channel, [re, im], the angle being that of a sine at the sample.
    phasor(periods, channel, sample) {
      const { sine, cosine, reason } = periods.measure(channel, sample);
      return reason ? none : [sine * channel.baseFactor, cosine * channel.baseFactor];
    },

    // Those of the phases a, b, c; null where the circuit has not all three.
    phasors: (periods, channels, sample) =>
      (hasPhases(channels) ? channels.slice(0, 3).map((channel) => view.derived.phasor(periods, channel, sample)) : null),

    // {name: value} of a kind at a sample. Frequency takes periods of samples before it: it has tracks only.
    values(kind, periods, circuit, sample) {
      if (kind === 'rms')
        return Object.fromEntries(channelsOf(circuit).map(([name, channel]) => {
          const { rms, reason } = periods.measure(channel, sample);
          return [name, reason ? NaN : rms * channel.baseFactor];
        }));
      const names = view.derived.names(kind, circuit);
      if (names.length === 0) return {};
      const [U, I] = [circuit.voltages, circuit.currents].map((channels) => view.derived.phasors(periods, channels, sample));
      const values = madeOfPhasors[kind].values(U, I, circuit);
      return Object.fromEntries(names.map((name, i) => [name, values[i]]));
    },

    // {active, reactive, apparent, factor}: P, Q, S and power factor of three phases; null where the circuit lacks channels for it.
    power(periods, circuit, sample) {
      const [U, I] = [circuit.voltages, circuit.currents].map((channels) => view.derived.phasors(periods, channels, sample));
      return U && I ? view.quantities.power(U, I) : null;
    },

    // {negative, zero}: of three phases by their positive sequence; null without three.
    unbalance(periods, channels, sample) {
      const phasors = view.derived.phasors(periods, channels, sample);
      return phasors && view.quantities.unbalance(view.quantities.components(phasors));
    },

    // {direct, harmonics: [{order, rms, angle}], thd, highest} of a channel: orders from 1 to `highest`, at most 50; degrees of a sine at the
    // sample; thd by the fundamental (IEC 61000-2-4), NaN without one. Or {reason}.
    harmonics(periods, channel, sample) {
      const { values, filters, reason } = periods.windowOf(channel, sample);
      if (reason) return { reason };
      const { direct, harmonics } = filters.spectrum(values);
      const factor = channel.baseFactor;
      const rows = harmonics.map((phasor, index) => {
        const order = index + 1;
        return { order, rms: size(phasor) * factor, angle: view.degrees(view.atCursor(phasor, order * filters.fit.step)) };
      });
      const [fundamental, ...others] = rows.map(({ rms }) => rms);
      const thd = fundamental > 0 ? Math.sqrt(others.reduce((sum, rms) => sum + rms * rms, 0)) / fundamental : NaN;
      return { direct: direct * factor, harmonics: rows, thd, highest: rows.length };
    },

    // The largest magnitude among the samples of the period before a sample.
    peak(periods, channel, sample) {
      const { values, reason } = periods.windowOf(channel, sample);
      return reason ? NaN : values.reduce((largest, value) => Math.max(largest, Math.abs(value)), 0) * channel.baseFactor;
    },

    // The integral of the square of a current from one sample to another one, A² s (IEC 60909-0), by the trapezoidal rule; NaN if a sample
    // is missing, as nobody knows what flowed.
    joule(axis, channel, from, to) {
      let sum = 0;
      for (let i = from; i < to; i++) {
        const [one, other] = [channel.value(i), channel.value(i + 1)];
        sum += ((one * one + other * other) / 2) * (axis.timeOf(i + 1) - axis.timeOf(i));
      }
      const milliseconds = 1000;
      return (sum / milliseconds + 0 * channel.value(from)) * channel.baseFactor ** 2;
    },
  };
})(globalThis.zuView = globalThis.zuView || {});
