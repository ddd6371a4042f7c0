// Calculated channels: formulas with names, kept in the page's address, whose values are calculated when they are first
// seen.
(function (view) {
  'use strict';

  const mostFormulas = 30;

  // Where a text has a character that is not in a name in quotation marks; -1 if nowhere.
  function placeOf(character, text) {
    const [before] = text.replace(/"[^"]*"/g, (name) => '"'.repeat(name.length)).split(character);
    return before.length < text.length ? before.length : -1;
  }

  // "name = formula" as {name, formula, at}, the formula being at a place of the text. Without a name it is its own.
  function namedFormula(text) {
    const sign = placeOf('=', text);
    const formula = text.slice(sign + 1);
    return { name: text.slice(0, Math.max(sign, 0)).trim() || formula.trim(), formula, at: sign + 1 };
  }

  // Lines of the address: "name = formula @ circuit".
  function lineOf(written) {
    const sign = placeOf('@', written);
    return sign < 0 ? { text: written.trim(), circuit: '' } : { text: written.slice(0, sign).trim(), circuit: written.slice(sign + 1).trim() };
  }

  const writtenLine = ({ text, circuit }) => text + (circuit ? ` @ ${circuit}` : '');

  view.CalculatedChannel = class extends view.ComputedChannel {
    // record: see formula.js
    constructor(name, index, tree, record) {
      super({ name, circuit: '', ...view.formulaUnits(tree) }, index, 0);
      this.isCalculated = true;
      this.isWave = view.formulaChannels(tree).every((channel) => channel.isWave);
      this.due = () => view.formulaValues(tree, record);
    }

    calculate() {
      if (!this.due) return;
      const { due } = this;
      this.due = null;
      this.setValues(due());
      view.chooseUnits([this]);
    }

    get codes() {
      this.calculate();
      return this.decoded;
    }

    get ends() {
      this.calculate();
      return super.ends;
    }
  };

  // The record as formulas see it: all values in volts, amperes and seconds.
  class FormulaRecord {
    constructor(axis, periods) {
      this.axis = axis;
      this.period = periods.milliseconds / 1000;
    }

    get times() {
      this.known = this.known || Float64Array.from({ length: this.axis.count }, (_, sample) => this.axis.timeOf(sample) / 1000);
      return this.known;
    }

    valuesOf(channel) {
      const factor = channel.factor * (channel.base || 1);
      return Float64Array.from(channel.codes, (code) => (channel.a * code + channel.b) * factor);
    }
  }

  view.Calculated = class {
    constructor(page, button, panel) {
      this.page = page;
      this.names = new view.ChannelNames(page.analog, page.data.answer.circuits);
      this.record = new FormulaRecord(page.axis, page.periods);
      this.lines = (view.address.get('calc') || '').split('\n').slice(0, mostFormulas).map(lineOf).filter(({ text }) => text);
      this.compile();
      page.extensions.push((groups, layout) => this.extend(groups, layout));
      this.panel = new view.FormulaPanel(this, button, panel);
    }

    get circuits() { return [...this.names.groups.keys()]; }

    // The circuit that a new formula is of.
    get usualCircuit() {
      const { page } = this;
      const wanted = [page.faulted && page.faulted.name, page.data.startedCircuit];
      return wanted.find((name) => this.names.groups.has(name)) || this.circuits[0] || '';
    }

    // The tree of a line's formula, which may use the channels of the lines before; throws a FormulaError with places in
    // the line's text.
    parse({ text, circuit }, more) {
      const { formula, at } = namedFormula(text);
      try {
        if (circuit && !this.names.groups.has(circuit)) throw new view.FormulaError('formulaCircuit', 0, formula.length, circuit);
        return view.parseFormula(formula, (name, isQuoted) => this.names.find(name, isQuoted, circuit, more));
      } catch (error) {
        if (!(error instanceof view.FormulaError)) throw error;
        throw new view.FormulaError(error.key, error.from + at, error.to + at, ...error.values);
      }
    }

    // What is wrong with a line; null if nothing.
    errorOf(line) {
      const place = this.lines.indexOf(line);
      try {
        this.parse(line, this.channels.filter((channel) => place < 0 || this.lines.indexOf(channel.line) < place));
        return null;
      } catch (error) {
        return error;
      }
    }

    compile() {
      this.channels = [];
      for (const [index, line] of this.lines.entries()) {
        try {
          const channel = new view.CalculatedChannel(namedFormula(line.text).name, `formula${index}`, this.parse(line, this.channels), this.record);
          this.channels.push(Object.assign(channel, { line }));
        } catch (error) {
          if (!(error instanceof view.FormulaError)) throw error;
        }
      }
    }

    // After a change of the lines.
    apply() {
      this.compile();
      view.address.set('calc', this.lines.map(writtenLine).join('\n'));
      this.page.buildStrips();
      this.page.redraw();
    }

    extend(groups, layout) {
      if (this.channels.length > 0) groups.unshift({ circuit: view.text('calculated'), strips: view.splitIntoStrips(this.channels, layout) });
    }

    build() { this.panel.build(); }
  };
})(globalThis.zuView = globalThis.zuView || {});
