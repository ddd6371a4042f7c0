// What is derived, along the record: one value for each sample, that of the period before it, as derived.js has it at a single one.
(function (view) {
  'use strict';

  // The stretches of one rate, [{from, to, hertz}], of at least two samples. Of a record with stamps those in which they are even, as seen from
  // their typical step.
  function stretchesOf({ stamps, pieces, count, resolution }) {
    const starts = stamps ? [0, ...gapsOf(stamps, resolution)] : pieces.map(([from]) => from);
    const rateOf = (from, to, i) => (stamps ? (milliseconds * (to - 1 - from)) / (stamps[to - 1] - stamps[from]) : pieces[i][3]);
    return starts.map((from, i) => ({ from, to: i + 1 < starts.length ? starts[i + 1] : count, i }))
      .filter(({ from, to }) => to - from > 1).map(({ from, to, i }) => ({ from, to, hertz: rateOf(from, to, i) }));
  }

  // The samples that come sooner or later after the one before than is usual.
  function gapsOf(stamps, resolution) {
    const steps = stamps.slice(1).map((stamp, i) => stamp - stamps[i]);
    const typical = steps.slice().sort()[steps.length >> 1];
    const tolerance = Math.max(2.002 * resolution, typical / 50);
    return Array.from(steps.keys()).filter((i) => Math.abs(steps[i] - typical) > tolerance).map((i) => i + 1);
  }

  const milliseconds = 1000;
  const fewest = 3; // samples in a period

  const waveOf = (channel, from, to) => Float64Array.from({ length: to - from }, (_, i) => channel.baseValue(from + i));

  // Calls `put(to, values ...)` with the results for samples from + 1 to to, of windows that end with the sample before; of one rate.
  function alongRates(periods, channel, track, put) {
    for (const { from, to, hertz } of stretchesOf(periods.axis)) {
      if (hertz / periods.frequency < fewest) continue;
      const results = track(periods.filtersOf(hertz / periods.frequency), waveOf(channel, from, to));
      put(from + 1, to, results);
    }
  }

  const emptyTrack = (count) => new Float64Array(count).fill(NaN);

  function rmsTrack(periods, channel) {
    const { count, stamps } = periods.axis;
    const track = emptyTrack(count);
    if (stamps)
      for (let i = 0; i < count; i++) track[i] = view.derived.values('rms', periods, { voltages: [channel], currents: [] }, i).Ua;
    else alongRates(periods, channel, (filters, wave) => filters.rmsTrack(wave), (from, to, rms) => track.set(rms.subarray(0, to - from), from));
    return track;
  }

  // {re, im}: the angles of all channels at a sample are against the same one.
  function phasorTrack(periods, channel) {
    const { count, stamps } = periods.axis;
    const track = { re: emptyTrack(count), im: emptyTrack(count) };
    if (stamps)
      for (let i = 0; i < count; i++) [track.re[i], track.im[i]] = view.derived.phasor(periods, channel, i);
    else
      alongRates(periods, channel, (filters, wave) => filters.fundamental.track(wave), (from, to, { re, im }) => {
        track.re.set(re.subarray(0, to - from), from);
        track.im.set(im.subarray(0, to - from), from);
      });
    return track;
  }

  function* rms(periods, circuit) {
    const series = {};
    for (const [name, channel] of view.derived.channelsOf(circuit)) {
      series[name] = Float32Array.from(rmsTrack(periods, channel));
      yield;
    }
    return series;
  }

  function* phasorTracks(periods, channels) {
    if (!view.derived.hasPhases(channels)) return null;
    const tracks = [];
    for (const channel of channels.slice(0, 3)) {
      tracks.push(phasorTrack(periods, channel));
      yield;
    }
    return tracks;
  }

  const chunk = 20000; // samples between two looks at what else is asked for

  function* ofPhasors(kind, periods, circuit) {
    const names = view.derived.names(kind, circuit);
    const made = view.derived.madeOfPhasors[kind];
    const U = yield* phasorTracks(periods, circuit.voltages);
    const I = yield* phasorTracks(periods, circuit.currents);
    const at = (tracks, i) => tracks && tracks.map(({ re, im }) => [re[i], im[i]]);
    const tracks = names.map(() => new Float32Array(periods.axis.count).fill(NaN));
    for (let i = 0; i < periods.axis.count; i++) {
      made.values(at(U, i), at(I, i), circuit).forEach((value, n) => { tracks[n][i] = value; });
      if (i % chunk === 0) yield;
    }
    return Object.fromEntries(names.map((name, n) => [name, tracks[n]]));
  }

  function* frequency(periods, circuit) {
    const { count } = periods.axis;
    const series = { f: new Float32Array(count).fill(NaN), dfdt: new Float32Array(count).fill(NaN) };
    for (const { from, to, hertz: rate } of stretchesOf(periods.axis)) {
      if (rate / periods.frequency < fewest) continue;
      const waves = circuit.voltages.slice(0, 3).map((channel) => waveOf(channel, from, to));
      const { hertz, change } = yield* view.frequencyTrack(waves, rate, periods.frequency);
      series.f.set(hertz.subarray(0, to - from - 1), from + 1);
      series.dfdt.set(change.subarray(0, to - from - 1), from + 1);
    }
    return series;
  }

  // A generator that yields now and then and returns {series: {name: Float32Array}} of a kind, NaN where there is no value; without series
  // where the circuit lacks the channels for it.
  view.deriveTracks = function* (kind, periods, circuit) {
    if (view.derived.names(kind, circuit).length === 0) return { series: {} };
    const own = { rms, frequency }[kind];
    return { series: yield* (own ? own(periods, circuit) : ofPhasors(kind, periods, circuit)) };
  };
})(globalThis.zuView = globalThis.zuView || {});
