// The small picture of a fault: currents above, voltages below, in the colours of the phases.
(function (view) {
  'use strict';

  const letters = 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_';
  const middle = 31;  // the letter of zero
  const missing = 63;
  const values = new Int8Array(128);
  [...letters].forEach((letter, value) => { values[letter.charCodeAt(0)] = value; });

  // The texts of the places of columns or levels, which are the same for all pictures of a size.
  const places = new Map();
  function placesOf(name, count, of) {
    const key = `${name} ${count}`;
    if (!places.has(key)) places.set(key, Array.from({ length: count }, (_, index) => of(index).toFixed(1)));
    return places.get(key);
  }

  // A wave's letters as a line in an area.
  function lineOf(wave, { y, width, height }) {
    const xs = placesOf(width, wave.length, (column) => (column * width) / Math.max(wave.length - 1, 1));
    const ys = placesOf(`${y} ${height}`, 2 * middle + 1, (value) => y + height / 2 - ((value - middle) * height) / 2 / middle);
    let line = '';
    let mark = 'M';
    for (let column = 0; column < wave.length; column++) {
      const value = values[wave.charCodeAt(column) & 127];
      if (value === missing) {
        mark = 'M';
        continue;
      }
      line += `${mark}${xs[column]} ${ys[value]}`;
      mark = 'L';
    }
    return line;
  }

  // picture: {from, to, current, voltage, waves}; size: {width, height}
  view.faultDrawing = function (picture, { width, height }) {
    const drawing = view.svg('svg', { width, height, viewBox: `0 0 ${width} ${height}`, role: 'img', class: 'waves' });
    drawing.setAttribute('aria-label', view.text('pictureText', view.quantity(picture.current, 'ampere'), view.quantity(picture.voltage, 'volt')));
    const waves = picture.waves.split(' ');
    const half = (height - 2) / 2;
    if (picture.from < 0 && picture.to > 0) {
      const x = ((-picture.from / (picture.to - picture.from)) * width).toFixed(1);
      view.svg('path', { d: `M${x} 0V${height}`, class: 'trigger' }, drawing);
    }
    [0, half + 2].forEach((top, strip) => {
      view.svg('path', { d: `M0 ${(top + half / 2).toFixed(1)}H${width}`, class: 'zero' }, drawing);
      ['A', 'B', 'C'].forEach((phase, index) => {
        const wave = waves[strip * 3 + index] || '';
        if (wave) view.svg('path', { d: lineOf(wave, { y: top + 1, width, height: half - 2 }), class: `phase${phase}` }, drawing);
      });
    });
    return drawing;
  };

  // The pictures of the entries, whose pieces are loaded when one of them is seen.
  view.Pictures = class {
    constructor(entries, most, trouble) {
      Object.assign(this, { entries, most, trouble });
      this.loaded = new Map(); // by the piece's name
    }

    // The picture of an entry; undefined if it has to be loaded first, null if there is none.
    of(entry) {
      if (this.entries.pictured[entry] === 0) return null;
      const data = this.loaded.get(this.nameOf(entry));
      if (!data) return undefined;
      const place = this.entries.faultNumber[entry] % this.most;
      const one = (column) => view.columnOf(column, data.count)[place];
      const number = (column) => (one(column) === null ? NaN : one(column));
      return { from: one(data.from), to: one(data.to), current: number(data.current), voltage: number(data.voltage), waves: one(data.waves) };
    }

    nameOf(entry) { return this.entries.pieceOf(entry).pictures[Math.floor(this.entries.faultNumber[entry] / this.most)]; }

    // Loads it, then calls a function.
    load(entry, then) {
      const name = this.nameOf(entry);
      view.loadPiece(name).then((data) => {
        this.loaded.set(name, data);
        then();
      }).catch(this.trouble);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
