// Where the page opens: on the circuit with the fault, at the time of the fault.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      toFault: 'Fault', faultHint: 'Show the fault: from three periods before its onset to after its clearing (T)',
      faultedHint: 'The faulted circuit', startedHint: 'The circuit that started the recorder',
      otherDiscrete: 'Other discrete channels',
    },
    ru: {
      toFault: 'КЗ', faultHint: 'Показать КЗ: от трёх периодов до начала и до отключения (T)',
      faultedHint: 'Повреждённое присоединение', startedHint: 'Присоединение, по которому пустился регистратор',
      otherDiscrete: 'Остальные дискретные каналы',
    },
  });

  // The circuit of data.answer with the fault; null without one.
  view.faultedCircuit = (answer) => (answer.faulted === null ? null : answer.circuits[answer.faulted]);

  // Milliseconds of the fault's onset and clearing; the onset twice where the record ends first. Null where there is no
  // fault in the samples of the page.
  view.faultTimes = function (answer, frame) {
    const { fault } = answer.summary;
    if (!fault) return null;
    const from = 1000 * fault.onset;
    if (!(from >= frame.ends[0] && from <= frame.ends[1])) return null;
    return { from, to: fault.clearing === null ? from : 1000 * fault.clearing };
  };

  // Moves the group of the faulted circuit to the front and gives it the tracks of its own channels that change.
  view.faultedFirst = function (groups, circuit, states) {
    if (!circuit) return groups;
    const own = groups.find((group) => group.circuit === circuit.name);
    if (!own) return groups;
    own.isFaulted = true;
    own.tracks = view.inOrderOfChange(circuit.states.map((index) => states[index]));
    return [own, ...groups.filter((group) => group !== own)];
  };

  // The loops that show a kind of fault: of one phase to earth, of two phases that between them and with earth theirs too, of three phases
  // those between them.
  function loopsOfKind(kind) {
    const loops = ['AB', 'BC', 'CA'].filter((loop) => [...loop].every((phase) => kind.includes(phase)));
    if (loops.length === 3 || !kind.endsWith('G')) return loops;
    return [...loops, ...[...kind.slice(0, -1)].map((phase) => `${phase}G`)];
  }

  // Those of all kinds that the fault of data.answer.summary has; without a fault those between phases.
  view.loopsOfFault = function ({ fault }) {
    const wanted = (fault ? fault.parts.map(({ kind }) => kind) : ['ABC']).flatMap(loopsOfKind);
    return view.quantities.loops.filter((loop) => wanted.includes(loop));
  };

  const outline = 'M8.5 .5 2.5 9h4L5 15.5 12 6.5H7.5z';

  // The bolt after the name of the faulted circuit.
  view.faultBolt = function () {
    const drawing = view.svg('svg', { viewBox: '0 0 14 16' });
    view.svg('path', { d: outline }, drawing);
    return view.html('span', { className: 'bolt', title: view.text('faultedHint') }, drawing);
  };
})(globalThis.zuView = globalThis.zuView || {});
