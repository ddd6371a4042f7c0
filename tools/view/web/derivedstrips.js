// Strips of what is derived, under those of their circuits: RMS values, components, power, frequency and impedance against time. Buttons
// beside the circuit's name switch them, and the page's address keeps which are on: show=0:rms,power;3:impedance.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      derivedRms: 'RMS', derivedComponents: 'Components', derivedPower: 'P, Q', derivedFrequency: 'Frequency', derivedImpedance: 'Impedance',
      derivedRmsHint: 'RMS of the last period against time', derivedComponentsHint: 'Symmetrical components against time',
      derivedPowerHint: 'Active and reactive power of the three phases against time', derivedFrequencyHint: 'Frequency and its rate of change against time',
      derivedImpedanceHint: 'Resistance and reactance of the fault loops against time, as a distance protection sees them',
      derivedUnits: ['V', 'kV', 'A', 'kA', 'W', 'kW', 'MW', 'var', 'kvar', 'Mvar', 'Hz', 'Hz/s', 'Ω'],
    },
    ru: {
      derivedRms: 'Действ.', derivedComponents: 'Симм. сост.', derivedPower: 'P и Q', derivedFrequency: 'Частота', derivedImpedance: 'Сопротивление',
      derivedRmsHint: 'Действующие значения за период в зависимости от времени', derivedComponentsHint: 'Симметричные составляющие в зависимости от времени',
      derivedPowerHint: 'Активная и реактивная мощность трёх фаз в зависимости от времени', derivedFrequencyHint: 'Частота и скорость её изменения в зависимости от времени',
      derivedImpedanceHint: 'Активное и реактивное сопротивление петель КЗ в зависимости от времени, как их видит дистанционная защита',
      derivedUnits: ['В', 'кВ', 'А', 'кА', 'Вт', 'кВт', 'МВт', 'вар', 'квар', 'Мвар', 'Гц', 'Гц/с', 'Ом'],
    },
  });

  const units = ['V', 'kV', 'A', 'kA', 'W', 'kW', 'MW', 'var', 'kvar', 'Mvar', 'Hz', 'Hz/s', 'Ω'];
  const titles = { rms: 'derivedRms', components: 'derivedComponents', power: 'derivedPower', frequency: 'derivedFrequency', impedance: 'derivedImpedance' };
  const roles = { Ua: 'a', Ub: 'b', Uc: 'c', '3U0': '0', Ia: 'a', Ib: 'b', Ic: 'c', '3I0': '0', 'R.AG': 'a', 'R.BG': 'b', 'R.CG': 'c', 'X.AG': 'a', 'X.BG': 'b', 'X.CG': 'c' };

  // R and X of one loop, which share a strip, have no colour of a phase.
  const roleOf = (name, names) => (names[0].startsWith('R.') && names.some((other) => other.startsWith('X.')) ? '' : roles[name] || '');

  // The series of a kind as strips.
  function stripsOf(kind, names, loops) {
    if (kind === 'power') return [names];
    if (kind === 'frequency') return names.map((name) => [name]);
    if (kind !== 'impedance') return ['U', 'I'].map((quantity) => names.filter((name) => name.includes(quantity)));
    const parts = ['R', 'X'].map((part) => loops.map((loop) => `${part}.${loop}`));
    return loops.length === 1 ? [parts.flat()] : parts;
  }

  // [unit, values in it per SI unit]: thousands and millions where the largest value that is to be expected is of that size.
  function unitOf(name, circuit) {
    const largest = (channels) => Math.max(0, ...channels.filter(Boolean).flatMap((channel) =>
      channel.ends.map((code) => Math.abs(channel.valueOfCode(code)) * channel.baseFactor)).filter(Number.isFinite));
    const [U, I] = [largest(circuit.voltages), largest(circuit.currents)];
    const scaled = (size, ...prefixes) => {
      const step = Math.min(prefixes.length - 1, size >= 1e6 ? 2 : size >= 1e3 ? 1 : 0);
      return [prefixes[step], 1000 ** -step];
    };
    if (name === 'f') return ['Hz', 1];
    if (name === 'dfdt') return ['Hz/s', 1];
    if (name === 'P') return scaled(1.5 * U * I, 'W', 'kW', 'MW');
    if (name === 'Q') return scaled(1.5 * U * I, 'var', 'kvar', 'Mvar');
    if (/[RX]\./.test(name)) return ['Ω', 1];
    return name.includes('U') ? scaled(U, 'V', 'kV') : scaled(I, 'A', 'kA');
  }

  const fewTimes = 4; // the line's impedance, or the load's, to which an axis of impedance reaches
  const farBeyond = 10; // times the end of the axis
  const lowest = 0.02; // of the magnitudes, which stands for the smallest ones
  const enough = 8192; // samples to know them from

  // Without current an impedance is without bounds, and the axis must not follow it. Infinite where nothing is known.
  function reachOf(series, loops, line) {
    const stride = Math.ceil(series['R.AG'].length / enough);
    const sizes = loops.flatMap((loop) => Array.from({ length: Math.ceil(series['R.AG'].length / stride) }, (_, i) =>
      Math.hypot(series[`R.${loop}`][i * stride], series[`X.${loop}`][i * stride])));
    const sorted = Float64Array.from(sizes.filter(Number.isFinite)).sort();
    if (sorted.length === 0) return Infinity;
    const ofLine = line && line.length > 0 ? fewTimes * Math.hypot(line.r1, line.x1) * line.length : 0;
    return sorted[0] < ofLine ? ofLine : fewTimes * sorted[Math.floor(lowest * sorted.length)];
  }

  // One series of a circuit. It has no values until they are asked for.
  class DerivedChannel extends view.ComputedChannel {
    // role: its phase, for its colour
    constructor(series, kind, place, circuit, count, role) {
      const [unit, factor] = unitOf(series, circuit);
      const name = series === 'dfdt' ? 'df/dt' : series.replace('.', ' ');
      super({ name, circuit: '', unit: view.text('derivedUnits')[units.indexOf(unit)], factor, role },
        `${kind} ${place} ${series}`, count);
      Object.assign(this, { series, kind, place, isDerived: true, isKnown: false, reach: Infinity, drawn: null });
    }

    get heading() { return view.text(titles[this.kind]); }

    // The axis is to end at `reach`. What is far beyond swings from one end to the other, as it is divided by the noise of a dead line: it is not
    // drawn. The values stay what they are.
    setReach(reach) {
      this.reach = reach;
      if (!Number.isFinite(reach)) return;
      this.drawn = new view.ComputedChannel({ name: this.name, unit: this.unit, factor: this.factor }, this.index, 0);
      this.drawn.setValues(this.codes.map((value) => (Math.abs(value) <= farBeyond * reach ? value : NaN)));
    }

    axisRange(...span) {
      const [low, high] = this.range(...span);
      const within = [Math.max(low, -this.reach), Math.min(high, this.reach)];
      return within[0] <= within[1] ? within : [low, high];
    }
  }

  // {place: Set of kinds} of the circuits that have some on, as the address has them; what it has besides is passed over.
  function readShown(text, circuits) {
    const shown = new Map();
    for (const part of (text || '').split(';')) {
      const [place, kinds] = part.split(':');
      const known = (kinds || '').split(',').filter((kind) => view.derived.kinds.includes(kind));
      if (/^\d+$/.test(place) && Number(place) < circuits && known.length > 0) shown.set(Number(place), new Set(known));
    }
    return shown;
  }

  view.DerivedStrips = class {
    constructor(page) {
      this.page = page;
      this.shown = readShown(view.address.get('show'), page.data.answer.circuits.length);
      this.channels = [];
      this.places = new Map(page.data.answer.circuits.map(({ name }, place) => [name, place]));
      page.extensions.push((groups, layout) => this.extend(groups, layout));
    }

    circuitAt(place) { return view.derived.circuit(this.page.data.answer.circuits[place], this.page.analog); }

    // Adds the strips that are on to their circuits.
    extend(groups, layout) {
      this.channels = [];
      for (const { circuit: name, strips } of groups) {
        const place = this.places.get(name);
        const kinds = this.shown.get(place);
        if (!kinds) continue;
        for (const kind of this.page.derivations.kindsOf(place)) if (kinds.has(kind)) strips.push(...this.stripsOf(kind, place, layout));
      }
    }

    stripsOf(kind, place, layout) {
      const { data } = this.page;
      const circuit = this.circuitAt(place);
      const strips = stripsOf(kind, view.derived.names(kind, circuit), view.loopsOfFault(data.answer.summary)).filter((names) => names.length > 0)
        .map((names) => names.map((name) => new DerivedChannel(name, kind, place, circuit, data.count, roleOf(name, names))));
      this.channels.push(...strips.flat());
      return layout === 'apart' ? strips.flat().map((channel) => [channel]) : strips;
    }

    // The buttons of a circuit; nothing where there is nothing to derive.
    switches(name) {
      const place = this.places.get(name);
      const kinds = place === undefined ? [] : this.page.derivations.kindsOf(place);
      const group = document.createElement('span');
      group.className = 'derived';
      for (const kind of kinds) {
        const button = Object.assign(document.createElement('button'), {
          type: 'button', textContent: view.text(titles[kind]), title: view.text(`${titles[kind]}Hint`) });
        button.dataset.derived = `${place}:${kind}`;
        button.setAttribute('aria-pressed', this.isShown(place, kind));
        button.addEventListener('click', () => this.toggle(place, kind));
        group.append(button);
      }
      return group;
    }

    isShown(place, kind) { return this.shown.has(place) && this.shown.get(place).has(kind); }

    toggle(place, kind) {
      const kinds = this.shown.get(place) || new Set();
      if (!kinds.delete(kind)) kinds.add(kind);
      if (kinds.size > 0) this.shown.set(place, kinds);
      else this.shown.delete(place);
      view.address.set('show', [...this.shown].sort(([a], [b]) => a - b).map(([at, on]) => `${at}:${[...on]}`).join(';'));
      this.page.buildStrips();
      this.page.redraw();
      document.querySelector(`[data-derived="${place}:${kind}"]`).focus();
    }

    // Asks for the values of the strips that are seen and have none yet.
    compute() {
      for (const strip of this.page.strips) {
        const [{ isDerived, isKnown, kind, place }] = strip.channels;
        if (strip.onScreen && isDerived && !isKnown)
          this.page.derivations.request(`strips ${place} ${kind}`, { kind, circuit: place }, ({ series }) => this.take(kind, place, series));
      }
    }

    // The same at once, for paper.
    finish() {
      for (const { isKnown, kind, place } of this.channels) if (!isKnown) this.take(kind, place, this.page.derivations.now({ kind, circuit: place }).series);
    }

    take(kind, place, series) {
      const { page } = this;
      const reach = kind === 'impedance' && series['R.AG'] ? reachOf(series, view.loopsOfFault(page.data.answer.summary), page.data.answer.circuits[place].line) : Infinity;
      for (const channel of this.channels) {
        if (channel.kind !== kind || channel.place !== place || !series[channel.series]) continue;
        channel.setValues(series[channel.series]);
        channel.setReach(reach);
        channel.isKnown = true;
      }
      for (const strip of page.strips) if (strip.channels[0].kind === kind && strip.channels[0].place === place) strip.stale = true;
      page.request('strips');
      page.request('values');
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
