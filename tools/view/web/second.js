// Another record over the first: its axis, shifted to the times of the first one, and its channels.
(function (view) {
  'use strict';

  const leastShift = 1e-6; // milliseconds, as the address has them

  // The axis of the second record in the first one's times, which are milliseconds from the first one's trigger.
  view.ShiftedAxis = class extends view.TimeAxis {
    constructor(json, count) {
      super(json, count);
      this.offset = 0;
    }

    timeOf(sample) { return super.timeOf(sample) + this.offset; }
    firstFrom(time) { return super.firstFrom(time - this.offset); }
  };

  // The second record. Its channels know it (`record`) and its axis, which is how strips and tracks tell them apart.
  view.SecondRecord = class {
    // textOf: the text of a data element, which is given up with it
    constructor(data, textOf) {
      this.data = data;
      this.axis = new view.ShiftedAxis(data.time, data.count);
      this.periods = new view.Periods(this.axis, data.frequency);
      const own = (channel) => Object.assign(channel, { record: this, axis: this.axis });
      this.analog = data.analog.map((json, index) => own(new view.AnalogChannel(json, `second-${index}`, () => textOf(`second-samples${index}`))));
      this.states = data.states.map((json, index) => own(new view.StateChannel(json, `second-${index}`, data.count)));
      this.groups = view.groupByCircuit(this.analog);
      for (const channels of this.groups.values()) view.chooseUnits(channels);
    }

    get start() { return this.axis.timeOf(0); }
    get end() { return this.axis.timeOf(this.data.count - 1); }

    // Milliseconds from the sample at a time to the next one.
    stepAt(time) {
      const sample = Math.min(this.axis.sampleAt(time), Math.max(this.data.count - 2, 0));
      return this.axis.timeOf(sample + 1) - this.axis.timeOf(sample);
    }

    // The sample nearest to a time; null half a step before the first one, and after the last one.
    sampleAt(time) {
      const isBefore = time < this.start - this.stepAt(this.start) / 2;
      const isAfter = time > this.end + this.stepAt(this.end) / 2;
      return isBefore || isAfter || this.data.count === 0 ? null : this.axis.sampleAt(time);
    }

    // What view.reading has and the value, at the sample nearest to a time.
    reading(channel, time) {
      const sample = this.sampleAt(time);
      if (sample === null) return { value: NaN, rms: NaN, angle: NaN, direct: NaN, reason: 'secondOutside' };
      return { value: channel.value(sample), ...view.reading(this.periods, channel, sample) };
    }

    // 0 or 1; a dash outside of the record.
    state(channel, time) {
      const sample = this.sampleAt(time);
      return sample === null ? '—' : channel.state(sample);
    }
  };

  // What lies over what, and how far it is shifted: `shift` is milliseconds from where the clocks put the second record.
  view.Second = class {
    constructor(page, data, textOf) {
      this.page = page;
      this.data = data;
      this.record = new view.SecondRecord(data, textOf);
      this.matches = new view.SecondMatches(page, this.record);
      this.panel = new view.SecondPanel(this, document.getElementById('second'));
      const kept = Number.parseFloat(view.address.get('shift'));
      this.initial = data.overlay.align === 'trigger' ? -data.overlay.between : 0;
      this.shift = Number.isFinite(kept) ? kept : this.initial;
      this.place();
    }

    // Puts the axis where the shift wants it, and lets the page reach as far as both records where they are near.
    place() {
      const { record, page } = this;
      record.axis.offset = this.data.overlay.between + this.shift;
      this.gap = Math.max(record.start - page.frame.ends[1], page.frame.ends[0] - record.end);
      this.isInSight = page.data.count > 0 && this.data.count > 0 && this.gap <= this.data.overlay.reach;
      if (this.isInSight) page.frame.reach(record.start, record.end, record.stepAt(record.start));
      else page.frame.reach(...page.frame.ends, Infinity);
    }

    // isLast is false while the pointer still moves.
    setShift(shift, isLast = true) {
      const { page, isInSight } = this;
      this.shift = shift;
      this.place();
      const comesOrGoes = this.isInSight !== isInSight;
      if (comesOrGoes) page.buildStrips();
      if (comesOrGoes || isLast) {
        this.buildTracks(); // in the order of their changes
        page.describe();
      }
      if (isLast) view.address.set('shift', Math.abs(shift - this.initial) < leastShift ? '' : String(Number(shift.toFixed(6))));
      this.panel.show();
      page.frame.show(page.frame.from, page.frame.to); // within the new ends
      page.request('values');
    }

    // [name, shift]: what can be laid over what. A trigger that its record does not reach is no place in it.
    alignments() {
      const { between } = this.data.overlay;
      const onsets = [this.page.data, this.data].map(({ answer }) => answer.summary.fault && answer.summary.fault.onset * 1000);
      const triggers = [this.page.data, this.data].every(({ held }) => held.hasTrigger);
      return [
        ['time', 0],
        ['triggers', triggers ? -between : null],
        ['onsets', onsets.every((onset) => typeof onset === 'number') ? onsets[0] - onsets[1] - between : null],
      ];
    }

    buildTracks() {
      const { page } = this;
      page.tracks.arrange([...page.states, ...(this.isInSight ? this.record.states : [])]);
      page.tracks.build();
      page.trackStrips[page.trackStrips.length - 1] = page.tracks.strip; // those of the circuits stand before it
    }

    // Adds its channels to the strips of the first record, and below them its other channels as groups.
    extend(groups, layout) {
      if (!this.isInSight) return;
      for (const { strips } of groups) for (const strip of strips) strip.push(...this.matches.over(strip));
      const { station, device } = this.data.identity;
      for (const [circuit, channels] of view.groupByCircuit(this.matches.alone()))
        groups.push({ circuit: `${circuit || view.text('noCircuit')} — ${station}, ${device}`, strips: view.splitIntoStrips(channels, layout), isSecond: true });
    }

    // What the other parts of the page get for it, in the language that is set.
    build() {
      this.panel.build();
      this.buildTracks();
      view.addSecondSheets(this);
      const answer = document.querySelector('.second-answer');
      if (answer) answer.remove(); // until the sheet is drawn again
    }

    notices() {
      const { source } = this.data.identity;
      const odd = view.noticesOf(this.data);
      if (this.data.count === 0) odd.push(view.text('secondEmpty'));
      else if (!this.isInSight) odd.push(view.text('secondApart', view.apart(this.gap)));
      return odd.map((text) => view.text('secondNotice', source, text));
    }
  };

  // The second record of the page; null if there is none.
  view.openSecond = function (page, textOf) {
    const element = document.getElementById('second-data');
    return element ? new view.Second(page, JSON.parse(element.textContent), textOf) : null;
  };
})(globalThis.zuView = globalThis.zuView || {});
