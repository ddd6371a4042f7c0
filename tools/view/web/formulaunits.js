// The units of formulas. A unit is {V, A, s: exponents} of volt, ampere and second, or {other: 'Hz'}; a number that no
// channel has a part in has none of its own ({}), and null is one that cannot be said.
(function (view) {
  'use strict';

  const symbols = { V: ['V', 'В'], A: ['A', 'А'], s: ['s', 'с'] };
  const named = { 'V1 A1': ['VA', 'ВА'], 'V1 A-1': ['Ω', 'Ом'] };
  const digits = { 2: '²', 3: '³', 4: '⁴' };

  function ofChannel({ unit }) {
    const match = /^[mмkKкMМ]?([VВAА])$/.exec(unit);
    if (!match) return { other: unit };
    return symbols.V.includes(match[1]) ? { V: 1 } : { A: 1 };
  }

  const exponents = (unit) => Object.keys(symbols).map((symbol) => unit[symbol] || 0);
  const isPlain = (unit) => !unit.other && exponents(unit).every((exponent) => exponent === 0);
  const isSame = (one, two) => one.other === two.other && exponents(one).every((exponent, i) => exponent === exponents(two)[i]);

  const fromExponents = (list) => Object.fromEntries(Object.keys(symbols).map((symbol, i) => [symbol, list[i]]));

  function powerOf(unit, power) {
    if (isPlain(unit)) return {};
    return unit.other ? null : fromExponents(exponents(unit).map((exponent) => exponent * power));
  }

  function product(one, two) {
    if (isPlain(one)) return two;
    if (isPlain(two)) return one;
    return one.other || two.other ? null : fromExponents(exponents(one).map((exponent, i) => exponent + exponents(two)[i]));
  }

  // A number added to a voltage counts as volts.
  function common(units) {
    const [first, ...more] = units.filter((unit) => !isPlain(unit));
    return more.every((unit) => isSame(first, unit)) ? first || {} : null;
  }

  const rules = {
    '*': ([one, two]) => product(one, two),
    '/': ([one, two]) => { const under = powerOf(two, -1); return isSame(one, two) ? {} : under && product(one, under); },
    '^': ([base], [, power]) => (isPlain(base) ? {} : power.kind === 'number' ? powerOf(base, power.value) : null),
    sqr: ([of]) => powerOf(of, 2), sqrt: ([of]) => powerOf(of, 0.5),
    d: ([of]) => product(of, { s: -1 }), int: ([of]) => product(of, { s: 1 }),
    delay: ([of]) => of, turn: ([of]) => of,
  };

  function unitOf(tree) {
    if (tree.kind === 'number') return {};
    if (tree.kind === 'channel') return tree.channel.isCalculated ? tree.channel.formulaUnit : ofChannel(tree.channel);
    const units = tree.parts.map(unitOf);
    if (units.some((unit) => unit === null)) return null;
    return (rules[tree.name] || common)(units, tree.parts);
  }

  function written(unit, script) {
    const key = Object.keys(symbols).filter((symbol) => unit[symbol]).map((symbol) => `${symbol}${unit[symbol]}`).join(' ');
    if (named[key]) return named[key][script];
    const part = (sign) => Object.keys(symbols).filter((symbol) => unit[symbol] * sign > 0).map((symbol) => {
      const exponent = unit[symbol] * sign;
      return symbols[symbol][script] + (exponent === 1 ? '' : digits[exponent] || `^${exponent}`);
    }).join('·');
    return part(1) + (part(-1) ? `${part(1) ? '' : '1'}/${part(-1)}` : '');
  }

  // {unit, kiloUnit, formulaUnit} of a tree's values, written as those of the record are; kiloUnit is unit where there is
  // no prefix to be had.
  view.formulaUnits = function (tree) {
    const unit = unitOf(tree);
    if (unit === null || isPlain(unit) || unit.other) return { unit: (unit && unit.other) || '', kiloUnit: (unit && unit.other) || '', formulaUnit: unit };
    if (exponents(unit).some((exponent) => !Number.isInteger(exponent))) return { unit: '', kiloUnit: '', formulaUnit: null };
    const isCyrillic = view.formulaChannels(tree).some((channel) => /[А-я]/.test(channel.unit));
    const text = written(unit, isCyrillic ? 1 : 0);
    const hasPrefix = /^(V|A|VA|Ω|В|А|ВА|Ом)$/.test(text);
    return { unit: text, kiloUnit: hasPrefix ? (isCyrillic ? 'к' : 'k') + text : text, formulaUnit: unit };
  };
})(globalThis.zuView = globalThis.zuView || {});
