// The key figures of a fault, for one glance.
(function (view) {
  'use strict';

  // The largest current among the faulted phases: {channel, value} in amperes, or null.
  function largestCurrent({ phasors, circuits, faulted, summary }) {
    const places = view.phasesOf(summary.fault.kind).map((phase) => circuits[faulted].currents['ABC'.indexOf(phase)]);
    const known = phasors.filter(({ channel, during }) => during && places.includes(channel));
    return known.reduce((most, { channel, during }) => (most && most.value >= during[0] ? most : { channel, value: during[0], phase: 'ABC'[circuits[faulted].currents.indexOf(channel)] }), null);
  }

  function faultFact({ fault }) {
    const before = fault.parts.filter((part) => !part.afterReclosing);
    const note = before.length > 1 ? view.text('answerNoteAtFirst', view.kindText(before[0].kind)) : view.text({ forward: 'answerNoteForward', reverse: 'answerNoteReverse', unknown: 'answerNoteUnknown' }[fault.direction]);
    return { key: 'kind', label: view.text('answerFactFault'), value: view.kindElement(fault.kind), note };
  }

  function distanceFacts({ fault }, line) {
    const facts = [];
    const best = fault.best ? fault.distance[fault.best] : null;
    const range = fault.range ? view.text('answerNoteRange', view.decimal(fault.range.from, 1), view.decimal(fault.range.to, 1)) : '';
    if (best)
      facts.push({ key: 'distance', label: view.text('answerFactDistance'), value: view.text('answerKilometres', view.decimal(best.km, 1)),
        note: range || view.text('answerNoteOfLength', view.decimal(best.percent, 1), view.decimal(line.length, line.length % 1 === 0 ? 0 : 1)) });
    else if (range) facts.push({ key: 'distance', label: view.text('answerFactDistance'), value: '?', note: range });
    if (best && best.resistance !== null)
      facts.push({ key: 'resistance', label: view.text('answerFactResistance'), value: view.text('answerOhms', view.decimal(best.resistance, 1)), note: '' });
    return facts;
  }

  function timeFacts({ fault, operating, frequency }, nominal) {
    const cleared = fault.clearing === null ? null : fault.clearing - fault.onset;
    const periods = cleared === null ? '' : view.text('answerNotePeriods', view.decimal(cleared * (frequency || nominal), 1));
    const facts = [{ key: 'cleared', label: view.text('answerFactCleared'), value: cleared === null ? '—' : view.duration(cleared), note: cleared === null ? view.text('answerLasts') : periods }];
    if (operating.trip !== null) facts.push({ key: 'trip', label: view.text('answerFactTrip'), value: view.duration(operating.trip), note: view.text('answerNoteAfterOnset') });
    if (operating.reclosed !== null)
      facts.push({ key: 'reclosed', label: view.text('answerFactReclosed'), value: view.text(operating.reclosed ? 'answerSuccess' : 'answerNoSuccess'), note: view.text('answerNoteDead', view.duration(operating.deadTime)) });
    return facts;
  }

  // [{key, label, value: text or element, note}] of the fault; what is not known is left out. nominal: Hz
  view.factsOf = function (answer, analog, nominal) {
    const { summary, circuits, faulted } = answer;
    const facts = [faultFact(summary), ...distanceFacts(summary, circuits[faulted].line), ...timeFacts(summary, nominal)];
    const largest = largestCurrent(answer);
    if (largest) {
      const channel = analog[largest.channel];
      facts.splice(1, 0, { key: 'current', label: view.text('answerFactCurrent'), value: `${view.magnitudeText(channel, largest.value)} ${channel.shownUnit}`, note: view.text('answerNoteRms', largest.phase) });
    }
    return facts;
  };
})(globalThis.zuView = globalThis.zuView || {});
