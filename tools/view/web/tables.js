// The table of the channels with its filter, and the identity of the record.
(function (view) {
  'use strict';

  const columns = ['visible', 'number', 'kind', 'name', 'phase', 'circuit', 'unit', 'least', 'greatest', 'ratio', 'changesCount', 'firstChange'];

  function cellsOf(channel, axis) {
    if (channel.changes) {
      const first = channel.changes.length ? view.milliseconds(axis.timeOf(channel.changes[0])) : '';
      return [channel.number, view.text('stateKind'), channel.name, channel.phase, channel.circuit, '', '', '', '', channel.changes.length, first];
    }
    const [least, greatest] = channel.range();
    return [channel.number, view.text('analogKind'), channel.name, channel.phase, channel.circuit, channel.shownUnit,
      view.number(least), view.number(greatest), `${channel.primary}/${channel.secondary}`, '', ''];
  }

  view.ChannelTable = class {
    // toggled: called when a channel is shown or hidden
    constructor(table, filter, count, channels, axis, toggled) {
      Object.assign(this, { table, filter, count, channels, axis, toggled });
      filter.addEventListener('input', () => this.apply());
      this.copy = document.createElement('span');
      count.after(this.copy);
    }

    build() {
      this.table.textContent = '';
      this.copy.replaceChildren(view.copyTable(() => view.tableRows(this.table).map(([, ...row]) => row), view.text('channels'))); // without the boxes
      this.filter.placeholder = view.text('filter');
      const head = this.table.createTHead().insertRow();
      for (const column of columns) {
        const cell = document.createElement('th');
        cell.textContent = view.text(column);
        head.append(cell);
      }
      const body = this.table.createTBody();
      this.rows = this.channels.map((channel) => this.addRow(body, channel));
      this.apply();
    }

    addRow(body, channel) {
      const row = body.insertRow();
      const box = Object.assign(document.createElement('input'), { type: 'checkbox', checked: channel.visible });
      box.setAttribute('aria-label', channel.name);
      box.addEventListener('change', () => {
        channel.visible = box.checked;
        this.toggled(channel);
      });
      row.insertCell().append(box);
      for (const text of cellsOf(channel, this.axis)) row.insertCell().textContent = text;
      return { row, words: [channel.name, channel.circuit, channel.unit || '', channel.phase].join(' ').toLowerCase() };
    }

    // Shows the rows that have every word of the filter.
    apply() {
      const wanted = this.filter.value.toLowerCase().split(/\s+/).filter(Boolean);
      let shown = 0;
      for (const { row, words } of this.rows) {
        row.hidden = !wanted.every((word) => words.includes(word));
        if (!row.hidden) shown++;
      }
      this.count.textContent = view.text('shown', shown, this.rows.length);
    }
  };

  view.showIdentity = function (table, data) {
    const identity = data.identity;
    const rows = [
      ['station', identity.station], ['device', identity.device], ['source', identity.source], ['revision', identity.revision],
      ['dataType', identity.dataType], ['start', identity.start], ['triggerTime', identity.trigger],
      ['rates', identity.rates.map((rate) => Number(rate.toFixed(6))).join(', ')], ['frequency', identity.lineFrequency > 0 ? identity.lineFrequency : view.text('assumed', data.frequency)],
      ['samples', data.total], ['duration', identity.seconds.toFixed(3)],
      ['counts', `${data.analog.length} + ${data.states.length}`],
      ['timeCode', identity.timeCode], ['localCode', identity.localCode], ['timeQuality', identity.timeQuality],
    ];
    table.textContent = '';
    for (const [key, value] of rows) {
      if (value === '') continue;
      const row = table.insertRow();
      const head = document.createElement('th');
      head.textContent = view.text(key);
      row.append(head);
      row.insertCell().textContent = value;
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
