// The discrete channels: those that change as tracks, in the order of their first change; the others folded away.
(function (view) {
  'use strict';

  const rowHeight = 20;

  // Spans [from, to] in pixels in which the state is 1; what is in one pixel is one span, so that their number is
  // bounded by the width.
  view.trackSpans = function (channel, frame, area) {
    const axis = channel.axis || frame.axis; // a channel of another record has its own
    const perPixel = area.width / frame.span;
    const xOf = (sample) => area.left + (axis.timeOf(sample) - frame.from) * perPixel;
    const first = Math.max(axis.firstFrom(frame.from) - 1, 0);
    const [left, right] = [Math.max(area.left, xOf(0)), Math.min(area.left + area.width, xOf(axis.count - 1))]; // of its samples
    const spans = [];
    let position = channel.changesUntil(first);
    let state = channel.initial ^ (position & 1);
    let start = state ? left : 0;
    while (position < channel.changes.length && xOf(channel.changes[position]) < area.left + area.width) {
      const x = xOf(channel.changes[position]);
      const pixelEnd = axis.firstFrom(frame.from + (Math.floor(x - area.left) + 1) / perPixel) - 1;
      const next = Math.max(channel.changesUntil(pixelEnd), position + 1);
      if (state || next - position > 1) spans.push([state ? start : x, Math.max(x, (state ? start : x) + 1)]);
      state = channel.initial ^ (next & 1);
      start = x;
      position = next;
    }
    if (state && start < right) spans.push([start, right]);
    return spans;
  };

  // Those that change, in the order of their first change.
  // timeOf: of a sample of a channel, where they are not all of one record.
  view.inOrderOfChange = (channels, timeOf = (channel, sample) => sample) => channels.filter((channel) => channel.changes.length > 0)
    .sort((a, b) => timeOf(a, a.changes[0]) - timeOf(b, b.changes[0]));

  // Discrete channels in a strip, one under the other.
  view.TrackStrip = class {
    // nameOf: what a channel is called
    constructor(channels, frame, nameOf) {
      this.frame = frame;
      this.nameOf = nameOf;
      this.element = document.createElement('div');
      this.element.className = 'strip states';
      const legend = document.createElement('div');
      legend.className = 'legend';
      const plot = document.createElement('div');
      plot.className = 'plot';
      this.canvas = document.createElement('canvas');
      plot.append(this.canvas);
      this.element.append(legend, plot);
      this.rows = channels.map((channel) => this.addRow(legend, channel));
      this.applyVisible();
    }

    addRow(legend, channel) {
      const row = document.createElement('div');
      row.className = channel.record ? 'row state of-second' : 'row state';
      row.dataset.state = channel.index;
      const name = document.createElement('span');
      name.className = 'name';
      name.textContent = this.nameOf(channel);
      name.title = channel.name;
      const cells = [1, 2].map((cursor) => {
        const cell = document.createElement('span');
        cell.className = `value cursor${cursor}`;
        return cell;
      });
      row.append(name, ...cells);
      legend.append(row);
      return { channel, row, cells };
    }

    applyVisible() {
      for (const { row, channel } of this.rows) row.hidden = !channel.visible;
      this.element.hidden = this.rows.every(({ row }) => row.hidden);
    }

    showStates(cursors) {
      for (const { channel, cells } of this.rows)
        cells.forEach((cell, cursor) => {
          cell.textContent = channel.record ? channel.record.state(channel, cursors.time(cursor)) : channel.state(cursors.samples[cursor]);
        });
    }

    draw() {
      const shown = this.rows.filter(({ channel }) => channel.visible);
      if (shown.length === 0) return;
      const width = this.canvas.parentElement.clientWidth;
      const context = view.prepareCanvas(this.canvas, width, shown.length * rowHeight);
      const area = view.plotArea(width);
      const colors = ['--stateOn', '--stateLine', '--stateOn-second'].map(view.styleColor);
      shown.forEach(({ channel }, index) => {
        const top = index * rowHeight;
        context.fillStyle = colors[1];
        context.fillRect(area.left, top + rowHeight - 5, area.width, 1);
        context.fillStyle = colors[channel.record ? 2 : 0];
        for (const [from, to] of view.trackSpans(channel, this.frame, area)) context.fillRect(from, top + 5, Math.max(to - from, 1), rowHeight - 9);
      });
    }
  };

  // The discrete channels after the analog ones.
  view.Tracks = class {
    // above: channels that stand with their circuit
    constructor(parent, channels, above, frame) {
      Object.assign(this, { parent, above, frame });
      this.hasAbove = above.length > 0;
      this.arrange(channels);
    }

    // Takes other channels; build() puts them on the page.
    arrange(channels) {
      const timeOf = (channel, sample) => (channel.axis || this.frame.axis).timeOf(sample);
      this.changing = view.inOrderOfChange(channels.filter((channel) => !this.above.includes(channel)), timeOf);
      this.quiet = channels.filter((channel) => channel.changes.length === 0);
      this.strip = new view.TrackStrip(this.changing, this.frame, (channel) => channel.name);
    }

    build() {
      this.parent.textContent = '';
      if (this.changing.length + this.quiet.length === 0) return;
      const title = document.createElement('h3');
      title.textContent = view.text(this.hasAbove ? 'otherDiscrete' : 'discrete');
      this.parent.append(title, this.strip.element, this.folded());
      const isNone = this.changing.length === 0 && !this.hasAbove;
      if (isNone) this.strip.element.replaceWith(Object.assign(document.createElement('p'), { className: 'quiet', textContent: view.text('noChanges') }));
    }

    folded() {
      const details = document.createElement('details');
      details.className = 'folded';
      details.hidden = this.quiet.length === 0;
      const summary = document.createElement('summary');
      summary.textContent = view.text('unchanged', this.quiet.length);
      const list = document.createElement('ul');
      for (const channel of this.quiet) {
        const item = document.createElement('li');
        item.classList.toggle('of-second', Boolean(channel.record));
        item.textContent = `${channel.initial}  ${channel.name}`;
        list.append(item);
      }
      details.append(summary, list);
      return details;
    }
  };

  // Sizes a canvas for the screen's pixels and returns its cleared context in CSS pixels.
  view.prepareCanvas = function (canvas, width, height) {
    const ratio = globalThis.devicePixelRatio || 1;
    canvas.width = Math.round(width * ratio);
    canvas.height = Math.round(height * ratio);
    canvas.style.width = `${width}px`;
    canvas.style.height = `${height}px`;
    const context = canvas.getContext('2d');
    context.scale(ratio, ratio);
    return context;
  };
})(globalThis.zuView = globalThis.zuView || {});
