// The phasor diagram and the symmetrical components of one circuit at one cursor.
(function (view) {
  'use strict';

  const phases = ['a', 'b', 'c', '0'];
  const radius = 118;

  // Circuits that have three phases of a quantity: [{name, U: [a, b, c, 0], I: [...]}], missing ones undefined.
  view.phaseCircuits = function (groups) {
    const circuits = [];
    for (const [name, channels] of groups) {
      const find = (quantity) => phases.map((role) => channels.find((channel) => channel.quantity === quantity && channel.role === role));
      const circuit = { name, U: find('U'), I: find('I') };
      if (['U', 'I'].some((quantity) => circuit[quantity].slice(0, 3).every(Boolean))) circuits.push(circuit);
    }
    return circuits;
  };

  const sequenceNames = { U: ['U1', 'U2', '3U0'], I: ['I1', 'I2', '3I0'] };

  const methods = {
    fourier: { phasor: view.reading, sequences: view.sequences },
    report: { phasor: view.reportPhasor, sequences: view.reportSequences },
  };

  // [{name, unit, module, angle, direct, reason}] of the phases, and of the sequences where there are three phases alike.
  view.circuitValues = function (circuit, method, periods, sample) {
    const { phasor, sequences } = methods[method];
    const rows = { phases: [], sequences: [] };
    for (const quantity of ['U', 'I']) {
      for (const channel of circuit[quantity])
        if (channel) rows.phases.push({ channel, quantity, name: view.shortName(channel), unit: channel.shownUnit, ...phasor(periods, channel, sample) });
      const three = circuit[quantity].slice(0, 3);
      if (!three.every((channel) => channel && channel.shownUnit === three[0].shownUnit)) continue;
      sequences(periods, three, sample).forEach((value, index) =>
        rows.sequences.push({ quantity, name: sequenceNames[quantity][index], unit: three[0].shownUnit, ...value }));
    }
    return rows;
  };

  // A place for a label near x, y where none is yet.
  function freePlace(labels, x, y) {
    const [wide, high] = [28, 13];
    while (labels.some((other) => Math.abs(other.x - x) < wide && Math.abs(other.y - y) < high)) y += high;
    labels.push({ x, y });
    return { x, y };
  }

  function arrow(svg, row, length, turn, labels) {
    const angle = ((row.angle - turn) * Math.PI) / 180;
    const [x, y] = [length * Math.cos(angle), -length * Math.sin(angle)];
    const color = `var(${row.channel.color})`;
    const group = view.svg('g', { class: `phasor ${row.quantity}`, style: `--trace: ${color}` }, svg);
    view.svg('line', { x1: 0, y1: 0, x2: x.toFixed(2), y2: y.toFixed(2) }, group);
    if (length > 8) {
      const head = [[0, 0], [-9, 3.6], [-9, -3.6]].map(([along, across]) => [
        x + along * Math.cos(angle) + across * Math.sin(angle), y - along * Math.sin(angle) + across * Math.cos(angle)]);
      view.svg('path', { d: `M${head.map((point) => point.map((part) => part.toFixed(2)).join(' ')).join('L')}Z` }, group);
    }
    if (length < 14) return;
    const place = freePlace(labels, x + 14 * Math.cos(angle), y - 12 * Math.sin(angle) + 4);
    view.svg('text', { x: place.x.toFixed(1), y: place.y.toFixed(1) }, group).textContent = row.name;
  }

  // Voltages fill the circle, currents two thirds of it: each quantity has its own scale.
  function diagram(rows, turn) {
    const size = radius + 32;
    const svg = view.svg('svg', { viewBox: `${-size} ${-size} ${2 * size} ${2 * size}`, class: 'diagram', role: 'img' });
    for (const part of [1, 2 / 3, 1 / 3]) view.svg('circle', { r: (radius * part).toFixed(1) }, svg);
    view.svg('path', { d: `M${-radius} 0H${radius}M0 ${-radius}V${radius}`, class: 'cross' }, svg);
    const labels = [];
    for (const [quantity, reach] of [['U', radius], ['I', (radius * 2) / 3]]) {
      const own = rows.filter((row) => row.quantity === quantity && Number.isFinite(row.module));
      const largest = Math.max(...own.map((row) => row.module));
      for (const row of own) if (Number.isFinite(row.angle - turn)) arrow(svg, row, largest > 0 ? (row.module / largest) * reach : 0, turn, labels);
    }
    return svg;
  }

  const against = (angle, turn) => (turn === 0 ? angle : (angle - turn + 720) % 360);

  function table(rows, turn, id) {
    const body = document.createElement('table');
    body.className = 'values';
    body.id = id;
    for (const row of rows) {
      const line = body.insertRow();
      const name = document.createElement('th');
      name.textContent = row.name;
      if (row.channel) name.style.setProperty('--trace', `var(${row.channel.color})`);
      if (row.channel) name.className = 'name';
      line.append(name);
      const angle = view.angle(against(row.angle, turn));
      const module = Number.isFinite(row.module) ? view.decimal(row.module, 3) : '—';
      for (const text of [module, row.unit, angle, view.direct(row.direct)]) line.insertCell().textContent = text;
      line.dataset.module = row.module;
      line.dataset.angle = row.angle;
    }
    return body;
  }

  view.Phasors = class {
    constructor(parent, groups, periods, started, changed) {
      this.parent = parent;
      this.periods = periods;
      this.circuits = view.phaseCircuits(groups);
      this.changed = changed;
      this.circuit = this.circuits.find((circuit) => circuit.name === started) || this.circuits[0];
      this.method = 'fourier';
      this.againstUa = false;
    }

    build() {
      this.parent.textContent = '';
      this.title = document.createElement('h3');
      this.title.textContent = view.text('phasors');
      this.values = document.createElement('div');
      this.why = document.createElement('ul');
      this.why.id = 'why';
      if (!this.circuit) {
        this.values.textContent = view.text('noPhases');
        this.parent.append(this.title, this.values, this.why);
        return;
      }
      const names = this.circuits.map((circuit) => circuit.name || view.text('noCircuit'));
      this.parent.append(
        this.title,
        this.choice('circuit', '', names, this.circuits.indexOf(this.circuit), (index) => { this.circuit = this.circuits[index]; }),
        this.choice('method', view.text('method'), [view.text('methodFourier'), view.text('methodReport')], this.method === 'fourier' ? 0 : 1,
          (index) => { this.method = ['fourier', 'report'][index]; }),
        this.reference(), this.why, this.values, view.copyTable(() => this.rowsToCopy(), view.text('phasors')));
    }

    // Names of circuits are long: theirs has no title beside it.
    choice(key, title, names, selected, choose) {
      const label = document.createElement('label');
      label.textContent = title;
      const select = document.createElement('select');
      select.id = `choice-${key}`;
      select.setAttribute('aria-label', view.text(key));
      for (const name of names) select.append(new Option(name));
      select.selectedIndex = selected;
      select.addEventListener('change', () => {
        choose(select.selectedIndex);
        this.changed();
      });
      label.append(select);
      return label;
    }

    reference() {
      const label = document.createElement('label');
      label.className = 'check';
      const box = Object.assign(document.createElement('input'), { type: 'checkbox', id: 'reference', checked: this.againstUa });
      box.addEventListener('change', () => {
        this.againstUa = box.checked;
        this.changed();
      });
      label.append(box, document.createTextNode(view.text('reference')));
      return label;
    }

    // The values at a cursor; what keeps some from being there is added to the reasons, which are then listed.
    draw(sample, cursor, reasons) {
      const rows = this.circuit ? view.circuitValues(this.circuit, this.method, this.periods, sample) : { phases: [] };
      for (const row of rows.phases) reasons.add(cursor, row.reason, row.channel);
      this.why.replaceChildren(...reasons.lines().map((line) => Object.assign(document.createElement('li'), { textContent: line })));
      if (!this.circuit) return;
      const reference = rows.phases.find((row) => row.quantity === 'U' && row.channel.role === 'a');
      const turn = this.againstUa ? (reference ? reference.angle : NaN) : 0; // without Ua no angle is against it
      const method = this.method === 'report' ? ` · ${view.text('methodReport')}` : '';
      this.title.textContent = `${view.text('phasors')} · ${view.text('cursor').toLowerCase()} ${cursor + 1}${method}`;
      this.shown = [...rows.phases, ...rows.sequences].map((row) => ({ ...row, angle: against(row.angle, turn) }));
      const heading = document.createElement('h4');
      heading.textContent = view.text('sequences');
      this.values.replaceChildren(diagram(rows.phases, turn), table(rows.phases, turn, 'phaseValues'), heading, table(rows.sequences, turn, 'sequenceValues'));
    }

    // Phases and sequences as they are shown, with all their digits.
    rowsToCopy() {
      const head = [view.text('phasors'), view.text('valuesMagnitude'), view.text('unit'), `${view.text('angle')}, °`, view.text('valuesDirect')];
      return [head, ...this.shown.map(({ name, module, unit, angle, direct }) => [name, view.copiedNumber(module), unit, view.copiedNumber(angle), view.copiedNumber(direct)])];
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
