// Which channels of the second record lie over which of the first one's.
(function (view) {
  'use strict';

  const plain = (text) => text.trim().replace(/\s+/g, ' ').toLowerCase();

  // In this order: the first that two channels have in common makes them a pair.
  const likenesses = [
    (one, other) => plain(one.name) === plain(other.name),
    (one, other) => one.role !== '' && one.role === other.role && one.quantity === other.quantity,
    (one, other) => plain(view.shortName(one)) === plain(view.shortName(other)),
  ];

  // Names that occur once in a record, and the circuits of their channels.
  function circuitsOfNames(channels) {
    const known = new Map();
    for (const { name, circuit } of channels) known.set(plain(name), known.has(plain(name)) ? null : circuit);
    return known;
  }

  // Circuits of the first record and those of the second that have the most names of channels in common with them.
  function byChannelNames(first, second) {
    const names = circuitsOfNames(second);
    const counts = new Map();
    for (const [name, circuit] of circuitsOfNames(first)) {
      const other = names.get(name);
      if (circuit === null || typeof other !== 'string') continue;
      const key = JSON.stringify([circuit, other]);
      counts.set(key, (counts.get(key) || 0) + 1);
    }
    return [...counts].sort((a, b) => b[1] - a[1]).map(([key]) => JSON.parse(key));
  }

  const faultedCircuit = ({ answer }) => (view.faultedCircuit(answer) || { name: null }).name;

  // Circuit of the first record to circuit of the second: of the same name, with the same names of channels, or both
  // those in which the fault was found. A circuit of the second one is in one pair only.
  view.matchCircuits = function (page, record) {
    const pairs = new Map();
    const taken = new Set();
    const add = (one, other) => {
      if (!page.groups.has(one) || !record.groups.has(other) || pairs.has(one) || taken.has(other)) return;
      pairs.set(one, other);
      taken.add(other);
    };
    for (const one of page.groups.keys())
      for (const other of record.groups.keys()) if (plain(one) === plain(other)) add(one, other);
    for (const [one, other] of byChannelNames(page.analog, record.analog)) add(one, other);
    add(faultedCircuit(page.data), faultedCircuit(record.data));
    return pairs;
  };

  // A channel of the second record as a strip of the first shows it: in the unit of the channel that it lies over.
  function laidOver(channel, partner, scale) {
    return Object.create(channel, {
      partner: { value: partner },
      codes: { get: () => channel.codes },
      pyramid: { get: () => channel.pyramid },
      visible: { get: () => partner.visible },
      shownUnit: { get: () => partner.shownUnit },
      shownFactor: { get: () => channel.factor * scale / (partner.inKilo ? 1000 : 1) },
    });
  }

  view.SecondMatches = class {
    constructor(page, record) {
      this.record = record;
      this.units = record.data.overlay.units;
      this.circuits = view.matchCircuits(page, record);
      this.chosen = new Map(); // strip to circuit of the second record, null for none
      const matched = [...this.circuits].flatMap(([one, other]) => this.pairs(page.groups.get(one), record.groups.get(other)));
      this.matched = new Set(matched.map(([, channel]) => channel));
    }

    // How many of the first channel's unit one of the other's is; 0 where they measure different things.
    scale(one, other) {
      if (one.unit === other.unit) return 1;
      const [[quantity, size], [otherQuantity, otherSize]] = [one, other].map(({ unit }) => this.units[unit] || ['', 1]);
      return quantity !== '' && quantity === otherQuantity ? otherSize / size : 0;
    }

    // [[channel, channel of the second record] ...]; with all, also those that have nothing but the unit in common.
    pairs(channels, others, all = false) {
      const pairs = new Map();
      const taken = new Set();
      for (const isAlike of all ? [...likenesses, () => true] : likenesses)
        for (const channel of channels) {
          if (pairs.has(channel)) continue;
          const other = others.find((candidate) => !taken.has(candidate) && this.scale(channel, candidate) > 0 && isAlike(channel, candidate));
          if (!other) continue;
          pairs.set(channel, other);
          taken.add(other);
        }
      return channels.filter((channel) => pairs.has(channel)).map((channel) => [channel, pairs.get(channel)]);
    }

    static keyOf(channels) { return channels.filter(({ record }) => !record).map(({ index }) => index).join(); }

    // The circuit of the second record that lies over a strip, null for none.
    circuitOver(channels) {
      const key = view.SecondMatches.keyOf(channels);
      if (this.chosen.has(key)) return this.chosen.get(key);
      const circuit = this.circuits.get(channels[0].circuit);
      if (circuit === undefined || channels[0].isComputed) return null;
      return this.pairs(channels, this.record.groups.get(circuit)).length > 0 ? circuit : null;
    }

    choose(channels, circuit) { this.chosen.set(view.SecondMatches.keyOf(channels), circuit); }

    // The circuits that have something to lay over a strip.
    candidates(channels) {
      return [...this.record.groups].filter(([, others]) => this.pairs(channels, others, true).length > 0).map(([circuit]) => circuit);
    }

    // What lies over the channels of a strip.
    over(channels) {
      const circuit = this.circuitOver(channels);
      if (circuit === null) return [];
      const isChosen = this.chosen.has(view.SecondMatches.keyOf(channels));
      return this.pairs(channels, this.record.groups.get(circuit), isChosen).map(([one, other]) => laidOver(other, one, this.scale(one, other)));
    }

    // Channels that lie over none by themselves.
    alone() { return this.record.analog.filter((channel) => !this.matched.has(channel)); }
  };
})(globalThis.zuView = globalThis.zuView || {});
