// Where formulas are written: a line for each, one for the next, and what is wrong with them.
(function (view) {
  'use strict';

  const example = '3I0 = Ia + Ib + Ic';
  const around = 30; // characters shown on both sides of a mistake

  view.FormulaPanel = class {
    // owner: the Calculated whose lines are shown
    constructor(owner, button, element) {
      Object.assign(this, { owner, button, element });
      this.open(owner.channels.length < owner.lines.length); // a mistake in the address is seen
      button.addEventListener('click', () => {
        this.open(element.hidden);
        if (!element.hidden) this.next.input.focus();
      });
    }

    open(isOpen) {
      this.element.hidden = !isOpen;
      this.button.setAttribute('aria-pressed', isOpen);
    }

    build() {
      this.list = view.html('div');
      this.nameList = view.html('p', { className: 'formulaNames' });
      this.next = this.nextRow();
      this.element.replaceChildren(view.html('h3', { textContent: view.text('formulasTitle') }), this.list, this.next.element, this.nameList,
        view.html('p', { className: 'quiet', textContent: view.text('formulaHelp') }));
      for (const line of this.owner.lines) this.addRow(line);
      this.showNames(this.next);
    }

    // {element, line, input}: a row whose line follows what is written; changed() is called when it is final.
    row(line, button, changed) {
      const circuits = this.owner.circuits;
      const select = view.html('select', {}, ...circuits.map((circuit) => new Option(circuit || view.text('noCircuit'))));
      select.setAttribute('aria-label', view.text('circuit'));
      select.selectedIndex = circuits.indexOf(line.circuit);
      const input = view.html('input', { type: 'text', value: line.text, placeholder: example, spellcheck: false, autocomplete: 'off' });
      input.setAttribute('aria-label', view.text('formulaField'));
      const error = view.html('p', { className: 'formulaError', hidden: true });
      const row = { line, input, error, element: view.html('div', { className: 'formulaRow' }, select, input, button, error) };
      input.addEventListener('input', () => { line.text = input.value.trim(); this.check(row); });
      input.addEventListener('focus', () => this.showNames(row));
      input.addEventListener('change', changed);
      select.addEventListener('change', () => { line.circuit = circuits[select.selectedIndex]; this.showNames(row); this.check(row); changed(); });
      return row;
    }

    addRow(line) {
      const remove = view.html('button', { type: 'button', textContent: '×', title: view.text('formulaDelete') });
      remove.setAttribute('aria-label', view.text('formulaDelete'));
      const row = this.row(line, remove, () => this.owner.apply());
      remove.addEventListener('click', () => {
        row.element.remove();
        this.owner.lines = this.owner.lines.filter((other) => other !== line);
        this.owner.apply();
      });
      this.list.append(row.element);
      this.check(row);
    }

    // It becomes a line of its own by the button or the Enter key, if nothing is wrong with it.
    nextRow() {
      const add = view.html('button', { type: 'button', textContent: view.text('formulaAdd') });
      const row = this.row({ text: '', circuit: this.owner.usualCircuit }, add, () => {});
      const take = () => {
        if (!row.line.text || this.check(row)) return;
        const line = { ...row.line };
        this.owner.lines.push(line);
        this.addRow(line);
        row.input.value = row.line.text = '';
        this.owner.apply();
      };
      add.addEventListener('click', take);
      row.input.addEventListener('keydown', (event) => { if (event.key === 'Enter') take(); });
      return row;
    }

    // Shows what is wrong with a row, and returns it.
    check({ line, error, input }) {
      const found = line.text ? this.owner.errorOf(line) : null;
      error.hidden = !found;
      input.setAttribute('aria-invalid', Boolean(found));
      if (!found) return null;
      const { from, to } = found;
      const start = Math.max(from - around, 0);
      error.replaceChildren(
        view.html('span', { textContent: view.text('formulaAt', from + 1, found.text) }),
        view.html('code', {}, start > 0 ? '…' : '', line.text.slice(start, from), view.html('mark', { textContent: line.text.slice(from, to) || ' ' }), line.text.slice(to, to + around)));
      return found;
    }

    // The names that a row's circuit has; a press puts one where the row's caret is.
    showNames({ line, input }) {
      const names = this.owner.names.namesIn(line.circuit).map(({ text, channel }) => {
        const button = view.html('button', { type: 'button', textContent: text, title: `${channel.name}, ${channel.unit}` });
        button.addEventListener('mousedown', (event) => event.preventDefault()); // the caret stays
        button.addEventListener('click', () => {
          input.setRangeText(text, input.selectionStart, input.selectionEnd, 'end');
          input.dispatchEvent(new Event('input'));
          input.focus();
        });
        return button;
      });
      this.nameList.replaceChildren(view.html('span', { textContent: view.text('formulaNames') }), ...names);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
