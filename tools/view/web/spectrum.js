// The sheet of the spectrum: direct component and harmonics of the chosen channels at the chosen cursor.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      spectrumPeriods: 'Periods', spectrumPeriodsHint: 'Periods before the cursor that the spectrum is of. Over several, lines between the harmonics are seen, {0} of the line frequency apart',
      spectrumPercent: '% of fundamental', spectrumUnits: 'Units', spectrumLinear: 'Linear', spectrumLogarithmic: 'Logarithmic', spectrumFundamental: 'With the fundamental',
      spectrumOrder: 'Order', spectrumDirect: '= direct', spectrumBetween: 'Between harmonics',
      spectrumBetweenHint: 'RMS of all that is between the harmonics: interharmonics, and what changes within the window',
      spectrumNone: 'No channel is chosen.', spectrumMost: 'At most {0} channels at a time.', spectrumShort: 'The record starts less than {0} periods before the cursor.',
      spectrumAt: '{0} before cursor {1}, {2}', spectrumHighest: 'Orders up to {0}, below half the sampling rate.', spectrumOnePeriod: 'One period', spectrumManyPeriods: '{0} periods',
      spectrumNoFundamental: 'Without a fundamental there are no percentages: {0}.',
    },
    ru: {
      spectrumPeriods: 'Периодов', spectrumPeriodsHint: 'Число периодов до курсора, по которым строится спектр. По нескольким видны линии между гармониками, через {0} частоты сети',
      spectrumPercent: '% от 1-й гармоники', spectrumUnits: 'Единицы', spectrumLinear: 'Линейно', spectrumLogarithmic: 'Логарифм', spectrumFundamental: 'С основной гармоникой',
      spectrumOrder: 'Гармоника', spectrumDirect: '= пост.', spectrumBetween: 'Между гармониками',
      spectrumBetweenHint: 'Действующее значение всего, что между гармониками: интергармоник и изменений внутри окна',
      spectrumNone: 'Не выбрано ни одного канала.', spectrumMost: 'Одновременно не больше {0} каналов.', spectrumShort: 'До курсора меньше {0} периодов записи.',
      spectrumAt: '{0} до курсора {1}, {2}', spectrumHighest: 'Гармоники до {0}-й, ниже половины частоты дискретизации.', spectrumOnePeriod: 'Один период', spectrumManyPeriods: 'Периодов: {0},',
      spectrumNoFundamental: 'Без основной гармоники нет процентов: {0}.',
    },
  });

  const periodChoices = [1, 2, 5, 10];
  const mostChosen = 8;
  const others = ['--other1', '--other2', '--other3', '--other4', '--other5', '--other6'];

  // Each channel's own colour, and another one where two have the same.
  function colorsOf(channels) {
    const free = [...others];
    const used = [];
    for (const [index, channel] of channels.entries()) {
      const own = channel.color || view.colorName(channel, index);
      used.push(used.includes(own) ? free.find((color) => !used.includes(color)) || own : own);
    }
    return used;
  }

  view.SpectrumSheet = class {
    constructor(page, element) {
      this.page = page;
      this.element = element;
      this.bar = new view.CursorBar(page);
      this.spectra = new view.Spectra(page.axis, page.data.frequency);
      this.settings = { periods: 1, isPercent: true, isLogarithmic: true, hasFundamental: true };
    }

    get analog() { return [...this.page.calculated.channels, ...this.page.analog]; }

    // Currents of the circuit that the page opens on, or whatever there is.
    usualChannels() {
      const { answer } = this.page.data;
      const circuit = this.page.faulted || answer.circuits.find(({ name }) => name === this.page.data.startedCircuit) || answer.circuits[0];
      const places = circuit ? [circuit.currents, circuit.voltages].map((all) => all.slice(0, 3).filter((place) => place !== null)).find((all) => all.length > 0) : null;
      return (places || [0]).map((place) => this.page.analog[place]).filter(Boolean);
    }

    build() {
      this.bar.build();
      this.chosen = this.chosen ? this.chosen.filter((channel) => this.analog.includes(channel)) : this.usualChannels();
      this.calculated = this.page.calculated.channels;
      this.note = view.html('p', { className: 'quiet note' });
      this.why = view.html('ul', { className: 'why' });
      this.charts = view.html('div', { className: 'charts' });
      this.table = view.html('table', { className: 'plain measured' });
      this.table.id = 'spectrumValues';
      const copy = view.copyTable(() => this.rowsToCopy(), `${view.text('spectrum')} ${this.page.data.identity.source}`);
      const main = view.html('div', { className: 'main' }, this.tools(), view.html('div', { className: 'noted' }, this.note, copy), this.why, this.charts, view.html('div', { className: 'scroll' }, this.table));
      this.element.replaceChildren(this.bar.element, view.html('div', { className: 'parted' }, this.list(), main));
    }

    tools() {
      const { settings } = this;
      const fundamental = view.html('input', { type: 'checkbox', checked: settings.hasFundamental });
      fundamental.addEventListener('change', () => this.set('hasFundamental', fundamental.checked));
      return view.html('div', { className: 'tools' },
        view.html('span', { className: 'quiet', textContent: view.text('spectrumPeriods'), title: view.text('spectrumPeriodsHint', '1/n') }),
        this.choices('periods', periodChoices.map((count) => [count, String(count)])),
        this.choices('isPercent', [[true, view.text('spectrumPercent')], [false, view.text('spectrumUnits')]]),
        this.choices('isLogarithmic', [[true, view.text('spectrumLogarithmic')], [false, view.text('spectrumLinear')]]),
        view.html('label', { className: 'check' }, fundamental, view.text('spectrumFundamental')));
    }

    choices(setting, all) {
      const buttons = all.map(([value, textContent]) => {
        const button = view.html('button', { type: 'button', textContent });
        button.setAttribute('aria-pressed', this.settings[setting] === value);
        button.addEventListener('click', () => {
          for (const other of buttons) other.setAttribute('aria-pressed', other === button);
          this.set(setting, value);
        });
        return button;
      });
      const group = view.html('span', { className: 'switch' }, ...buttons);
      group.dataset.setting = setting;
      return group;
    }

    set(setting, value) {
      this.settings[setting] = value;
      this.page.request('values');
    }

    // The channels by circuit, with boxes to choose them.
    list() {
      const groups = view.groupByCircuit(this.analog);
      return view.html('div', { className: 'channels' }, ...[...groups].map(([circuit, channels]) => {
        const title = channels[0].isCalculated ? view.text('calculated') : circuit || view.text('noCircuit');
        return view.html('details', { open: groups.size === 1 || channels.some((channel) => this.chosen.includes(channel)) },
          view.html('summary', { textContent: title, title }), ...channels.map((channel) => this.box(channel)));
      }));
    }

    box(channel) {
      const input = view.html('input', { type: 'checkbox', checked: this.chosen.includes(channel) });
      input.dataset.channel = channel.index;
      input.addEventListener('change', () => {
        this.chosen = this.analog.filter((other) => (other === channel ? input.checked : this.chosen.includes(other)));
        if (this.chosen.length > mostChosen) {
          input.checked = false;
          this.chosen = this.chosen.filter((other) => other !== channel);
        }
        this.page.request('values');
      });
      const name = view.html('span', { className: 'name', textContent: view.shortName(channel), title: channel.name });
      const label = view.html('label', { className: 'check' }, input, name);
      label.style.setProperty('--trace', 'transparent');
      return label;
    }

    draw() {
      this.bar.draw();
      if (this.calculated !== this.page.calculated.channels) this.build(); // formulas were changed
      const { cursors } = this.page;
      const reasons = [];
      this.rows = this.page.data.count === 0 ? [] : this.measured(cursors.samples[cursors.chosen], reasons);
      this.why.replaceChildren(...reasons.map((textContent) => view.html('li', { textContent })));
      this.describe();
      this.mark();
      this.drawCharts();
      this.fillTable();
    }

    // [{channel, color, spectrum}] of the chosen channels that have a spectrum; why others have none is added to the reasons.
    measured(sample, reasons) {
      const colors = colorsOf(this.chosen);
      const { periods } = this.settings;
      const found = new view.Reasons();
      const rows = this.chosen.map((channel, index) => ({ channel, color: colors[index], spectrum: this.spectra.of(channel, sample, periods) }));
      for (const { channel, spectrum } of rows) {
        if (spectrum.reason !== 'whyBeginning' || periods === 1) found.add(this.page.cursors.chosen, spectrum.reason, channel);
        else if (!reasons.length) reasons.push(view.text('spectrumShort', periods));
      }
      reasons.push(...found.lines());
      const whole = rows.filter(({ spectrum }) => !spectrum.reason);
      const without = whole.filter(({ spectrum }) => !(spectrum.harmonics[0].rms > 0)).map(({ channel }) => view.shortName(channel));
      if (this.settings.isPercent && without.length > 0) reasons.push(view.text('spectrumNoFundamental', without.join(', ')));
      return whole;
    }

    describe() {
      const { cursors } = this.page;
      const { periods } = this.settings;
      const length = periods === 1 ? view.text('spectrumOnePeriod') : view.text('spectrumManyPeriods', periods);
      const parts = [view.text('spectrumAt', length, cursors.chosen + 1, view.milliseconds(cursors.time(cursors.chosen)))];
      if (this.rows.length > 0) parts.push(view.text('spectrumHighest', this.highest));
      if (this.chosen.length === 0) parts.push(view.text('spectrumNone'));
      if (this.chosen.length === mostChosen) parts.push(view.text('spectrumMost', mostChosen));
      this.note.textContent = this.page.data.count === 0 ? view.text('empty') : parts.join(' · ');
    }

    get highest() { return Math.max(...this.rows.map(({ spectrum }) => spectrum.highest)); }

    // The colours of the chosen channels in the list.
    mark() {
      const colors = colorsOf(this.chosen);
      for (const label of this.element.querySelectorAll('.channels label')) {
        const index = this.chosen.findIndex((channel) => String(channel.index) === label.firstChild.dataset.channel);
        label.style.setProperty('--trace', index < 0 ? 'transparent' : `var(${colors[index]})`);
      }
    }

    // One chart of all in percent; otherwise one for each unit.
    drawCharts() {
      const units = new Map();
      for (const row of this.rows) {
        const unit = this.settings.isPercent ? '%' : row.channel.shownUnit;
        units.set(unit, [...(units.get(unit) || []), row]);
      }
      const width = Math.max(this.charts.clientWidth, 300);
      this.charts.replaceChildren(...[...units].map(([unit, rows]) => view.spectrumChart(rows.map((row) => this.barsOf(row)),
        { highest: this.highest, unit, isLogarithmic: this.settings.isLogarithmic, width })));
    }

    barsOf({ channel, color, spectrum }) {
      const { isPercent, hasFundamental } = this.settings;
      const fundamental = spectrum.harmonics[0].rms;
      const shown = (rms) => (isPercent ? (100 * rms) / fundamental : rms / channel.baseFactor);
      const line = (order, rms, angle) => ({
        order, value: shown(rms),
        text: `${view.shortName(channel)}, ${order || '='}: ${view.number(rms / channel.baseFactor)} ${channel.shownUnit}, ${view.number((100 * rms) / fundamental)} %`
          + (order === 0 ? '' : `, ${view.angle(angle)}`),
      });
      const lines = [line(0, Math.abs(spectrum.direct)), ...spectrum.harmonics.map(({ order, rms, angle }) => line(order, rms, angle))];
      return { channel, color, lines: lines.filter(({ order }) => order !== 1 || hasFundamental), between: spectrum.between.map(({ order, rms }) => ({ order, value: shown(rms) })) };
    }

    // {label, numbers: for each channel [value, percent, angle]} of each line of the table; the value is in the shown unit.
    tableLines() {
      const { rows } = this;
      const ofRms = ({ channel, spectrum }, rms, angle = NaN) => [rms / channel.baseFactor, (100 * Math.abs(rms)) / (spectrum.harmonics[0].rms || NaN), angle];
      const lines = [
        { label: 'THD, %', numbers: rows.map(({ spectrum }) => [NaN, 100 * spectrum.thd, NaN]) },
        { label: view.text('spectrumDirect'), numbers: rows.map((row) => ofRms(row, row.spectrum.direct)) },
      ];
      if (this.settings.periods > 1)
        lines.splice(1, 0, { label: view.text('spectrumBetween'), hint: view.text('spectrumBetweenHint'), numbers: rows.map((row) => ofRms(row, Math.hypot(...row.spectrum.between.map(({ rms }) => rms)))) });
      for (let order = 1; order <= this.highest; order++)
        lines.push({ label: String(order), numbers: rows.map((row) => {
          const harmonic = row.spectrum.harmonics[order - 1];
          return harmonic ? ofRms(row, harmonic.rms, harmonic.angle) : [NaN, NaN, NaN];
        }) });
      return lines;
    }

    fillTable() {
      this.table.hidden = this.rows.length === 0;
      if (this.table.hidden) return;
      const names = this.rows.map(({ channel, color }) => {
        const name = view.html('span', { className: 'name', textContent: view.shortName(channel), title: channel.name });
        name.style.setProperty('--trace', `var(${color})`);
        return view.html('th', { colSpan: 3, className: 'set', scope: 'col' }, name);
      });
      const units = this.rows.flatMap(({ channel }) => [channel.shownUnit, '%', view.text('angle')].map((textContent, index) =>
        view.html('th', { textContent, className: index === 0 ? 'number first' : 'number', scope: 'col' })));
      const shown = [view.number, view.number, view.angle];
      this.table.replaceChildren(
        view.html('thead', {}, view.html('tr', {}, view.html('th'), ...names), view.html('tr', {}, view.html('th', { textContent: view.text('spectrumOrder') }), ...units)),
        view.html('tbody', {}, ...this.tableLines().map(({ label, hint = '', numbers }) => view.html('tr', {}, view.html('th', { textContent: label, title: hint, scope: 'row' }),
          ...numbers.flatMap((three) => three.map((value, index) => view.html('td', { className: index === 0 ? 'number first' : 'number', textContent: shown[index](value) })))))));
    }

    rowsToCopy() {
      const head = this.rows.flatMap(({ channel }) => [channel.shownUnit, '%', '°'].map((unit) => `${view.shortName(channel)}, ${unit}`));
      return [[view.text('spectrumOrder'), ...head], ...(this.rows.length ? this.tableLines() : []).map(({ label, numbers }) => [label, ...numbers.flat().map(view.copiedNumber)])];
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
