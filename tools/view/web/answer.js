// The first sheet: what happened.
(function (view) {
  'use strict';

  const openCircuits = 6; // whose magnitudes are not folded where there is no fault

  view.AnswerSheet = class {
    constructor(page, element) {
      this.page = page;
      this.element = element;
      this.answer = page.data.answer;
      const { summary, faulted, circuits } = this.answer;
      this.fault = summary.fault;
      this.circuit = faulted === null ? null : circuits[faulted];
      this.events = new view.EventTable(this.answer, page.data.count, (sample) => this.goTo(sample));
    }

    // The sheet is made when it is seen.
    build() {
      this.isStale = true;
      this.draw();
    }

    make() {
      this.isStale = false;
      this.drawings = [];
      const left = [this.faultCard(), this.distanceCard(), this.partsCard()].filter(Boolean);
      const right = [this.operatingCard(), this.magnitudeCard()].filter(Boolean);
      const columns = [left, right].filter((cards) => cards.length > 0).map((cards) => view.html('div', { className: 'column' }, ...cards));
      this.element.replaceChildren(this.leadCard(), view.html('div', { className: 'columns' }, ...columns), ...[this.eventCard()].filter(Boolean));
    }

    // The drawings are as wide as their places, so that their texts keep their size.
    draw() {
      if (this.element.hidden) return;
      if (this.isStale) this.make();
      for (const drawing of this.drawings) {
        const width = Math.floor(drawing.place.clientWidth);
        if (width === 0 || width === drawing.width) continue;
        drawing.width = width;
        drawing.place.replaceChildren(drawing.make(width));
      }
    }

    // What is drawn when its place has a width.
    drawing(make) {
      const place = view.html('div', { className: 'drawing' });
      this.drawings.push({ place, make });
      return place;
    }

    card(name, title, ...children) {
      const head = view.html('div', { className: 'cardHead' }, view.html('h3', { textContent: title }));
      return view.html('section', { className: `card ${name}` }, head, ...children);
    }

    // Adds a button that copies the table.
    copied(card, table, name) {
      if (view.copyTable) card.querySelector('.cardHead').append(view.copyTable(table, name));
      return card;
    }

    leadCard() {
      const [first, ...others] = this.answer.sentences[document.documentElement.lang];
      const rest = view.html('div', { className: 'sentences' }, ...others.map((textContent) => view.html('p', { textContent })));
      return view.html('section', { className: this.fault ? 'card lead faulted' : 'card lead' }, view.html('h2', { textContent: first }),
        ...(this.fault ? [this.facts()] : []), ...(others.length > 0 ? [rest] : []));
    }

    facts() {
      const facts = view.factsOf(this.answer, this.page.analog, this.page.data.frequency);
      return view.html('dl', { className: 'facts' }, ...facts.map(({ key, label, value, note }) => {
        const fact = view.html('div', {}, view.html('dt', { textContent: label }), view.html('dd', { className: 'value' }, value), view.html('dd', { className: 'note', textContent: note }));
        fact.dataset.fact = key;
        return fact;
      }));
    }

    faultCard() {
      if (!this.fault) return null;
      const facts = { fault: this.fault, circuit: this.circuit.name || view.text('noCircuit'), line: this.circuit.line, breaker: this.answer.summary.operating.breaker };
      return this.card('faultCard', view.text('answerFaultLine'), this.drawing((width) => view.faultDiagram(facts, width)));
    }

    distanceCard() {
      if (!this.fault || !(this.fault.distance || this.fault.range)) return null;
      const table = view.distanceTable(this.fault, this.circuit.line);
      return this.copied(this.card('distanceCard', view.text('answerDistances'), table), table, 'distances');
    }

    partsCard() {
      if (!this.fault || this.fault.parts.length < 2) return null;
      const table = view.partsTable(this.fault);
      return this.copied(this.card('partsCard', view.text('answerParts'), view.html('div', { className: 'scroll' }, table)), table, 'parts');
    }

    operatingCard() {
      const { operating } = this.answer.summary;
      const rows = view.operatingRows(this.answer.summary);
      if (rows.length === 0) return null;
      const card = this.card('operatingCard', view.text('answerOperatingTimes'), this.drawing((width) => view.operatingChart(rows, width)));
      const notes = [];
      if (operating.from !== null) notes.push(view.text(operating.reference === 'onset' ? 'answerFromOnset' : 'answerFromStart'));
      if (this.fault && operating.circuit === null) notes.push(view.text('answerOfRecord'));
      card.querySelector('h3').append(view.html('span', { className: 'quiet', textContent: ` ${notes.join(', ')}` }));
      return card;
    }

    // The channels of the faulted circuit, its voltages too if they are another's, and the others folded.
    magnitudeCard() {
      const { phasors } = this.answer;
      const shown = view.momentsOf(phasors);
      if (shown.length === 0) return null;
      if (!this.circuit) return this.magnitudesOfAll(phasors, shown);
      const own = [...this.circuit.voltages, ...this.circuit.currents];
      const table = view.magnitudeTable(phasors.filter(({ channel }) => own.includes(channel)), this.page.analog, shown);
      const others = this.byCircuit(phasors.filter(({ channel }) => !own.includes(channel)));
      const card = this.card('magnitudeCard', view.text('answerMagnitudes'), view.html('div', { className: 'scroll' }, table), ...this.folded(others, shown));
      card.querySelector('h3').title = view.text('answerMagnitudeHint');
      return this.copied(card, table, 'magnitudes');
    }

    // Without a fault: those at the trigger, circuit by circuit.
    magnitudesOfAll(phasors, shown) {
      const circuits = this.byCircuit(phasors);
      const first = view.html('div', { className: 'circuits' }, ...circuits.slice(0, openCircuits).map((circuit) => this.circuitMagnitudes(circuit, shown)));
      return this.card('magnitudeCard', view.text('answerMagnitudesAtTrigger'), first, ...this.folded(circuits.slice(openCircuits), shown));
    }

    // [[circuit, phasors] ...]
    byCircuit(phasors) {
      return [...view.groupByCircuit(phasors.map((one) => ({ ...one, circuit: this.page.analog[one.channel].circuit })))];
    }

    circuitMagnitudes([circuit, phasors], shown) {
      return view.html('div', {}, view.html('h4', { textContent: circuit || view.text('noCircuit') }),
        view.html('div', { className: 'scroll' }, view.magnitudeTable(phasors, this.page.analog, shown)));
    }

    // Made when it is first seen: a station has hundreds of channels.
    folded(circuits, shown) {
      if (circuits.length === 0) return [];
      const details = view.html('details', { className: 'otherCircuits' }, view.html('summary', { textContent: view.text('answerOthers', circuits.length) }));
      details.addEventListener('toggle', () => details.append(...circuits.map((circuit) => this.circuitMagnitudes(circuit, shown))), { once: true });
      return [details];
    }

    eventCard() {
      if (this.answer.summary.events.length === 0) return null;
      this.events.build();
      const card = this.card('eventCard', view.text('answerEvents'), this.events.element);
      card.querySelector('.cardHead').append(this.events.tools);
      return this.copied(card, this.events.table, 'events');
    }

    // Cursor 1 there, in view; the span keeps its length.
    goTo(sample) {
      const { page } = this;
      page.openSheet('oscillogram');
      page.cursors.set(0, sample);
      const time = page.axis.timeOf(sample);
      if (time < page.frame.from || time > page.frame.to) page.frame.show(time - page.frame.span / 2, time + page.frame.span / 2);
      globalThis.scrollTo(0, 0);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
