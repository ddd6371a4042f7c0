// The kind of a fault: its phases, in words and in their colours.
(function (view) {
  'use strict';

  view.addTexts({ en: { answerEarth: 'earth' }, ru: { answerEarth: 'земля' } });

  view.phasesOf = (kind) => [...kind].filter((letter) => letter !== 'G');
  view.hasEarth = (kind) => kind.includes('G');

  // "A–B–earth"
  view.kindText = (kind) => [...view.phasesOf(kind), ...(view.hasEarth(kind) ? [view.text('answerEarth')] : [])].join('–');

  // The same with each letter in the colour of its phase.
  view.kindElement = function (kind) {
    const element = view.html('span', { className: 'faultKind' });
    view.phasesOf(kind).forEach((letter, index) => {
      if (index > 0) element.append('–');
      const phase = view.html('b', { textContent: letter });
      phase.style.color = `var(--phase${letter})`;
      element.append(phase);
    });
    if (view.hasEarth(kind)) element.append(`–${view.text('answerEarth')}`);
    return element;
  };
})(globalThis.zuView = globalThis.zuView || {});
