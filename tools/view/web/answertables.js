// The tables of the first sheet: the course of the fault, its distance by each method, magnitudes.
(function (view) {
  'use strict';

  const moments = ['before', 'during', 'after'];
  const momentNames = { before: 'answerBefore', during: 'answerDuring', after: 'answerAfter' };
  const methodNames = { reactance: 'answerMethodReactance', takagi: 'answerMethodTakagi', modifiedTakagi: 'answerMethodModifiedTakagi' };

  // A table with a line of heads; columns: [text, class]. Rows are lists of texts or elements.
  view.plainTable = function (columns, rows, className) {
    const table = view.html('table', { className: `plain ${className}` });
    table.createTHead().append(view.html('tr', {}, ...columns.map(([textContent, name = '']) => view.html('th', { textContent, className: name, scope: 'col' }))));
    table.createTBody().append(...rows.map((cells) => view.html('tr', {}, ...cells.map((cell, index) => view.html('td', { className: columns[index][1] || '' }, cell)))));
    return table;
  };

  const number = (value, decimals) => (value === null ? '—' : view.decimal(value, decimals));
  const range = ({ from, to }, decimals, factor = 1) => `${number(from * factor, decimals)} … ${number(to * factor, decimals)}`;

  // The method that counts is marked. A range stands in a line of its own.
  view.distanceTable = function (fault, line) {
    const methods = Object.keys(methodNames).filter((method) => fault.distance && fault.distance[method]);
    const rows = methods.map((method) => {
      const { km, percent, resistance } = fault.distance[method];
      const name = view.html('span', { textContent: view.text(methodNames[method]) });
      if (method === fault.best) name.append(view.html('b', { className: 'badge', textContent: view.text('answerBest') }));
      return [name, number(km, 2), number(percent, 1), number(resistance, 2)];
    });
    if (fault.range) rows.push([view.text('answerRangeRow'), range(fault.range, 2, line.length / 100), range(fault.range, 1), '']);
    const table = view.plainTable([[view.text('answerHeadMethod')], [view.text('answerHeadKm'), 'number'], [view.text('answerHeadPercent'), 'number'], [view.text('answerHeadResistance'), 'number']], rows, 'distances');
    methods.forEach((method, index) => table.tBodies[0].rows[index].classList.toggle('best', method === fault.best));
    return table;
  };

  // What it was at first, what it became, and whether it came back.
  view.partsTable = function (fault) {
    const rows = fault.parts.map((part, index) => {
      const kind = view.html('span', {}, view.kindElement(part.kind));
      if (part.afterReclosing) kind.append(view.html('span', { className: 'quiet', textContent: ` ${view.text('answerAfterReclosing')}` }));
      const best = part.best ? part.distance[part.best] : null;
      return [String(index + 1), kind, view.duration(part.onset - fault.onset),
        part.clearing === null ? view.text('answerLasts') : view.duration(part.clearing - part.onset), best ? number(best.km, 1) : '—', best ? number(best.percent, 1) : '—'];
    });
    return view.plainTable([[view.text('answerHeadPart')], [view.text('answerHeadKind')], [view.text('answerHeadFrom'), 'number'], [view.text('answerHeadLasted'), 'number'],
      [view.text('answerHeadKm'), 'number'], [view.text('answerHeadPercent'), 'number']], rows, 'parts');
  };

  // Volts or amperes as the channel is shown.
  const shown = (channel, value) => value / channel.base / (channel.inKilo ? 1000 : 1);

  view.magnitudeText = (channel, value) => view.inLanguage(view.number(shown(channel, value)));

  // Magnitude and angle; what is too small to be shown has no angle.
  function polarTexts(channel, value) {
    if (!value) return ['—', '—'];
    const magnitude = view.magnitudeText(channel, value[0]);
    return [magnitude, /[1-9]/.test(magnitude) ? view.angle((value[1] + 360) % 360) : '—'];
  }

  // shownMoments: those that the record has, of before, during and after.
  view.magnitudeTable = function (phasors, analog, shownMoments) {
    const table = view.html('table', { className: 'plain magnitudes' });
    const head = (textContent, columns) => view.html('th', { textContent, colSpan: columns, className: columns > 1 ? 'number' : '', scope: 'col' });
    const isFault = shownMoments.length > 1;
    table.createTHead().append(view.html('tr', {}, head(view.text('answerHeadChannel'), 1), head(view.text('answerHeadUnit'), 1),
      ...shownMoments.map((moment) => head(view.text(isFault ? momentNames[moment] : 'answerAtTrigger'), 2))));
    table.createTBody().append(...phasors.map((one) => {
      const channel = analog[one.channel];
      const name = view.html('td', {}, view.html('span', { className: 'name', textContent: view.shortName(channel), title: channel.name }));
      name.firstChild.style.setProperty('--trace', `var(${view.colorName(channel, one.channel)})`);
      const values = shownMoments.flatMap((moment) => polarTexts(channel, one[moment]));
      const row = view.html('tr', {}, name, view.html('td', { className: 'quiet', textContent: channel.shownUnit }),
        ...values.map((textContent, index) => view.html('td', { className: index % 2 ? 'number angle' : 'number', textContent })));
      row.dataset.channel = one.channel;
      return row;
    }));
    return table;
  };

  view.momentsOf = (phasors) => moments.filter((moment) => phasors.some((one) => one[moment]));
})(globalThis.zuView = globalThis.zuView || {});
