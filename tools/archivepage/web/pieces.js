// The entries, in columns that all parts of the page read. They come in pieces, as scripts beside the page, since a page
// from a disk may load nothing else; the newest first.
(function (view) {
  'use strict';

  const loads = new Map(); // by the piece's name

  // Called by a piece with what it holds.
  view.take = (data) => { document.currentScript.taken = data; };

  // A promise of what a piece holds. A piece that could not be loaded is tried again the next time.
  view.loadPiece = function (name) {
    if (loads.has(name)) return loads.get(name);
    const load = new Promise((resolve, reject) => {
      const script = view.html('script', { src: `data/${name}.js` });
      const end = () => {
        script.remove();
        if (script.taken) return resolve(script.taken);
        loads.delete(name);
        reject(new Error(view.text('pieceMissing', `data/${name}.js`)));
      };
      script.onload = end;
      script.onerror = end;
      document.head.append(script);
    });
    loads.set(name, load);
    return load;
  };

  // The bits of an entry's state.
  view.states = { record: 1, gone: 2, unread: 4, right: 8, wrong: 16, again: 32 };

  // A column of a piece as an array of so many values; one value stands for all where they are the same.
  view.columnOf = (column, count) => (Array.isArray(column) ? column : new Array(count).fill(column));

  // Texts of a piece, one for each of its entries.
  view.textsOf = ({ words, of }, count) => view.columnOf(of, count).map((place) => words[place]);

  // Texts that repeat, each with a number.
  class Dictionary {
    constructor() {
      this.words = [];
      this.numbers = new Map();
    }

    numberOf(word) {
      let number = this.numbers.get(word);
      if (number === undefined) {
        number = this.words.push(word) - 1;
        this.numbers.set(word, number);
      }
      return number;
    }

    // A function from a piece's column to numbers.
    reader({ words, of }) {
      const numbers = words.map((word) => this.numberOf(word));
      return Array.isArray(of) ? (place) => numbers[of[place]] : () => numbers[of];
    }
  }

  const reader = (column) => (Array.isArray(column) ? (place) => column[place] : () => column);
  const orNaN = (value) => (value === null ? NaN : value);

  view.Entries = class {
    // archive: {timed, untimed, pictures, root}, the pieces with the oldest first. Entry 0 is the newest one; those without a
    // time come last.
    constructor(archive) {
      this.archive = archive;
      this.pieces = [...archive.timed].reverse().map((piece) => ({ ...piece, isTimed: true })).concat(archive.untimed);
      this.total = 0;
      for (const piece of this.pieces) {
        piece.first = this.total;
        this.total += piece.count;
      }
      this.stations = new Dictionary();
      this.recorders = new Dictionary();
      this.circuits = new Dictionary();
      this.kinds = new Dictionary();
      this.kinds.numberOf(''); // 0: no fault
      this.directions = new Dictionary();
      this.pages = new Map(); // names by entry
      this.version = 0; // changes with each piece
      this.allocate();
    }

    allocate() {
      const numbers = (Type, ...names) => { for (const name of names) this[name] = new Type(this.total); };
      numbers(Float64Array, 'time', 'local');
      numbers(Float32Array, 'length', 'duration', 'current', 'km', 'percent');
      numbers(Uint32Array, 'station', 'recorder', 'circuit', 'faultCircuit', 'faultNumber');
      numbers(Uint8Array, 'state', 'kind', 'direction', 'pictured');
      numbers(Int8Array, 'reclosed');
      numbers(Int16Array, 'offset');
      numbers(Int32Array, 'day', 'month');
      this.names = new Array(this.total).fill('');
      for (const column of ['time', 'local', 'duration', 'current', 'km', 'percent']) this[column].fill(NaN);
      this.reclosed.fill(-1);
    }

    // Loads all pieces; loaded is called after each, and trouble with the failure of one.
    async load(loaded, trouble) {
      const one = (piece) => view.loadPiece(piece.entries).then((data) => {
        this.fill(piece, data);
        loaded();
      }).catch(trouble);
      if (this.pieces.length > 0) await one(this.pieces[0]);
      await new Promise((resolve) => { requestAnimationFrame(() => setTimeout(resolve)); }); // the first ones are seen
      await Promise.all(this.pieces.slice(1).map(one));
    }

    get loadedCount() { return this.pieces.reduce((sum, piece) => sum + (piece.isLoaded ? piece.count : 0), 0); }

    // Calls a function with the first and the end of each stretch of entries that are there.
    forEachStretch(take) {
      for (const piece of this.pieces) if (piece.isLoaded) take(piece.first, piece.first + piece.count);
    }

    pieceOf(entry) {
      let [low, high] = [0, this.pieces.length - 1];
      while (low < high) {
        const middle = (low + high + 1) >> 1;
        if (this.pieces[middle].first <= entry) low = middle;
        else high = middle - 1;
      }
      return this.pieces[low];
    }

    // The place of an entry in its piece, where the oldest is first.
    placeOf(entry, piece = this.pieceOf(entry)) { return piece.first + piece.count - 1 - entry; }

    fill(piece, data) {
      const last = piece.first + piece.count - 1;
      const [station, recorder, circuit] = [this.stations.reader(data.station), this.recorders.reader(data.recorder), this.circuits.reader(data.circuit)];
      const [offset, state, length, step] = [data.offset, data.state, data.length, data.time.steps].map(reader);
      const names = view.columnOf(data.name, piece.count);
      let time = data.time.first;
      for (let place = 0, entry = last; place < piece.count; place++, entry--) {
        this.names[entry] = names[place];
        this.station[entry] = station(place);
        this.recorder[entry] = recorder(place);
        this.circuit[entry] = circuit(place);
        this.state[entry] = state(place);
        this.length[entry] = orNaN(length(place));
        if (!piece.isTimed) continue;
        time += step(place);
        this.setTime(entry, time, offset(place));
      }
      this.fillFaults(last, data.fault);
      const paged = view.columnOf(data.page.at, 1);
      const pageNames = view.columnOf(data.page.name, paged.length);
      paged.forEach((place, index) => this.pages.set(last - place, pageNames[index]));
      piece.isLoaded = true;
      this.version++;
    }

    setTime(entry, time, offset) {
      this.time[entry] = time;
      this.offset[entry] = offset === null ? view.noOffset : offset;
      this.local[entry] = time + (offset || 0) * 60000;
      this.day[entry] = view.dayOf(this.local[entry]);
      this.month[entry] = view.monthOfDay(this.day[entry]);
    }

    fillFaults(last, fault) {
      const at = view.columnOf(fault.at, fault.count);
      const [kind, circuit, direction] = [this.kinds.reader(fault.kind), this.circuits.reader(fault.circuit), this.directions.reader(fault.direction)];
      const [duration, current, km, percent, reclosed, picture] = [fault.duration, fault.current, fault.km, fault.percent, fault.reclosed, fault.picture].map(reader);
      for (let number = 0; number < fault.count; number++) {
        const entry = last - at[number];
        this.kind[entry] = kind(number);
        this.faultCircuit[entry] = circuit(number);
        this.direction[entry] = direction(number);
        this.duration[entry] = orNaN(duration(number));
        this.current[entry] = orNaN(current(number));
        this.km[entry] = orNaN(km(number));
        this.percent[entry] = orNaN(percent(number));
        this.reclosed[entry] = reclosed(number) === null ? -1 : reclosed(number);
        this.faultNumber[entry] = number;
        this.pictured[entry] = picture(number);
      }
    }

    is(entry, state) { return (this.state[entry] & state) !== 0; }

    // The circuit with the fault, or else the one that started the recorder.
    circuitOf(entry) { return this.circuits.words[this.kind[entry] > 0 ? this.faultCircuit[entry] : this.circuit[entry]]; }
  };
})(globalThis.zuView = globalThis.zuView || {});
