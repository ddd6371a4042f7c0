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

  const none = 0xffffffff; // of an entry without a value, which comes last whatever the direction

  // The bits of a number that is not negative, which rise with it.
  const single = new Float32Array(1);
  const bits = new Uint32Array(single.buffer);
  function bitsOf(number) {
    if (!(number >= 0)) return none;
    single[0] = number;
    return bits[0];
  }

  // What is compared, as a function from an entry to a whole number below 2 ** 32. Some begin with the greatest.
  const keys = {
    time: { isDown: true, of: (entries) => (entry) => (Number.isNaN(entries.time[entry]) ? none : entries.total - entry) },
    place: { of: (entries) => { const ranked = ranks(entries.stations); return (entry) => ranked[entries.station[entry]]; } },
    circuit: {
      of(entries) {
        const ranked = ranks(entries.circuits);
        return (entry) => ranked[entries.kind[entry] > 0 ? entries.faultCircuit[entry] : entries.circuit[entry]];
      },
    },
    fault: { of: (entries) => { const ranked = ranks(entries.kinds); return (entry) => (entries.kind[entry] > 0 ? ranked[entries.kind[entry]] : none); } },
    duration: { isDown: true, of: (entries) => (entry) => bitsOf(entries.duration[entry]) },
    greatest: { isDown: true, of: (entries) => (entry) => bitsOf(entries.current[entry]) },
    distance: { of: (entries) => (entry) => bitsOf(entries.km[entry]) },
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

    // Key and entry in one number each: numbers are sorted without a function that compares them, ten times as fast. Both
    // fit into the 53 bits of a whole number up to two million entries.
    sort(order, of, isDown) {
      const range = 2 ** Math.ceil(Math.log2(Math.max(this.entries.total, 2)));
      const packed = new Float64Array(order.length);
      order.forEach((entry, place) => {
        const key = of(entry);
        packed[place] = (isDown && key !== none ? none - 1 - key : key) * range + entry;
      });
      packed.sort();
      packed.forEach((number, place) => { order[place] = number % range; });
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
