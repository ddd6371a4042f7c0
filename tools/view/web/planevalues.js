// What stands beside the plane: the impedances at both cursors, and what they rest on.
(function (view) {
  'use strict';

  const angleOf = ([r, x]) => (Math.atan2(x, r) * 180) / Math.PI;
  const inDegrees = (degrees) => `${view.decimal(degrees, 1)}°`;

  function headOf(line) {
    const row = view.html('tr');
    const heads = [['planeLoop'], ['planeR'], ['planeX'], ['planeModule'], ['planeAngle'], ...(line ? [['planeDistance', 'planeDistanceHint']] : [])];
    for (const [key, hint] of heads) row.append(view.html('th', { textContent: view.text(key), title: hint ? view.text(hint) : '' }));
    return row;
  }

  // R, X, |Z|, angle and, on a line, kilometres; dashes where the loop has no impedance.
  function cellsOf(point, line) {
    if (!point) return Array(line ? 5 : 4).fill('—');
    const km = line ? [view.number(point[1] / line.x1)] : [];
    return [view.number(point[0]), view.number(point[1]), view.number(Math.hypot(...point)), inDegrees(angleOf(point)), ...km];
  }

  // A table with two rows for each loop, one for each cursor. cursors: [{loop: [r, x] or null}]
  view.planeTable = function (loops, cursors, loci) {
    const table = view.html('table', { className: 'planeValues' });
    const { line } = loci.circuit;
    table.append(headOf(line));
    for (const loop of loops)
      cursors.forEach((points, cursor) => {
        const row = view.html('tr', { className: `cursor${cursor + 1}` });
        row.dataset.loop = loop;
        const name = view.html('th', { className: 'name', textContent: cursor === 0 ? view.planeLoopName(loop) : '' });
        name.style.setProperty('--trace', `var(${view.planeLoops[loop].color})`);
        row.append(name, ...cellsOf(points[loop], line).map((text) => view.html('td', { textContent: text })));
        if (!points[loop] && loci.limit > 0) row.title = view.text('planeBelowLimit', view.number(loci.limit));
        table.append(row);
      });
    return table;
  };

  function voltagesNote({ circuit, page }) {
    const [channel] = circuit.voltages;
    if (channel.circuit === circuit.name) return view.text('planeOwnVoltages');
    return view.text('planeOtherVoltages', channel.circuit || page.analog[channel.index].name);
  }

  function lineNotes(line) {
    if (!line) return [view.text('planeNoLine')];
    const { length, r1, x1, k0 } = line;
    const text = view.text('planeLine', view.tick(length), view.number(length * r1), view.number(length * x1), view.number(Math.hypot(...k0)), inDegrees(angleOf(k0)));
    return line.zones.length > 0 ? [text] : [text, view.text('planeNoZones')];
  }

  function deadNote(loci, loops) {
    if (loci.limit === 0) return [view.text('planeNoCurrent')];
    const [first, end] = loci.span();
    const part = loci.deadIn(loops) / Math.max((end - first) * loops.length, 1);
    return part > 0 ? [view.text('planeDead', view.number(loci.limit), view.decimal(100 * part, part < 0.1 ? 1 : 0))] : [];
  }

  // Sentences: which voltages, which line, what is drawn and what is left out.
  view.planeNotes = function (loci, loops, spans, kilometres) {
    return [
      voltagesNote(loci), ...lineNotes(loci.circuit.line), ...(spans.length > 0 ? [view.text('planeDots')] : []),
      ...(kilometres === null ? [] : [view.text('planeDiamond', view.number(kilometres))]),
      ...(loci.isReady ? deadNote(loci, loops) : [view.text('planeWaiting')]),
    ];
  };
})(globalThis.zuView = globalThis.zuView || {});
