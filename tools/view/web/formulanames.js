// Which channel a formula means by a name. Within a circuit the name without that of the circuit is enough, or what the
// channel is: Ua, 3I0. Of any circuit it is "circuit:name", its whole name, or #12, its number in the record.
(function (view) {
  'use strict';

  // Cyrillic letters that are typed for Latin ones, and the other way round.
  const lookalikes = { а: 'a', в: 'b', с: 'c', е: 'e', о: 'o', р: 'p', х: 'x', к: 'k', м: 'm', т: 't', н: 'h' };
  const roles = { ...Object.fromEntries(['u', 'i'].flatMap((q) => ['a', 'b', 'c'].map((phase) => [q + phase, [q, phase]]))), '3u0': ['u', '0'], '3i0': ['i', '0'] };
  const mostNumbers = 6;

  const folded = (name) => name.trim().toLowerCase().replace(/[авсеорхкмтн]/g, (letter) => lookalikes[letter]);

  view.ChannelNames = class {
    // analog: the channels of the record; circuits: those of data.answer, which know whose voltages serve a line
    constructor(analog, circuits) {
      this.analog = analog;
      this.circuits = circuits;
      this.groups = view.groupByCircuit(analog);
    }

    // The channel that a formula of a circuit means; `more` are channels with names of their own. Throws {key, values}.
    find(name, isQuoted, circuit, more) {
      if (name.startsWith('#')) return this.numbered(Number(name.slice(1)), name);
      const own = more.filter((channel) => channel.name === name);
      const found = own.length > 0 ? own.slice(-1) : this.inCircuit(name, circuit);
      if (found.length === 0 && isQuoted) found.push(...this.anywhere(name));
      if (found.length === 1) return found[0];
      if (found.length > 1) throw { key: 'formulaSeveral', values: [name, found.slice(0, mostNumbers).map((channel) => `#${channel.number}`).join(', ')] };
      throw this.unknown(name, circuit);
    }

    numbered(number, name) {
      const channel = this.analog.find((one) => one.number === number);
      if (channel) return channel;
      throw { key: 'formulaNoNumber', values: [name] };
    }

    unknown(name, circuit) {
      const names = this.namesIn(circuit).map(({ text }) => text);
      const product = /^(\d+)(.+)$/.exec(name);
      if (product && this.inCircuit(product[2], circuit).length > 0) return { key: 'formulaTimes', values: [name, `${product[1]}*${product[2]}`] };
      return { key: names.length > 0 ? 'formulaUnknown' : 'formulaNoNames', values: [name, circuit || view.text('noCircuit'), names.join(', ')] };
    }

    // The first of these that finds any: its short name, its whole one, either in other letters, its role.
    inCircuit(name, circuit) {
      const channels = this.groups.get(circuit) || [];
      const wanted = folded(name);
      const rules = [
        () => channels.filter((channel) => view.shortName(channel) === name), () => channels.filter((channel) => channel.name === name),
        () => channels.filter((channel) => [view.shortName(channel), channel.name].some((own) => folded(own) === wanted)),
        () => this.ofRole(wanted, circuit, channels),
      ];
      for (const rule of rules) {
        const found = rule();
        if (found.length > 0) return found;
      }
      return [];
    }

    ofRole(wanted, circuit, channels) {
      if (!Object.hasOwn(roles, wanted)) return [];
      const [quantity, role] = roles[wanted];
      const known = this.circuits.find(({ name }) => name === circuit);
      const place = known ? (quantity === 'u' ? known.voltages : known.currents)['abc0'.indexOf(role)] : null;
      if (place !== null) return [this.analog[place]];
      return channels.filter((channel) => channel.quantity === quantity.toUpperCase() && channel.role === role);
    }

    // Either part of a name may have a colon in it.
    anywhere(name) {
      const whole = this.analog.filter((channel) => channel.name === name);
      if (whole.length > 0) return whole;
      for (let at = name.indexOf(':'); at >= 0; at = name.indexOf(':', at + 1)) {
        const circuit = [...this.groups.keys()].find((one) => folded(one) === folded(name.slice(0, at)));
        const found = circuit === undefined ? [] : this.inCircuit(name.slice(at + 1).trim(), circuit);
        if (found.length > 0) return found;
      }
      return [];
    }

    // [{text, channel}]: how the channels that serve a circuit are written in its formulas.
    namesIn(circuit) {
      const channels = this.groups.get(circuit) || [];
      const known = this.circuits.find(({ name }) => name === circuit);
      const borrowed = known ? known.voltages.map((place, index) => ({ place, text: ['Ua', 'Ub', 'Uc', '3U0'][index] })) : [];
      return [
        ...channels.map((channel) => ({ text: this.written(channel, channels), channel })),
        ...borrowed.filter(({ place }) => place !== null && this.analog[place].circuit !== circuit).map(({ text, place }) => ({ text, channel: this.analog[place] })),
      ];
    }

    written(channel, channels) {
      const name = view.shortName(channel);
      if (name.includes('"') || channels.some((other) => other !== channel && view.shortName(other) === name)) return `#${channel.number}`;
      return view.isFormulaName(name) ? name : `"${name}"`;
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
