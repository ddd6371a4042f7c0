// Puts the page together: reads the data, builds the parts, and redraws what is seen when something changes.
(function (view) {
  'use strict';

  const byId = (id) => document.getElementById(id);
  const sheets = [
    ['answerSheet', 'answer'], ['oscillogram', 'oscillogram'], ['planeSheet', 'plane'], ['spectrumSheet', 'spectrum'],
    ['valueSheet', 'values'], ['reportSheet', 'report'], ['channelSheet', 'channels'], ['recordSheet', 'record'],
  ];
  const paperWidth = 1040; // pixels, of a landscape sheet

  class Page {
    constructor() {
      this.data = JSON.parse(byId('data').textContent);
      this.axis = new view.TimeAxis(this.data.time, this.data.count);
      this.analog = this.data.analog.map((json, index) => new view.AnalogChannel(json, index, () => takeText(`samples${index}`)));
      this.states = this.data.states.map((json, index) => new view.StateChannel(json, index, this.data.count));
      this.groups = view.groupByCircuit(this.analog);
      for (const channels of this.groups.values()) view.chooseUnits(channels);
      this.frame = new view.Frame(this.axis);
      this.periods = new view.Periods(this.axis, this.data.frequency);
      this.derivations = new view.Derivations(this);
      this.layout = 'together';
      this.strips = [];
      this.fit = false;
      this.faulted = view.faultedCircuit(this.data.answer);
      this.pending = new Set();
      this.extensions = []; // see stripGroups
      this.derivedStrips = new view.DerivedStrips(this);
      this.second = view.openSecond(this, takeText);
    }

    build() {
      byId('station').textContent = this.data.identity.station;
      this.ruler = new view.Ruler(byId('ruler'), this.frame);
      this.seen = new IntersectionObserver((entries) => this.see(entries), { rootMargin: '150px' });
      this.cursors = new view.Cursors(byId('overlay'), this.frame, this.periods, () => this.request('values'));
      const circuit = this.faulted ? this.faulted.name : this.data.startedCircuit;
      this.phasors = new view.Phasors(byId('side'), this.groups, this.periods, circuit, () => this.request('values'));
      const [{ tracks = [] } = {}] = this.circuitGroups();
      this.tracks = new view.Tracks(byId('tracks'), this.states, tracks, this.frame);
      const marks = view.marksOf(this.data.answer, this.frame);
      this.marks = new view.Marks(byId('marks'), byId('overlay'), marks, this.frame, ({ sample }) => this.cursors.set(this.cursors.chosen, sample));
      this.cursors.events = new view.EventSamples(this.axis, this.states, [...marks.map(({ sample }) => sample), ...this.triggerSamples()]);
      this.cursors.fault = view.faultTimes(this.data.answer, this.frame);
      this.table = new view.ChannelTable(byId('channels'), byId('filter'), byId('filtered'), [...this.analog, ...this.states], this.axis, () => this.changeVisible());
      this.calculated = new view.Calculated(this, byId('formulas'), byId('formulaPanel'));
      // Each has build(), for another language, and draw(), for what else has changed, while it is open.
      this.parts = {
        answerSheet: new view.AnswerSheet(this, byId('answerSheet')), planeSheet: new view.PlaneSheet(this, byId('planeSheet')),
        spectrumSheet: new view.SpectrumSheet(this, byId('spectrumSheet')), valueSheet: new view.ValuesSheet(this, byId('valueSheet')),
      };
      this.buildStrips();
      this.navigator = new view.Navigator(byId('navigator'), this.navigatorChannels(), this.frame, marks);
      this.listen();
      this.setLanguage(view.address.get('lang') || ((navigator.language || '').startsWith('ru') ? 'ru' : 'en'));
      this.setTheme(view.address.get('theme') || (matchMedia('(prefers-color-scheme: dark)').matches ? 'dark' : 'light'));
      this.cursors.placeAtFault();
      if (this.cursors.fault || this.triggerSamples().length > 0) this.cursors.showFault();
      else this.frame.showAll();
      const wanted = view.address.get('sheet');
      this.openSheet(sheets.some(([id]) => id === wanted) ? wanted : sheets[0][0]);
    }

    // The sample of the trigger, if the record has it.
    triggerSamples() { return this.frame.ends[0] <= 0 && this.frame.ends[1] >= 0 ? [this.axis.sampleAt(0)] : []; }

    // Currents of the circuit that the page opens on, or whatever there is.
    navigatorChannels() {
      const circuit = this.phasors.circuit;
      if (!circuit) return this.analog.slice(0, 1);
      return (circuit.I[0] ? circuit.I : circuit.U).slice(0, 3).filter(Boolean);
    }

    // The circuits of the record in its order, but the faulted one first, with the tracks of its discrete channels.
    circuitGroups() {
      const groups = [...this.groups].map(([circuit, channels]) => ({ circuit, strips: view.splitIntoStrips(channels, this.layout) }));
      return view.faultedFirst(groups, this.faulted, this.states);
    }

    // [{circuit, strips: [[channel ...] ...], tracks: [state channel ...]}], in the order in which they stand on the sheet. What
    // adds to the circuits of the record is a function of these groups and of the layout in `extensions`.
    stripGroups() {
      const groups = this.circuitGroups();
      for (const extend of this.extensions) extend(groups, this.layout);
      if (this.second) this.second.extend(groups, this.layout);
      return groups;
    }

    buildStrips() {
      this.seen.disconnect();
      byId('groups').textContent = '';
      this.strips = [];
      this.trackStrips = [this.tracks.strip];
      for (const { circuit, strips, tracks = [], isFaulted, isSecond } of this.stripGroups()) {
        const group = document.createElement('section');
        group.append(view.html('div', { className: 'heading' }, this.groupTitle(circuit, isFaulted, isSecond), this.derivedStrips.switches(circuit)));
        for (const part of strips) {
          const strip = new view.Strip(part, this.frame);
          strip.element.classList.toggle('single', part.length === 1 && !part[0].isDerived);
          this.strips.push(strip);
          group.append(strip.element);
        }
        if (tracks.length > 0) {
          this.trackStrips.unshift(new view.TrackStrip(tracks, this.frame, view.shortName));
          group.append(this.trackStrips[0].element);
        }
        byId('groups').append(group);
      }
      for (const strip of this.strips) this.seen.observe(strip.element);
      if (this.second) for (const strip of this.strips) view.addSecondChoice(this.second, strip);
      this.applyVisible();
    }

    groupTitle(circuit, isFaulted, isSecond = false) {
      const title = document.createElement('h3');
      title.textContent = circuit || view.text('noCircuit');
      if (isFaulted) title.append(view.faultBolt());
      const isStarted = circuit !== '' && circuit === this.data.startedCircuit;
      title.classList.toggle('of-second', isSecond);
      title.classList.toggle('started', isStarted);
      if (isStarted) title.title = view.text('startedHint');
      return title;
    }

    see(entries) {
      for (const entry of entries) {
        const strip = this.strips.find((candidate) => candidate.element === entry.target);
        if (strip) strip.onScreen = entry.isIntersecting;
      }
      this.derivedStrips.compute();
      this.request('strips');
      this.request('values');
    }

    listen() {
      this.frame.listen(() => {
        for (const strip of this.strips) strip.stale = true;
        for (const part of ['strips', 'tracks', 'ruler', 'navigator', 'lines']) this.request(part);
      });
      if (this.second) this.cursors.shiftSecond = (milliseconds, isLast) => this.second.setShift(this.second.shift + milliseconds, isLast);
      this.cursors.listen(byId('strips'));
      const middle = () => (this.frame.from + this.frame.to) / 2;
      const actions = {
        whole: () => this.frame.showAll(), toTrigger: () => this.cursors.showFault(),
        zoomIn: () => this.frame.zoom(0.5, middle()), zoomOut: () => this.frame.zoom(2, middle()),
        print: () => globalThis.print(),
        theme: () => this.setTheme(document.documentElement.dataset.theme === 'dark' ? 'light' : 'dark'),
      };
      for (const id of Object.keys(actions)) byId(id).addEventListener('click', actions[id]);
      if (this.cursors.fault) Object.assign(byId('toTrigger').dataset, { text: 'toFault', hint: 'faultHint' });
      this.cursors.snaps = byId('snap').checked = view.address.get('snap') !== 'off';
      byId('snap').addEventListener('change', () => {
        this.cursors.snaps = byId('snap').checked;
        view.address.set('snap', this.cursors.snaps ? '' : 'off');
      });
      byId('fit').addEventListener('change', () => { this.fit = byId('fit').checked; this.redraw(); });
      for (const button of byId('layouts').children) button.addEventListener('click', () => this.setLayout(button.dataset.layout));
      for (const button of byId('languages').children) button.addEventListener('click', () => this.setLanguage(button.dataset.language));
      globalThis.addEventListener('resize', () => this.resize());
      globalThis.addEventListener('beforeprint', () => this.toPaper());
      globalThis.addEventListener('afterprint', () => this.fromPaper());
    }

    setLayout(layout) {
      this.layout = layout;
      for (const button of byId('layouts').children) button.setAttribute('aria-pressed', button.dataset.layout === layout);
      this.buildStrips();
      this.redraw();
    }

    setLanguage(name) {
      document.documentElement.lang = view.setLanguage(name);
      for (const element of document.querySelectorAll('[data-text]')) element.textContent = view.text(element.dataset.text);
      for (const element of document.querySelectorAll('[data-hint]')) element.title = view.text(element.dataset.hint);
      for (const button of byId('languages').children) button.setAttribute('aria-pressed', button.dataset.language === document.documentElement.lang);
      byId('keyList').replaceChildren(...view.text('keyList').concat(this.second ? view.text('secondKey') : []).map((text) => Object.assign(document.createElement('li'), { textContent: text })));
      this.describe();
      this.buildTabs();
      this.resize();
      this.phasors.build();
      this.tracks.build();
      this.marks.build();
      this.calculated.build();
      this.table.build();
      view.showIdentity(byId('identity'), this.data);
      for (const part of Object.values(this.parts)) part.build();
      view.showReport(byId('report'), this.data.report);
      if (this.second) this.second.build();
      this.setLayout(this.layout);
    }

    describe() {
      const { identity, startedCircuit, count, total } = this.data;
      const parts = [identity.device, view.text('triggered', identity.trigger)];
      if (startedCircuit) parts.push(view.text('started', startedCircuit));
      byId('event').textContent = parts.join(' · ');
      byId('partial').hidden = count === total && count > 0;
      const seconds = ((this.frame.ends[1] - this.frame.ends[0]) / 1000).toFixed(3);
      byId('partial').textContent = count > 0 ? view.text('partial', seconds, count, total) : view.text('empty');
      byId('columns').replaceChildren(...['value', 'rms', 'angle'].map((key) =>
        Object.assign(document.createElement('span'), { className: key, textContent: view.text(key), title: view.text(`${key}Hint`) })));
      byId('notices').replaceChildren(...view.noticesOf(this.data).concat(this.second ? this.second.notices() : []).map((text) =>
        Object.assign(document.createElement('p'), { className: 'notice', textContent: text })));
    }

    buildTabs() {
      byId('tabs').replaceChildren(...sheets.map(([id, key]) => {
        const tab = Object.assign(document.createElement('button'), { type: 'button', textContent: view.text(key) });
        tab.setAttribute('role', 'tab');
        tab.setAttribute('aria-selected', !byId(id).hidden);
        tab.dataset.sheet = id;
        tab.addEventListener('click', () => this.openSheet(id));
        return tab;
      }));
      const chosen = byId('tabs').querySelector('[aria-selected=true]');
      if (chosen) byId('tabs').scrollLeft = chosen.offsetLeft - (byId('tabs').clientWidth - chosen.offsetWidth) / 2; // where they do not fit
    }

    openSheet(opened) {
      this.opened = opened;
      for (const [id] of sheets) byId(id).hidden = id !== opened;
      view.address.set('sheet', opened);
      this.buildTabs();
      this.resize(); // what was hidden had no size
    }

    setTheme(name) {
      document.documentElement.dataset.theme = name === 'dark' ? 'dark' : 'light';
      for (const strip of this.strips) strip.restyle();
      this.redraw();
    }

    changeVisible() {
      this.cursors.events.forget();
      this.applyVisible();
      this.redraw();
    }

    applyVisible() {
      for (const strip of this.strips) {
        strip.element.hidden = strip.visibleChannels.length === 0;
        for (const { row, channel } of strip.rows) row.hidden = !channel.visible;
      }
      for (const tracks of this.trackStrips) tracks.applyVisible();
      for (const group of byId('groups').children) group.hidden = [...group.querySelectorAll('.strip')].every((strip) => strip.hidden);
    }

    resize() {
      document.documentElement.style.setProperty('--bar', `${byId('bar').offsetHeight}px`); // sticks under it
      for (const strip of this.strips) strip.resize();
      this.ruler.resize();
      this.redraw();
    }

    redraw() {
      for (const strip of this.strips) strip.stale = true;
      for (const part of ['strips', 'tracks', 'ruler', 'navigator', 'lines', 'values']) this.request(part);
    }

    // Draws a part with the next frame of the screen, once, however often it is requested.
    request(part) {
      if (this.pending.size === 0) requestAnimationFrame(() => this.drawPending());
      this.pending.add(part);
    }

    drawPending() {
      const pending = this.pending;
      this.pending = new Set();
      if (this.parts[this.opened]) this.parts[this.opened].draw();
      if (this.second) view.addSecondAnswer(this.second, byId('answerSheet'));
      if (byId('oscillogram').hidden || this.data.count === 0) return;
      if (pending.has('ruler')) this.drawRuler();
      if (pending.has('strips')) for (const strip of this.strips) if (strip.onScreen && strip.stale) strip.draw(this.fit);
      if (pending.has('tracks')) for (const tracks of this.trackStrips) tracks.draw();
      if (pending.has('navigator')) this.navigator.draw();
      if (pending.has('lines')) this.cursors.place();
      if (pending.has('values')) this.showValues();
    }

    drawRuler() {
      this.marks.draw(); // it measures, which is cheap before others change the page
      this.ruler.draw();
    }

    showValues() {
      const { cursors } = this;
      cursors.place();
      byId('time1').textContent = view.milliseconds(cursors.time(0));
      byId('time2').textContent = view.milliseconds(cursors.time(1));
      byId('between').textContent = view.milliseconds(cursors.time(1) - cursors.time(0));
      const reasons = new view.Reasons();
      for (const strip of this.strips) if (strip.onScreen) strip.rows.forEach((row) => this.showRow(row, reasons));
      for (const tracks of this.trackStrips) tracks.showStates(cursors);
      this.phasors.draw(cursors.samples[cursors.chosen], cursors.chosen, reasons);
    }

    // Always by Fourier and as the RMS of the values, whatever method the phasors have.
    showRow({ channel, cells }, reasons) {
      if (channel.isDerived) { // has no RMS and no angle of its own
        cells.forEach(([value], cursor) => { value.textContent = channel.isKnown ? view.number(channel.value(this.cursors.samples[cursor])) : '…'; });
        return;
      }
      cells.forEach(([value, rms, angle], cursor) => {
        const reading = this.readingAt(channel, cursor);
        value.textContent = view.number(reading.value);
        rms.textContent = view.number(reading.rms);
        angle.textContent = view.direct(reading.direct) || view.angle(reading.angle);
        rms.title = reading.reason ? view.text(reading.reason, view.shortName(channel)) : '';
        if (!channel.record) reasons.add(cursor, reading.reason, channel);
      });
    }

    // What view.reading has and the value. A second record has its own sample for the time of the cursor.
    readingAt(channel, cursor) {
      if (channel.record) return channel.record.reading(channel, this.cursors.time(cursor));
      const sample = this.cursors.samples[cursor];
      return { value: channel.value(sample), ...view.reading(this.periods, channel, sample) };
    }

    // Everything on paper, in light colours and at the width of the sheet, drawn before the browser takes it.
    toPaper() {
      this.before = { theme: document.documentElement.dataset.theme, hidden: sheets.map(([id]) => byId(id).hidden) };
      for (const [id] of sheets) byId(id).hidden = false;
      document.documentElement.dataset.theme = 'light';
      document.body.style.width = `${paperWidth}px`;
      this.pending = new Set();
      this.derivedStrips.finish();
      for (const strip of this.strips) {
        strip.onScreen = true;
        strip.draw(this.fit);
        strip.restyle();
        strip.resize();
      }
      this.drawRuler();
      this.ruler.resize();
      for (const tracks of this.trackStrips) tracks.draw();
      this.navigator.draw();
      this.showValues();
      for (const part of Object.values(this.parts)) part.draw(true);
    }

    fromPaper() {
      document.body.style.width = '';
      sheets.forEach(([id], index) => { byId(id).hidden = this.before.hidden[index]; });
      this.setTheme(this.before.theme);
      for (const strip of this.strips) {
        this.seen.unobserve(strip.element);
        this.seen.observe(strip.element);
      }
      this.resize();
    }
  }

  // What is odd about a record.
  view.noticesOf = function ({ held, total, identity }) {
    const notices = [];
    if (held.announced !== total) notices.push(view.text('otherCount', held.announced, total));
    if (!held.hasTrigger) notices.push(view.text('triggerOutside', identity.trigger, identity.start));
    if (held.missing > 0) notices.push(view.text('missing', held.missing, held.incomplete));
    return notices;
  };

  // The text of a data element, which is given up with it: the samples are then in memory once.
  function takeText(id) {
    const element = byId(id);
    const text = element.textContent;
    element.remove();
    return text;
  }

  try {
    view.page = new Page();
    view.page.build();
  } catch (error) {
    byId('partial').hidden = false;
    byId('partial').textContent = view.text('failed', error.message);
    throw error;
  }
})(globalThis.zuView = globalThis.zuView || {});
