// The formulas of calculated channels: their grammar, and their values.
//
//     sum      product { ("+" | "-") product }
//     product  signed { ("*" | "/") signed }
//     signed   ("-" | "+") signed | power
//     power    primary [ "^" signed ]
//     primary  number | channel | function "(" sum { "," sum } ")" | "(" sum ")"
//     channel  name | '"' name '"' | "#" number
//
// A parsed formula is a tree: {kind: 'number', value}, {kind: 'channel', channel}, {kind: 'call', name, parts}, where the
// operators are calls too.
(function (view) {
  'use strict';

  const longest = 1000; // characters of a formula
  const deepest = 50;   // parentheses, functions and signs in one another

  // What is wrong: the key and the values of its text, and from where to where in the formula.
  view.FormulaError = class extends Error {
    constructor(key, from, to, ...values) {
      super(key);
      Object.assign(this, { key, from, to, values });
    }

    get text() { return view.text(this.key, ...this.values); }
  };

  const operators = {
    '+': (a, b) => a + b, '-': (a, b) => a - b, '*': (a, b) => a * b, '/': (a, b) => a / b, '^': (a, b) => a ** b,
  };

  // Of each sample on its own. An operand is a number or a list of values.
  const pointwise = {
    ...operators,
    negate: (a) => -a, abs: Math.abs, sqrt: Math.sqrt, sqr: (a) => a * a, min: Math.min, max: Math.max,
  };

  // Functions by name: least and greatest number of arguments; whether the last one must be a number.
  const functions = {
    abs: [1, 1], sqrt: [1, 1], sqr: [1, 1], min: [2, 9], max: [2, 9], d: [1, 1], int: [1, 1], delay: [2, 2, true], turn: [2, 2, true],
  };

  const lexemes = [
    ['space', /\s+/uy], ['number', /(\d+\.?\d*|\.\d+)(e[+-]?\d+)?/iuy], ['name', /\d*[\p{L}_][\p{L}\p{N}_.']*/uy],
    ['number sign', /#\d+/uy], ['quoted', /"[^"]*"/uy], ['sign', /[-+*/^(),]|−|·|×/uy],
  ];
  const plainSigns = { '−': '-', '·': '*', '×': '*' };

  // The longest lexeme at a place: "3I0" is a name, "3e5" a number.
  function lexemeAt(text, from) {
    let found = null;
    for (const [kind, pattern] of lexemes) {
      pattern.lastIndex = from;
      const match = pattern.exec(text);
      if (match && (!found || match[0].length > found.text.length)) found = { kind, text: match[0], from, to: from + match[0].length };
    }
    return found;
  }

  function tokensOf(text) {
    if (text.length > longest) throw new view.FormulaError('formulaLong', longest, text.length, longest);
    const tokens = [];
    for (let at = 0; at < text.length;) {
      const token = lexemeAt(text, at);
      if (!token) throw new view.FormulaError(text[at] === '"' ? 'formulaQuote' : 'formulaSign', at, text[at] === '"' ? text.length : at + 1, text[at]);
      if (token.kind !== 'space') tokens.push({ ...token, text: token.kind === 'sign' ? plainSigns[token.text] || token.text : token.text });
      at = token.to;
    }
    return [...tokens, { kind: 'end', text: '', from: text.length, to: text.length }];
  }

  class Parser {
    // resolve(name, isQuoted): the channel of a name; throws {key, values} where there is none.
    constructor(text, resolve) {
      this.tokens = tokensOf(text);
      this.resolve = resolve;
      this.at = 0;
      this.depth = 0;
    }

    get token() { return this.tokens[this.at]; }

    isSign(signs) { return this.token.kind === 'sign' && signs.includes(this.token.text); }

    take() { return this.tokens[this.at++]; }

    fail(key, { from, to }, ...values) { throw new view.FormulaError(key, from, to, ...values); }

    // What is nested is read by one function calling another: no text may exhaust the stack.
    nested(read) {
      this.depth++;
      if (this.depth > deepest) this.fail('formulaDeep', this.token, deepest);
      const tree = read();
      this.depth--;
      return tree;
    }

    whole() {
      if (this.token.kind === 'end') this.fail('formulaEmpty', this.token);
      const tree = this.sum();
      if (this.isSign(')')) this.fail('formulaClosed', this.token);
      if (this.isSign(',')) this.fail('formulaComma', this.token);
      if (this.token.kind !== 'end') this.fail('formulaOperator', this.token, this.token.text);
      return tree;
    }

    chain(signs, read) {
      let tree = read();
      while (this.isSign(signs)) {
        const { text: name } = this.take();
        tree = { kind: 'call', name, parts: [tree, read()] };
      }
      return tree;
    }

    sum() { return this.chain('+-', () => this.product()); }

    product() { return this.chain('*/', () => this.signed()); }

    signed() {
      if (!this.isSign('+-')) return this.power();
      const isMinus = this.take().text === '-';
      const tree = this.nested(() => this.signed());
      return isMinus ? { kind: 'call', name: 'negate', parts: [tree] } : tree;
    }

    power() {
      const base = this.primary();
      if (!this.isSign('^')) return base;
      this.take();
      return { kind: 'call', name: '^', parts: [base, this.nested(() => this.signed())] };
    }

    primary() {
      const token = this.take();
      if (token.kind === 'number') return this.number(token);
      if (token.kind === 'sign' && token.text === '(') return this.enclosed(token);
      if (token.kind === 'name' && this.isSign('(')) return this.call(token);
      if (['name', 'quoted', 'number sign'].includes(token.kind)) return this.channel(token);
      this.at--;
      return this.fail(token.kind === 'end' ? 'formulaEnd' : 'formulaOperand', token, token.text);
    }

    number(token) {
      const value = Number(token.text);
      if (!Number.isFinite(value)) this.fail('formulaNumber', token, token.text);
      return { kind: 'number', value };
    }

    enclosed(opened) {
      const tree = this.nested(() => this.sum());
      this.close(opened);
      return tree;
    }

    close(opened) {
      if (this.isSign(')')) return this.take();
      if (this.isSign(',')) return this.fail('formulaComma', this.token);
      return this.token.kind === 'end' ? this.fail('formulaOpened', opened) : this.fail('formulaOperator', this.token, this.token.text);
    }

    call(word) {
      const rule = Object.hasOwn(functions, word.text) ? functions[word.text] : null;
      if (!rule) this.fail('formulaFunction', word, word.text, Object.keys(functions).join(', '));
      const opened = this.take();
      const parts = [this.nested(() => this.sum())];
      while (this.isSign(',')) {
        this.take();
        parts.push(this.nested(() => this.sum()));
      }
      const place = { from: word.from, to: this.close(opened).to };
      const [fewest, most, endsInNumber] = rule;
      if (parts.length < fewest || parts.length > most) this.fail('formulaArguments', place, word.text, fewest === most ? fewest : `${fewest}–${most}`, parts.length);
      if (endsInNumber && view.formulaChannels(parts[1]).length > 0) this.fail('formulaConstant', place, word.text);
      return { kind: 'call', name: word.text, parts };
    }

    channel(token) {
      const isQuoted = token.kind === 'quoted';
      try {
        return { kind: 'channel', channel: this.resolve(isQuoted ? token.text.slice(1, -1) : token.text, isQuoted) };
      } catch (error) {
        if (!error.key) throw error;
        return this.fail(error.key, token, ...error.values);
      }
    }
  }

  // The tree of a formula; throws a FormulaError.
  view.parseFormula = (text, resolve) => new Parser(text, resolve).whole();

  // Whether a name can stand in a formula without quotation marks.
  view.isFormulaName = function (name) {
    const token = lexemeAt(name, 0);
    return Boolean(token) && token.kind === 'name' && token.to === name.length;
  };

  // The channels that a tree names.
  view.formulaChannels = function (tree) {
    if (tree.kind === 'channel') return [tree.channel];
    return tree.kind === 'call' ? tree.parts.flatMap(view.formulaChannels) : [];
  };

  // One number for each sample, or a single one where a tree names no channel.
  // record: {times: seconds of the samples, period: seconds, valuesOf(channel): a list of its values in base units}
  function valuesOf(tree, record) {
    if (tree.kind === 'number') return tree.value;
    if (tree.kind === 'channel') return record.valuesOf(tree.channel);
    const parts = tree.parts.map((part) => valuesOf(part, record));
    if (pointwise[tree.name]) return ofEach(pointwise[tree.name], parts, record.times.length);
    return view.alongTime[tree.name](listOf(parts[0], record.times.length), record, parts[1]);
  }

  const listOf = (values, count) => (typeof values === 'number' ? new Float64Array(count).fill(values) : values);

  function ofEach(apply, parts, count) {
    if (parts.every((part) => typeof part === 'number')) return apply(...parts);
    const [first, ...others] = parts.map((part) => listOf(part, count));
    const result = new Float64Array(count);
    if (others.length === 0) for (let i = 0; i < count; i++) result[i] = apply(first[i]);
    for (const [index, other] of others.entries()) {
      const left = index === 0 ? first : result;
      for (let i = 0; i < count; i++) result[i] = apply(left[i], other[i]);
    }
    return result;
  }

  // The values of a tree at all samples, NaN where there is none.
  view.formulaValues = function (tree, record) {
    const count = record.times.length;
    const values = Float64Array.from(listOf(valuesOf(tree, record), count));
    for (let i = 0; i < count; i++) if (!Number.isFinite(values[i])) values[i] = NaN;
    return values;
  };
})(globalThis.zuView = globalThis.zuView || {});
