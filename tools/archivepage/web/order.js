// The order of the list.
(function (view) {
  'use strict';

  // For each word of a dictionary its place in the alphabet.
  function ranks({ words }) {
    const order = words.map((word, index) => index);
    const collator = new Intl.Collator(undefined, { numeric: true });
    order.sort((a, b) => collator.compare(words[a], words[b]));
    const places = new Uint32Array(words.length);
    order.forEach((word, place) => { places[word] = place; });
    return places;
  }

  // What is compared, as a function from an entry to a number; NaN comes last whatever the direction. Each begins with the
  // direction that most people want.
  const keys = {
    time: { isDown: true, of: (entries) => (entry) => entries.time[entry] },
    place: { of: (entries) => { const places = ranks(entries.stations); return (entry) => places[entries.station[entry]]; } },
    circuit: {
      of(entries) {
        const places = ranks(entries.circuits);
        return (entry) => places[entries.kind[entry] > 0 ? entries.faultCircuit[entry] : entries.circuit[entry]];
      },
    },
    fault: { of: (entries) => { const places = ranks(entries.kinds); return (entry) => (entries.kind[entry] > 0 ? places[entries.kind[entry]] : NaN); } },
    duration: { isDown: true, of: (entries) => (entry) => entries.duration[entry] },
    greatest: { isDown: true, of: (entries) => (entry) => entries.current[entry] },
    distance: { of: (entries) => (entry) => entries.km[entry] },
  };

  view.sortsDown = (key) => Boolean(keys[key].isDown);
  view.isSortKey = (key) => Object.prototype.hasOwnProperty.call(keys, key);

  // Keeps the order of all entries that it has made last.
  view.Order = class {
    constructor(entries) { this.entries = entries; }

    // All entries that are there, in the order; of equals the newest first.
    of(key, isDown) {
      const made = `${key} ${isDown} ${this.entries.version}`;
      if (made === this.made) return this.order;
      const { entries } = this;
      const order = new Uint32Array(entries.loadedCount);
      let count = 0;
      entries.forEachStretch((begin, end) => { for (let entry = begin; entry < end; entry++) order[count++] = entry; });
      if (key !== 'time' || !isDown) this.sort(order, keys[key].of(entries), isDown);
      this.made = made;
      this.order = order;
      return order;
    }

    sort(order, of, isDown) {
      const values = new Float64Array(this.entries.total);
      for (const entry of order) {
        const value = of(entry);
        values[entry] = Number.isNaN(value) ? Infinity : isDown ? -value : value;
      }
      order.sort((a, b) => (values[a] < values[b] ? -1 : values[a] > values[b] ? 1 : a - b));
    }

    // The entries with flag 2, in the order.
    selected({ flags, count }, key, isDown) {
      const selected = new Uint32Array(count);
      let place = 0;
      for (const entry of this.of(key, isDown)) if (flags[entry] === 2) selected[place++] = entry;
      return selected;
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
