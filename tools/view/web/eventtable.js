// The sequence of events. A click, or Enter on its time, shows that moment in the oscillogram.
(function (view) {
  'use strict';

  const firstRows = 200;
  const moreRows = 1000;

  // The time of day of an ISO 8601 time.
  const clock = (at) => view.inLanguage(at.replace(/^.*T/, '').replace(/(Z|[+-]\d\d:\d\d)$/, ''));

  const milliseconds = (seconds) => view.decimal(seconds * 1000, 3);
  const signed = (seconds) => (seconds < 0 && !/^[0.,]*$/.test(milliseconds(-seconds)) ? milliseconds(seconds) : `+${milliseconds(seconds)}`);

  function stateElement(event) {
    const words = [String(event.state)];
    if (event.kind === 'breaker') words.push(view.text(event.active ? 'answerClosed' : 'answerOpen'));
    const state = view.html('span', { textContent: words.join(' ') });
    if (event.changes > 1)
      state.append(view.html('span', { className: 'quiet', textContent: ` (${view.text(event.bounce ? 'answerPulse' : 'answerBounced', event.changes)})` }));
    return state;
  }

  function kindElement(kind) {
    const names = { start: view.text('answerKindStart'), trip: view.text('answerKindTrip'), breaker: view.text('answerKindBreaker'), reclosing: view.text('answerKindReclosing') };
    return view.html('span', { className: `kind ${kind}`, textContent: names[kind] || '—' });
  }

  view.EventTable = class {
    // answer: of the data; count: samples in the page; goTo: called with the sample of the event that is chosen
    constructor(answer, count, goTo) {
      this.events = answer.summary.events;
      this.changes = answer.changes;
      this.leftOut = answer.summary.eventsLeftOut;
      this.circuit = answer.faulted === null ? '' : answer.circuits[answer.faulted].name;
      this.count = count;
      this.goTo = goTo;
      this.isFiltered = false;
      this.most = firstRows;
      // Without events of both kinds there is nothing to choose.
      this.isMixed = this.circuit !== '' && this.events.some((event) => event.circuit === this.circuit) && this.events.some((event) => event.circuit !== this.circuit);
    }

    build() {
      const columns = [[view.text('answerHeadTime')], [view.text('answerHeadFromTrigger'), 'number'], [view.text('answerHeadSince'), 'number'], [view.text('answerHeadCircuit')],
        [view.text('answerHeadSignal')], [view.text('answerHeadKind')], [view.text('answerHeadState')]];
      this.table = view.plainTable(columns, [], 'events');
      this.table.addEventListener('click', (event) => this.click(event));
      this.listed = view.html('span', { className: 'quiet listed' });
      this.more = view.html('button', { type: 'button', className: 'more', onclick: () => { this.most += moreRows; this.fill(); } });
      const leftOut = view.html('p', { className: 'quiet leftOut', hidden: this.leftOut === 0, textContent: view.text('answerLeftOut', this.leftOut) });
      this.tools = view.html('div', { className: 'cardTools' }, ...(this.isMixed ? [this.filter()] : []), this.listed);
      this.element = view.html('div', {}, view.html('div', { className: 'scroll' }, this.table), this.more, leftOut);
      this.fill();
    }

    filter() {
      const box = view.html('input', { type: 'checkbox', id: 'answerOnlyFaulted', checked: this.isFiltered });
      box.addEventListener('change', () => {
        this.isFiltered = box.checked;
        this.most = firstRows;
        this.fill();
      });
      return view.html('label', { className: 'check' }, box, view.text('answerOnlyFaulted', this.circuit));
    }

    // Rows are added to those that are there, unless others are wanted: a long list grows without being made again.
    fill() {
      const wanted = [...this.events.keys()].filter((place) => !this.isFiltered || this.events[place].circuit === this.circuit);
      const body = this.table.tBodies[0];
      if (this.wanted !== wanted.length) body.replaceChildren();
      this.wanted = wanted.length;
      body.append(...wanted.slice(body.rows.length, this.most).map((place) => this.row(this.events[place], place)));
      const rest = wanted.length - body.rows.length;
      this.more.hidden = rest <= 0;
      this.more.textContent = view.text('answerMore', Math.min(rest, moreRows));
      this.listed.textContent = rest > 0 || wanted.length < this.events.length ? view.text('answerListed', body.rows.length, this.events.length) : '';
    }

    row(event, place) {
      const sample = this.changes[place][0];
      const isHeld = sample >= 0 && sample < this.count;
      const time = view.html(isHeld ? 'button' : 'span', { textContent: clock(event.at), title: isHeld ? view.text('answerToEvent') : view.text('answerNotHeld') });
      if (isHeld) Object.assign(time, { type: 'button', className: 'link' });
      const cells = [time, signed(event.time), event.since === null ? '' : milliseconds(event.since), event.circuit, view.shortName(event), kindElement(event.kind), stateElement(event)];
      const row = view.html('tr', { className: isHeld ? 'held' : '' }, ...cells.map((cell, index) => view.html('td', { className: index === 1 || index === 2 ? 'number' : '' }, cell)));
      row.cells[4].title = event.name;
      row.dataset.event = place;
      return row;
    }

    click(event) {
      const row = event.target.closest('tr.held');
      if (row) this.goTo(this.changes[row.dataset.event][0]);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
