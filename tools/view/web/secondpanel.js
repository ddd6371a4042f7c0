// The second record in the bar over the strips: what it is, and what shifts it; and the choice of what lies over a strip.
(function (view) {
  'use strict';

  view.SecondPanel = class {
    constructor(second, parent) {
      this.second = second;
      this.parent = parent;
      parent.hidden = false;
    }

    // Once more for another language.
    build() {
      const { station, device, source, trigger } = this.second.data.identity;
      const { between, inUtc } = this.second.data.overlay;
      const clocks = view.html('span', { className: 'clocks', textContent: view.text('secondClocks', view.later(between)) });
      clocks.title = `${view.text('secondClocksHint')}. ${view.text(inUtc ? 'secondUtcHint' : 'secondLocalHint')}`;
      this.shown = view.html('span', { className: 'shown', title: view.text('secondShownHint') });
      // What does not fit is cut off, the file first.
      const who = view.html('p', { title: [view.text('second'), station, device, source, view.text('secondTrigger', trigger)].join(' · ') },
        view.html('b', { className: 'of-second', textContent: station }), ` · ${device} · ${view.text('secondTrigger', trigger)} · `, clocks, ' · ', this.shown, ` · ${source}`);
      this.parent.replaceChildren(who, view.html('div', { className: 'controls' }, this.aligners(), this.shifter()));
      this.show();
    }

    aligners() {
      const alignments = this.second.alignments();
      this.buttons = alignments.map(([name, shift]) => {
        const key = { time: 'secondTime', triggers: 'secondTriggers', onsets: 'secondOnsets' }[name];
        const button = view.html('button', { type: 'button', textContent: view.text(key), title: view.text(`${key}Hint`), disabled: shift === null });
        button.dataset.align = name;
        button.addEventListener('click', () => this.second.setShift(shift));
        return [button, shift];
      });
      return view.html('span', { className: 'switch' }, ...this.buttons.map(([button]) => button));
    }

    shifter() {
      this.field = view.html('input', { type: 'number', step: 'any', id: 'shift', title: view.text('secondShiftHint') });
      this.field.addEventListener('change', () => this.second.setShift(Number(this.field.value) || 0));
      const step = (text, key, milliseconds) => {
        const button = view.html('button', { type: 'button', textContent: text, title: view.text(key) });
        button.dataset.step = key;
        button.addEventListener('click', () => this.second.setShift(this.second.shift + milliseconds()));
        return button;
      };
      const { record, page } = this.second;
      const period = () => record.periods.milliseconds;
      const sample = () => record.stepAt(page.cursors.time(page.cursors.chosen));
      return view.html('label', { className: 'shifter' }, view.text('secondShift'),
        view.html('span', { className: 'switch' }, step('−T', 'secondBack', () => -period()), step('−1', 'secondBackStep', () => -sample())),
        this.field,
        view.html('span', { className: 'switch' }, step('+1', 'secondOnStep', sample), step('+T', 'secondOn', period)));
    }

    // What changes with the shift.
    show() {
      const { shift, data } = this.second;
      this.field.value = String(Number(shift.toFixed(3)));
      this.shown.textContent = view.text('secondShown', view.later(data.overlay.between + shift));
      for (const [button, aligned] of this.buttons) button.setAttribute('aria-pressed', aligned !== null && Math.abs(aligned - shift) < 1e-6);
    }
  };

  // Puts under the names of a strip what of the second record is to lie over it; nothing where nothing can.
  view.addSecondChoice = function (second, strip) {
    const { page, matches, isInSight } = second;
    const own = strip.channels.filter(({ record }) => !record);
    const circuits = isInSight && own.length > 0 && !own[0].isComputed ? matches.candidates(own) : [];
    if (circuits.length === 0) return;
    const select = view.html('select', { title: view.text('secondOver') });
    select.setAttribute('aria-label', view.text('secondOver'));
    select.append(new Option(view.text('secondNone')), ...circuits.map((circuit) => new Option(circuit || view.text('noCircuit'))));
    select.selectedIndex = circuits.indexOf(matches.circuitOver(own)) + 1;
    select.addEventListener('change', () => {
      matches.choose(own, select.selectedIndex === 0 ? null : circuits[select.selectedIndex - 1]);
      page.buildStrips();
      page.redraw();
    });
    strip.legend.append(view.html('label', { className: 'over of-second' }, select));
  };

  // Its sentences under those of the first record. The sheet's own part may put down other children at any time: this is
  // called after that, and adds what is gone.
  view.addSecondAnswer = function (second, sheet) {
    if (sheet.querySelector('.second-answer')) return;
    const { identity, answer } = second.data;
    const sentences = answer.sentences[document.documentElement.lang].map((sentence) => view.html('p', { textContent: sentence }));
    sheet.append(view.html('section', { className: 'card second-answer' },
      view.html('h2', { textContent: `${view.text('second')}: ${identity.station}, ${identity.device}` }),
      view.html('p', { className: 'quiet', textContent: `${identity.source} · ${view.text('secondTrigger', identity.trigger)}` }), ...sentences));
  };

  // Its identity and its report under those of the first record.
  view.addSecondSheets = function (second) {
    for (const old of document.querySelectorAll('.second-sheet')) old.remove();
    const under = (id, content) => document.getElementById(id).append(
      view.html('section', { className: 'second-sheet' }, view.html('h2', { textContent: view.text('second') }), content));
    const table = view.html('table', { className: 'identity' });
    view.showIdentity(table, second.data);
    under('recordSheet', table);
    const report = view.html('pre', { className: 'report' });
    view.showReport(report, second.data.report);
    under('reportSheet', report);
  };
})(globalThis.zuView = globalThis.zuView || {});
