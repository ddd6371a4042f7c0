// The fields of the filters.
(function (view) {
  'use strict';

  const typingPause = 150; // ms after the last key until a long list is filtered

  view.FilterBar = class {
    constructor(element, entries, filter, changed) {
      Object.assign(this, { element, entries, filter, changed });
      element.addEventListener('submit', (event) => event.preventDefault());
    }

    // Makes the fields in the language of the page.
    build() {
      this.fields = {};
      const reset = view.html('button', { type: 'button', id: 'reset', textContent: view.text('reset') });
      reset.addEventListener('click', () => { this.filter.clear(); this.show(); this.changed(); });
      this.element.setAttribute('aria-label', view.text('filters'));
      this.element.replaceChildren(
        this.labelled('text', this.input('text', { type: 'search', placeholder: view.text('textHint'), title: view.text('textHint') })),
        this.labelled('show', this.choice('show')), this.more(), this.labelled('station', this.choice('station')), this.labelled('circuit', this.choice('circuit')), reset, view.html('span', { className: 'rowEnd' }),
        this.buttons('kind', 'kinds', Object.entries(view.groupNames).map(([group, key]) => [group, view.text(key)])),
        this.buttons('phases', 'phases', ['A', 'B', 'C'].map((phase) => [phase, phase])),
        this.pair('lasting', 'longer', 'shorter', { inputMode: 'decimal', size: 5 }),
        this.labelled('current', this.input('current', { inputMode: 'decimal', size: 6 })),
        this.pair('dates', 'from', 'to', { type: 'date' }));
      this.offered = 0;
      this.offer();
      this.show();
    }

    // On a narrow screen the other fields are there when they are wanted.
    more() {
      const button = view.html('button', { type: 'button', id: 'moreFilters', textContent: view.text('filters') });
      const show = (isOpen) => {
        this.element.classList.toggle('isOpen', isOpen);
        button.setAttribute('aria-expanded', isOpen);
      };
      button.addEventListener('click', () => show(!this.element.classList.contains('isOpen')));
      show(!this.filter.isEmpty);
      return button;
    }

    labelled(key, field) {
      return view.html('label', { className: `field ${key}` }, view.html('span', { textContent: view.text(key) }), field);
    }

    // A field for a number, a date or a text.
    input(name, properties) {
      const field = view.html('input', { id: `filter-${name}`, autocomplete: 'off', ...properties });
      const put = () => { this.filter.set(name, field.value); this.changed(); };
      field.addEventListener('input', () => {
        clearTimeout(this.typing);
        this.typing = setTimeout(put, name === 'text' ? typingPause : 0);
      });
      this.fields[name] = field;
      return field;
    }

    pair(key, from, to, properties) {
      const one = (name, label) => {
        const field = this.input(name, properties);
        field.setAttribute('aria-label', `${view.text(key)}: ${view.text(label)}`);
        return field;
      };
      return this.group(key, one(from, 'fromLabel'), view.html('span', { className: 'dash', textContent: '–' }), one(to, 'toLabel'));
    }

    group(key, ...children) {
      const group = view.html('div', { className: 'members' }, ...children);
      const field = view.html('div', { className: `field ${key}` }, view.html('span', { textContent: view.text(key), id: `label-${key}` }), group);
      group.setAttribute('role', 'group');
      group.setAttribute('aria-labelledby', `label-${key}`);
      return field;
    }

    choice(name) {
      const field = view.html('select', { id: `filter-${name}` });
      field.addEventListener('change', () => {
        this.filter.set(name, field.value);
        if (name === 'station') this.offerCircuits();
        this.changed();
      });
      this.fields[name] = field;
      return field;
    }

    // Buttons of which any may be pressed.
    buttons(key, name, members) {
      this.fields[name] = members.map(([member, textContent]) => {
        const button = view.html('button', { type: 'button', textContent, value: member });
        if (name === 'phases') button.className = `phase${member}`;
        button.addEventListener('click', () => { this.filter.toggle(name, member); this.show(); this.changed(); });
        return button;
      });
      const group = this.group(key, ...this.fields[name]);
      group.lastChild.classList.add('switch');
      return group;
    }

    // Puts the stations and circuits that have come into the choices.
    offer() {
      if (this.offered === this.entries.version && this.offered > 0) return;
      this.offered = this.entries.version;
      const show = Object.entries(view.showNames).map(([value, key]) => [value, view.text(key)]);
      this.offerIn(this.fields.show, show, this.filter.show);
      const stations = sorted(this.entries.stations.words.filter(Boolean));
      this.offerIn(this.fields.station, [['', view.text('allStations')], ...stations.map((word) => [word, word])], this.filter.station);
      this.offerCircuits();
    }

    // The circuits of the station that is chosen.
    offerCircuits() {
      const { entries, filter } = this;
      const seen = new Uint8Array(entries.circuits.words.length);
      const station = filter.station && entries.stations.numbers.has(filter.station) ? entries.stations.numbers.get(filter.station) : -1;
      entries.forEachStretch((begin, end) => {
        for (let entry = begin; entry < end; entry++) {
          if (station >= 0 && entries.station[entry] !== station) continue;
          seen[entries.circuit[entry]] = 1;
          if (entries.kind[entry] > 0) seen[entries.faultCircuit[entry]] = 1;
        }
      });
      const circuits = sorted(entries.circuits.words.filter((word, number) => word && (seen[number] === 1 || word === filter.circuit)));
      this.offerIn(this.fields.circuit, [['', view.text('allCircuits')], ...circuits.map((word) => [word, word])], filter.circuit);
    }

    // A choice that is no more offered stays as the filter has it.
    offerIn(field, options, chosen) {
      const all = options.some(([value]) => value === chosen) ? options : [...options, [chosen, chosen]];
      field.replaceChildren(...all.map(([value, textContent]) => view.html('option', { value, textContent })));
      field.value = chosen;
    }

    // Shows what the filter has.
    show() {
      const { filter, fields } = this;
      for (const name of ['text', 'station', 'circuit', 'show', 'longer', 'shorter', 'current', 'from', 'to']) fields[name].value = filter[name];
      for (const name of ['kinds', 'phases']) {
        for (const button of fields[name]) button.setAttribute('aria-pressed', filter.listOf(name).includes(button.value));
      }
    }

    enableReset() { this.element.querySelector('#reset').disabled = this.filter.isEmpty; }
  };

  function sorted(words) {
    return words.sort(new Intl.Collator(undefined, { numeric: true }).compare);
  }
})(globalThis.zuView = globalThis.zuView || {});
