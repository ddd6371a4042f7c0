// The sheet of the values: all channels at both cursors. Only the rows on the screen have their values computed.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      valuesAll: 'All circuits', valuesAgainst: 'Angles against', valuesCursor: 'Cursor {0}', valuesDifference: 'Difference 2 − 1',
      valuesChannel: 'Channel', valuesMagnitude: 'magn.', valuesDirect: 'direct',
      valuesMagnitudeHint: 'Magnitude of the fundamental, RMS', valuesDirectHint: 'Direct component: the mean over the period before the cursor',
      valuesStates: 'Discrete channels', valuesState: 'State, cursor {0}', valuesChanges: 'Changes between', valuesNone: 'No channel has all words of the filter.',
    },
    ru: {
      valuesAll: 'Все присоединения', valuesAgainst: 'Углы от', valuesCursor: 'Курсор {0}', valuesDifference: 'Разность 2 − 1',
      valuesChannel: 'Канал', valuesMagnitude: '1-я гарм.', valuesDirect: 'пост.',
      valuesMagnitudeHint: 'Действующее значение основной гармоники', valuesDirectHint: 'Постоянная составляющая: среднее за период до курсора',
      valuesStates: 'Дискретные каналы', valuesState: 'Состояние, курсор {0}', valuesChanges: 'Изменений между', valuesNone: 'Нет каналов, в которых есть все слова отбора.',
    },
  });

  const kinds = ['value', 'rms', 'module', 'angle', 'direct'];
  const compared = ['value', 'rms', 'module']; // of which the difference is shown
  const heads = { value: ['value', 'valueHint'], rms: ['rms', 'rmsHint'], module: ['valuesMagnitude', 'valuesMagnitudeHint'], angle: ['angle', 'angleHint'], direct: ['valuesDirect', 'valuesDirectHint'] };

  // {value, rms, module, angle, direct, reason} of a channel at a sample, in its shown unit.
  view.channelValues = function (periods, channel, sample) {
    const { rms, module, angle, reason } = view.reading(periods, channel, sample);
    return { value: channel.value(sample), rms, module, angle, direct: reason ? NaN : periods.measure(channel, sample).direct, reason };
  };

  const against = (angle, reference) => (angle - reference + 720) % 360;

  view.ValuesSheet = class {
    constructor(page, element) {
      this.page = page;
      this.element = element;
      this.bar = new view.CursorBar(page);
      this.circuit = null; // all
      this.words = [];
      this.reference = null;
      this.seen = new IntersectionObserver((entries) => this.see(entries), { rootMargin: '200px' });
    }

    get analog() { return [...this.page.calculated.channels, ...this.page.analog]; }

    build() {
      this.bar.build();
      this.table = view.html('table', { className: 'plain measured' });
      this.table.id = 'measured';
      this.stateTable = view.html('table', { className: 'plain measured' });
      this.stateTable.id = 'measuredStates';
      this.why = view.html('ul', { className: 'why' });
      this.stateTitle = view.html('h3', { textContent: view.text('valuesStates') });
      this.empty = view.html('p', { className: 'quiet', textContent: view.text('valuesNone') });
      this.element.replaceChildren(this.bar.element, this.tools(), this.why, view.html('div', { className: 'scroll' }, this.table),
        this.stateTitle, view.html('div', { className: 'scroll' }, this.stateTable), this.empty);
      this.fill();
    }

    tools() {
      const filter = view.html('input', { type: 'search', placeholder: view.text('filter'), value: this.words.join(' '), autocomplete: 'off' });
      filter.id = 'valueFilter';
      filter.addEventListener('input', () => {
        this.words = filter.value.toLowerCase().split(/\s+/).filter(Boolean);
        this.fill();
      });
      const circuits = [...new Set([...this.page.analog, ...this.page.states].map((channel) => channel.circuit))];
      const waves = this.analog.filter((channel) => channel.isWave);
      const name = (channel) => (channel.circuit ? `${view.shortName(channel)} · ${channel.circuit}` : channel.name);
      return view.html('div', { className: 'tools' }, filter,
        this.choice('valueCircuit', '', [view.text('valuesAll'), ...circuits.map((one) => one || view.text('noCircuit'))], this.circuit === null ? 0 : circuits.indexOf(this.circuit) + 1,
          (index) => { this.circuit = index === 0 ? null : circuits[index - 1]; this.fill(); }),
        this.choice('valueReference', view.text('valuesAgainst'), ['—', ...waves.map(name)], waves.indexOf(this.reference) + 1,
          (index) => { this.reference = waves[index - 1] || null; this.page.request('values'); }),
        view.copyTable(() => this.rowsToCopy(), `${view.text('values')} ${this.page.data.identity.source}`));
    }

    choice(id, title, names, selected, choose) {
      const select = view.html('select', { id }, ...names.map((name) => new Option(name)));
      select.setAttribute('aria-label', title || view.text('circuit'));
      select.selectedIndex = selected;
      select.addEventListener('change', () => choose(select.selectedIndex));
      return view.html('label', { className: 'quiet' }, title, select);
    }

    isWanted(channel) {
      if (this.circuit !== null && channel.circuit !== this.circuit) return false;
      const own = [channel.name, channel.circuit, channel.unit || '', channel.phase || ''].join(' ').toLowerCase();
      return this.words.every((word) => own.includes(word));
    }

    // The rows of the channels that are wanted, without their values.
    fill() {
      this.seen.disconnect();
      this.calculated = this.page.calculated.channels;
      const analog = this.analog.filter((channel) => this.isWanted(channel));
      this.rows = new Map();
      this.table.replaceChildren(this.head(), this.body(analog));
      this.states = this.page.states.filter((channel) => this.isWanted(channel));
      this.fillStates();
      this.table.hidden = analog.length === 0;
      this.stateTitle.hidden = this.stateTable.hidden = this.states.length === 0;
      this.empty.hidden = analog.length + this.states.length > 0;
      for (const row of this.rows.keys()) this.seen.observe(row);
      this.page.request('values');
    }

    head() {
      const cell = (textContent, columns, className = '') => view.html('th', { textContent, colSpan: columns, className, scope: 'col' });
      const kind = (key, index, set) => Object.assign(cell(view.text(heads[key][0]), 1, `number ${set}${index === 0 ? ' first' : ''}`), { title: view.text(heads[key][1]) });
      this.cursorHeads = [0, 1].map((cursor) => cell('', kinds.length, `set cursor${cursor + 1}`));
      return view.html('thead', {},
        view.html('tr', {}, cell('', 2), ...this.cursorHeads, cell(view.text('valuesDifference'), compared.length, 'set')),
        view.html('tr', {}, cell(view.text('valuesChannel'), 1), cell(view.text('unit'), 1), ...[0, 1].flatMap((cursor) => kinds.map((key, index) => kind(key, index, `cursor${cursor + 1}`))),
          ...compared.map((key, index) => kind(key, index, ''))));
    }

    body(channels) {
      const body = view.html('tbody');
      let circuit = null;
      for (const [index, channel] of channels.entries()) {
        const title = channel.isCalculated ? view.text('calculated') : channel.circuit || view.text('noCircuit');
        if (title !== circuit) body.append(view.html('tr', { className: 'group' }, view.html('th', { colSpan: 2 + 2 * kinds.length + compared.length, textContent: title })));
        circuit = title;
        body.append(this.row(channel, index));
      }
      return body;
    }

    row(channel, index) {
      const name = view.html('span', { className: 'name', textContent: view.shortName(channel), title: channel.name });
      name.style.setProperty('--trace', `var(${channel.color || view.colorName(channel, index)})`);
      const unit = view.html('td', { className: 'quiet' });
      const cells = [...kinds, ...kinds, ...compared].map((_, place) => view.html('td', { className: place % kinds.length === 0 ? 'number first' : 'number' }));
      const row = view.html('tr', {}, view.html('td', {}, name), unit, ...cells);
      row.dataset.measured = channel.index;
      this.rows.set(row, { channel, unit, cells, onScreen: false });
      return row;
    }

    fillStates() {
      const head = [view.text('valuesChannel'), view.text('circuit'), view.text('valuesState', 1), view.text('valuesState', 2), view.text('valuesChanges')];
      this.stateTable.replaceChildren(
        view.html('thead', {}, view.html('tr', {}, ...head.map((textContent, index) => view.html('th', { textContent, className: index > 1 ? 'number' : '' })))),
        view.html('tbody', {}, ...this.states.map((channel) => {
          const row = view.html('tr', {}, view.html('td', { textContent: view.shortName(channel), title: channel.name }), view.html('td', { className: 'quiet', textContent: channel.circuit }),
            ...['cursor1', 'cursor2', ''].map((name) => view.html('td', { className: `number ${name}` })));
          row.dataset.state = channel.index;
          return row;
        })));
    }

    see(entries) {
      for (const entry of entries) if (this.rows.has(entry.target)) this.rows.get(entry.target).onScreen = entry.isIntersecting;
      this.page.request('values');
    }

    // isWhole: also what is not on the screen, for paper.
    draw(isWhole = false) {
      this.bar.draw();
      if (this.calculated !== this.page.calculated.channels) this.build(); // formulas were changed
      if (this.page.data.count === 0) return;
      const reasons = new view.Reasons();
      this.cursorHeads.forEach((head, cursor) => { head.textContent = `${view.text('valuesCursor', cursor + 1)}  ${view.milliseconds(this.page.cursors.time(cursor))}`; });
      for (const row of this.rows.values()) if (row.onScreen || isWhole) this.show(row, reasons);
      this.showStates();
      this.why.replaceChildren(...reasons.lines().map((textContent) => view.html('li', { textContent })));
    }

    // The values of a channel at both cursors, its angles against the reference if there is one.
    valuesOf(channel) {
      const { periods, cursors } = this.page;
      return cursors.samples.map((sample) => {
        const values = view.channelValues(periods, channel, sample);
        return this.reference ? { ...values, angle: against(values.angle, view.reading(periods, this.reference, sample).angle) } : values;
      });
    }

    show({ channel, unit, cells }, reasons) {
      const both = this.valuesOf(channel);
      unit.textContent = channel.shownUnit;
      both.forEach((values, cursor) => {
        kinds.forEach((kind, place) => { cells[cursor * kinds.length + place].textContent = kind === 'angle' ? view.angle(values.angle) : view.number(values[kind]); });
        reasons.add(cursor, values.reason, channel);
      });
      compared.forEach((kind, place) => { cells[2 * kinds.length + place].textContent = view.number(both[1][kind] - both[0][kind]); });
    }

    showStates() {
      const [one, two] = this.page.cursors.samples;
      this.states.forEach((channel, index) => {
        const { cells } = this.stateTable.tBodies[0].rows[index];
        const changes = Math.abs(channel.changesUntil(two) - channel.changesUntil(one));
        [channel.state(one), channel.state(two), changes || ''].forEach((text, place) => { cells[2 + place].textContent = text; });
      });
    }

    // All channels that are wanted, with units and circuits in columns of their own.
    rowsToCopy() {
      const { cursors } = this.page;
      const titles = kinds.map((kind) => view.text(heads[kind][0]) + (kind === 'angle' ? ', °' : ''));
      const times = [0, 1].map((cursor) => `${view.text('valuesCursor', cursor + 1)} (${view.milliseconds(cursors.time(cursor)).replace('−', '-')})`);
      const head = [view.text('circuit'), view.text('valuesChannel'), view.text('unit'), ...times.flatMap((time) => titles.map((title) => `${time}: ${title}`)),
        ...compared.map((kind) => `${view.text('valuesDifference').replace('−', '-')}: ${view.text(heads[kind][0])}`)];
      const analog = [...this.rows.values()].map(({ channel }) => {
        const both = this.valuesOf(channel);
        const numbers = [...both.flatMap((values) => kinds.map((kind) => values[kind])), ...compared.map((kind) => both[1][kind] - both[0][kind])];
        return [channel.circuit, view.shortName(channel), channel.shownUnit, ...numbers.map(view.copiedNumber)];
      });
      const states = this.states.map((channel) => {
        const shown = cursors.samples.map((sample) => [String(channel.state(sample)), ...new Array(kinds.length - 1).fill('')]);
        return [channel.circuit, view.shortName(channel), '', ...shown.flat(), ...compared.map(() => '')];
      });
      return [head, ...analog, ...states];
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
