// The sheet of the R-X plane: impedances of a circuit's loops, zones and line, both cursors.
(function (view) {
  'use strict';

  view.PlaneSheet = class {
    constructor(page, element) {
      this.page = page;
      this.element = element;
      this.plane = new view.PlaneView();
      this.isFitted = true; // until it is zoomed or panned
      this.points = [{}, {}];
      this.bar = new view.CursorBar(page);
      const { circuits } = page.data.answer;
      this.choices = circuits.map((circuit, place) => place).filter((place) => circuits[place].currents.slice(0, 3).every((channel) => channel !== null));
      this.loops = this.firstLoops();
      this.known = new Map(); // PlaneLoci by circuit
    }

    // The loops of the fault's kinds, as they are in the address.
    firstLoops() {
      const all = Object.keys(view.planeLoops);
      const kept = (view.address.get('loops') || '').split(',').filter((loop) => all.includes(loop));
      if (kept.length > 0) return kept;
      return view.loopsOfFault(this.page.data.answer.summary);
    }

    // The faulted circuit, else the one that started the recorder, else one with an impedance.
    firstChoice() {
      const { answer, startedCircuit } = this.page.data;
      const named = (name) => this.choices.find((place) => answer.circuits[place].name === name);
      const found = [named(view.address.get('plane')), this.choices.find((place) => place === answer.faulted), named(startedCircuit)];
      return found.concat(this.choices.find((place) => this.lociOf(place).hasVoltages), this.choices[0]).find((place) => place !== undefined);
    }

    lociOf(place) {
      if (!this.known.has(place)) this.known.set(place, new view.PlaneLoci(this.page, place));
      return this.known.get(place);
    }

    build() {
      if (this.page.data.count === 0 || this.choices.length === 0) {
        this.loci = null;
        this.element.replaceChildren(view.html('p', { className: 'quiet', textContent: view.text(this.page.data.count === 0 ? 'empty' : 'planeNoCircuit') }));
        return;
      }
      this.loci = this.loci || this.lociOf(this.firstChoice());
      this.bar.build();
      this.canvas = document.createElement('canvas');
      this.canvas.title = view.text('planeHint');
      this.values = view.html('div', { className: 'scroll' });
      this.notes = view.html('ul', { className: 'notes' });
      this.buildFrame();
      this.pointer = new view.PlanePointer(this, this.canvas);
      this.element.tabIndex = -1;
      this.listenToKeys();
    }

    buildFrame() {
      this.plot = view.html('div', { className: 'planePlot' }, this.canvas, this.tools());
      this.switches = this.loopSwitches();
      this.side = view.html('div', { className: 'planeSide' }, this.circuitChoice(), this.switches, this.values, this.notes);
      this.lack = view.html('p', { className: 'notice' });
      this.element.replaceChildren(this.bar.element, this.lack, view.html('div', { className: 'planeWork' }, this.plot, this.side));
    }

    listenToKeys() {
      if (this.listens) return;
      this.listens = true;
      document.addEventListener('keydown', (event) => { if (!this.element.hidden && this.page.opened === this.element.id) this.pointer.key(event); });
    }

    tools() {
      const tools = view.html('span', { className: 'switch' });
      for (const [text, hint, action] of [[view.text('planeFit'), 'planeFitHint', () => this.fit()], ['+', 'zoomInHint', () => this.zoom(0.5)], ['−', 'zoomOutHint', () => this.zoom(2)]]) {
        const button = view.html('button', { type: 'button', textContent: text, title: view.text(hint) });
        button.addEventListener('click', action);
        tools.append(button);
      }
      return tools;
    }

    circuitChoice() {
      const select = view.html('select', { id: 'planeCircuit' });
      select.setAttribute('aria-label', view.text('circuit'));
      const { circuits } = this.page.data.answer;
      for (const place of this.choices) select.append(new Option(circuits[place].name || view.text('noCircuit')));
      select.selectedIndex = this.choices.indexOf(this.loci.place);
      select.addEventListener('change', () => {
        this.loci = this.lociOf(this.choices[select.selectedIndex]);
        this.isFitted = true;
        view.address.set('plane', this.loci.circuit.name);
        this.changed();
      });
      return select;
    }

    loopSwitches() {
      const group = view.html('div', { className: 'loops' });
      group.setAttribute('aria-label', view.text('planeLoops'));
      for (const loop of Object.keys(view.planeLoops)) {
        const name = view.planeLoopName(loop);
        const button = view.html('button', { className: 'loop', type: 'button', textContent: name, title: view.text('planeLoopHint', name) });
        button.dataset.loop = loop;
        button.style.setProperty('--trace', `var(${view.planeLoops[loop].color})`);
        button.setAttribute('aria-pressed', this.loops.includes(loop));
        button.addEventListener('click', () => this.switchLoop(loop, button));
        group.append(button);
      }
      return group;
    }

    switchLoop(loop, button) {
      this.loops = Object.keys(view.planeLoops).filter((name) => this.loops.includes(name) !== (name === loop));
      button.setAttribute('aria-pressed', this.loops.includes(loop));
      view.address.set('loops', this.loops.join(','));
      this.changed();
    }

    changed() { this.page.request('values'); }

    // The point of a locus near a place on the canvas becomes the sample of a cursor.
    take(place, within, cursor, loops) {
      const found = this.loci.isReady && this.loci.nearest(loops, this.plane, place, within);
      if (found) this.page.cursors.set(cursor, found.sample);
    }

    pan(x, y) {
      this.isFitted = false;
      this.plane.pan(x, y);
      this.changed();
    }

    zoom(factor, x = this.plane.centre[0], y = this.plane.centre[1]) {
      this.isFitted = false;
      this.plane.zoom(factor, x, y);
      this.changed();
    }

    fit() {
      this.isFitted = true;
      this.fittedTo = '';
      this.changed();
    }

    // Zones and line, the fault's loci, and where there is neither whatever is in the shown span.
    fitPoints() {
      const { line } = this.loci.circuit;
      const points = [[0, 0]];
      if (line) points.push([line.length * line.r1, line.length * line.x1], ...line.zones.flatMap(view.zoneCorners));
      const hasOther = line || !this.loci.isReady;
      if (this.spans.length > 0 || !hasOther) points.push(...(this.loci.isReady ? this.loci.corners(this.loops) : []));
      return points;
    }

    // Once for each circuit, choice of loops and size, so that nothing moves while cursors do.
    fitOnce() {
      const { loci, page, plane } = this;
      const span = this.spans.length > 0 ? '' : `${page.frame.from} ${page.frame.to}`;
      const wanted = `${loci.place} ${loci.isReady} ${this.loops} ${plane.area.width} ${plane.area.height} ${span}`;
      if (!this.isFitted || this.fittedTo === wanted) return;
      this.fittedTo = wanted;
      plane.fit(this.fitPoints());
    }

    // onPaper: nothing can be waited for
    draw(onPaper) {
      if (!this.loci) return;
      this.bar.draw();
      this.lack.hidden = this.loci.hasVoltages;
      this.lack.textContent = view.text('planeNoVoltages');
      for (const part of [this.plot, this.switches, this.values, this.notes]) part.hidden = !this.loci.hasVoltages;
      if (!this.loci.hasVoltages) return;
      if (!this.loci.isReady) this.ask(onPaper);
      this.spans = this.page.marks.faultSpans();
      this.drawCanvas();
      this.values.replaceChildren(view.planeTable(this.loops, this.points, this.loci));
      this.notes.replaceChildren(...this.noteTexts().map((text) => view.html('li', { textContent: text })));
    }

    ask(onPaper) {
      const { loci } = this;
      if (onPaper) loci.compute();
      else loci.request(() => { if (loci === this.loci) this.changed(); });
    }

    // Kilometres to the fault by the analysis, on the faulted circuit; null where there are none.
    get kilometres() {
      const { answer } = this.page.data;
      const { fault } = answer.summary;
      const isThere = fault && fault.distance && fault.best && this.loci.place === answer.faulted && this.loci.circuit.line;
      return isThere ? fault.distance[fault.best].km : null;
    }

    drawCanvas() {
      const { page, loci, loops, spans } = this;
      const [width, height] = [this.plot.clientWidth, this.plot.clientHeight];
      const context = view.prepareCanvas(this.canvas, width, height);
      this.plane.resize(width, height);
      this.fitOnce();
      this.points = page.cursors.samples.map((sample) => loci.at(sample));
      const { chosen } = page.cursors;
      view.drawPlane(context, this.plane, { loci, loops, spans, line: loci.circuit.line, kilometres: this.kilometres, cursors: this.points, chosen });
    }

    // With the reasons why a cursor has no values.
    noteTexts() {
      const reasons = new view.Reasons();
      this.page.cursors.samples.forEach((sample, cursor) => {
        for (const channel of [...this.loci.circuit.voltages, ...this.loci.circuit.currents].filter(Boolean))
          reasons.add(cursor, this.page.periods.windowOf(channel, sample).reason, channel);
      });
      return [...reasons.lines(), ...view.planeNotes(this.loci, this.loops, this.spans, this.kilometres)];
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
