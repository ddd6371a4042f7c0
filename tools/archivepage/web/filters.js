// Which entries are shown.
(function (view) {
  'use strict';

  const all = { text: '', station: '', circuit: '', show: '', kinds: '', phases: '', longer: '', shorter: '', current: '', from: '', to: '' };

  view.kindGroups = {
    one: ['AG', 'BG', 'CG'], two: ['AB', 'BC', 'CA'], twoEarth: ['ABG', 'BCG', 'CAG'], three: ['ABC', 'ABCG'],
  };
  view.groupNames = { one: 'kindOne', two: 'kindTwo', twoEarth: 'kindTwoEarth', three: 'kindThree' };
  view.groupOfKind = (kind) => Object.keys(view.kindGroups).find((group) => view.kindGroups[group].includes(kind)) || 'three';

  // A number that somebody typed, with a comma or a point; null of anything else.
  view.typedNumber = function (text) {
    const number = text.trim() === '' ? NaN : Number(text.trim().replace(',', '.'));
    return Number.isFinite(number) ? number : null;
  };

  // The settings of the filters, kept in the page's address; each is a text, empty for none.
  view.Filter = class {
    constructor() {
      for (const name of Object.keys(all)) this[name] = view.address.get(name) || '';
    }

    set(name, text) {
      this[name] = text;
      view.address.set(name, text);
    }

    clear() { for (const name of Object.keys(all)) this.set(name, ''); }

    get isEmpty() { return Object.keys(all).every((name) => this[name] === ''); }

    // The members of a list, as "one two".
    listOf(name) { return this[name].split(' ').filter(Boolean); }

    // Adds a member to a list, or removes it.
    toggle(name, member) {
      const list = this.listOf(name);
      this.set(name, (list.includes(member) ? list.filter((one) => one !== member) : [...list, member]).join(' '));
    }
  };

  // For each number of a kind whether it is wanted.
  function wantedKinds(entries, filter) {
    const groups = filter.listOf('kinds').flatMap((group) => view.kindGroups[group] || []);
    const phases = filter.listOf('phases');
    return entries.kinds.words.map((kind) => (groups.length === 0 || groups.includes(kind)) && phases.every((phase) => kind.includes(phase)));
  }

  const states = view.states;
  const shows = {
    fault: (entries) => (entry) => entries.kind[entry] > 0,
    none: (entries) => (entry) => entries.kind[entry] === 0 && !entries.is(entry, states.unread),
    unread: (entries) => (entry) => entries.is(entry, states.unread),
    gone: (entries) => (entry) => entries.is(entry, states.gone),
    wrong: (entries) => (entry) => entries.is(entry, states.wrong),
  };
  view.showNames = { '': 'showAll', fault: 'showFault', none: 'showNone', unread: 'showUnread', gone: 'showGone', wrong: 'showWrong' };

  // Tests of an entry, those of the filters that are set; found: a function from an entry to whether it has the text, or null.
  function testsOf(entries, filter, found) {
    const tests = [];
    const numberOf = (dictionary, word) => (dictionary.numbers.has(word) ? dictionary.numbers.get(word) : -1);
    if (shows[filter.show]) tests.push(shows[filter.show](entries));
    if (filter.station) {
      const station = numberOf(entries.stations, filter.station);
      tests.push((entry) => entries.station[entry] === station);
    }
    if (filter.circuit) {
      const circuit = numberOf(entries.circuits, filter.circuit);
      tests.push((entry) => entries.circuit[entry] === circuit || (entries.kind[entry] > 0 && entries.faultCircuit[entry] === circuit));
    }
    if (filter.kinds || filter.phases) {
      const wanted = wantedKinds(entries, filter);
      tests.push((entry) => entries.kind[entry] > 0 && wanted[entries.kind[entry]]);
    }
    const [longer, shorter, current] = ['longer', 'shorter', 'current'].map((name) => view.typedNumber(filter[name]));
    if (longer !== null) tests.push((entry) => entries.duration[entry] >= longer);
    if (shorter !== null) tests.push((entry) => entries.duration[entry] <= shorter);
    if (current !== null) tests.push((entry) => entries.current[entry] >= current);
    if (found) tests.push(found);
    return tests;
  }

  // The entries that pass: {flags, count, all}; a flag is 1 where only the time is another one, 2 where all fits.
  view.selectEntries = function (entries, filter, found) {
    const flags = new Uint8Array(entries.total);
    const tests = testsOf(entries, filter, found);
    const [from, to] = [view.dayOfText(filter.from), view.dayOfText(filter.to)];
    const isTimed = from !== null || to !== null;
    const [first, last] = [from === null ? -Infinity : from, to === null ? Infinity : to];
    let count = 0;
    entries.forEachStretch((begin, end) => {
      for (let entry = begin; entry < end; entry++) {
        let passes = true;
        for (let i = 0; i < tests.length && passes; i++) passes = tests[i](entry);
        if (!passes) continue;
        const isWithin = !isTimed || (entries.day[entry] >= first && entries.day[entry] <= last && !Number.isNaN(entries.time[entry]));
        flags[entry] = isWithin ? 2 : 1;
        if (isWithin) count++;
      }
    });
    return { flags, count };
  };
})(globalThis.zuView = globalThis.zuView || {});
