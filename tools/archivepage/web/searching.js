// Which entries have a text: in their names, or in the names of what changed in them.
(function (view) {
  'use strict';

  const mostKept = 8; // words whose entries are remembered

  view.Searching = class {
    // loaded is called when more to search in has come, trouble with a failure.
    constructor(entries, loaded, trouble) {
      this.entries = entries;
      this.loaded = loaded;
      this.trouble = trouble;
      this.words = new Map();  // of the pieces, by their places
      this.names = [];         // of files, in small letters
      this.kept = new Map();   // flags of entries by word
    }

    // Whether all there is to search in has come.
    get isWhole() { return this.words.size === this.entries.pieces.length; }

    // A function from an entry to whether it has all words of a text; null for a text without words.
    finder(text) {
      const words = text.toLowerCase().split(/\s+/).filter(Boolean);
      if (words.length === 0) return null;
      this.loadWords();
      const flags = words.map((word) => this.entriesWith(word));
      return (entry) => flags.every((one) => one[entry] === 1);
    }

    loadWords() {
      if (this.isLoading) return;
      this.isLoading = true;
      this.entries.pieces.forEach((piece, place) => view.loadPiece(piece.words).then((data) => {
        this.words.set(place, readWords(data));
        this.loaded();
      }).catch(this.trouble));
    }

    entriesWith(word) {
      const state = `${this.entries.version} ${this.words.size}`;
      const kept = this.kept.get(word);
      if (kept && kept.state === state) return kept.flags;
      const flags = this.search(word);
      this.kept.delete(word);
      this.kept.set(word, { state, flags });
      if (this.kept.size > mostKept) this.kept.delete(this.kept.keys().next().value);
      return flags;
    }

    search(word) {
      const { entries } = this;
      const flags = new Uint8Array(entries.total);
      const has = ({ words }) => words.map((one) => one.toLowerCase().includes(word));
      const [stations, recorders, circuits] = [has(entries.stations), has(entries.recorders), has(entries.circuits)];
      entries.forEachStretch((begin, end) => {
        for (let entry = begin; entry < end; entry++) {
          if (stations[entries.station[entry]] || recorders[entries.recorder[entry]] || circuits[entries.circuit[entry]]
            || (entries.kind[entry] > 0 && circuits[entries.faultCircuit[entry]]) || this.nameOf(entry).includes(word)) flags[entry] = 1;
        }
      });
      for (const [place, data] of this.words) this.searchWords(entries.pieces[place], data, word, flags);
      return flags;
    }

    nameOf(entry) {
      if (this.names[entry] === undefined) this.names[entry] = this.entries.names[entry].toLowerCase();
      return this.names[entry];
    }

    searchWords(piece, { words, starts, of }, word, flags) {
      const matches = words.map((one) => one.includes(word));
      if (!matches.includes(true)) return;
      const last = piece.first + piece.count - 1;
      for (let place = 0; place < piece.count; place++) {
        for (let i = starts[place]; i < starts[place + 1]; i++) {
          if (!matches[of[i]]) continue;
          flags[last - place] = 1;
          break;
        }
      }
    }
  };

  function readWords({ count, words, counts, of }) {
    const each = view.columnOf(counts, count);
    const starts = new Uint32Array(count + 1);
    for (let place = 0; place < count; place++) starts[place + 1] = starts[place] + each[place];
    return { words: words.map((word) => word.toLowerCase()), starts, of: view.columnOf(of, starts[count]) };
  }
})(globalThis.zuView = globalThis.zuView || {});
