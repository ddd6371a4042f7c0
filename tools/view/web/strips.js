// The analog strips. Dygraphs lays out and draws axes and grid; the traces are drawn here from the extremes of each
// pixel column, as it would take every sample as an object. A strip comes to be when it is first seen.
(function (view) {
  'use strict';

  const channelsInStrip = 6;
  const leastSpan = 0.01; // of a y axis, as part of its largest value
  const secondDash = [6, 3]; // of a second record, pixels
  const axisWidth = 60; // of the labels at the left of each plot, pixels
  const rightGap = 10;
  const others = ['--other1', '--other2', '--other3', '--other4', '--other5', '--other6'];
  const roleColors = { a: '--phaseA', b: '--phaseB', c: '--phaseC', 0: '--residual' };

  view.plotArea = (width) => ({ left: axisWidth, width: Math.max(1, width - axisWidth - rightGap) });

  view.styleColor = (name) => getComputedStyle(document.documentElement).getPropertyValue(name).trim();

  // A second record has the colours of the channels that it lies over, paler.
  view.colorName = function (channel, index) {
    if (channel.partner) return `${channel.partner.color}-second`;
    return (roleColors[channel.role] || others[index % others.length]) + (channel.record ? '-second' : '');
  };

  // Circuits in the order of the record, each with its channels.
  view.groupByCircuit = function (channels) {
    const groups = new Map();
    for (const channel of channels) {
      if (!groups.has(channel.circuit)) groups.set(channel.circuit, []);
      groups.get(channel.circuit).push(channel);
    }
    return groups;
  };

  // The channels of a circuit as strips: by quantity and unit, or each on its own.
  view.splitIntoStrips = function (channels, layout) {
    if (layout === 'apart') return channels.map((channel) => [channel]);
    const strips = [];
    for (const channel of channels) {
      const strip = strips.find(([first, ...more]) => first.unit === channel.unit && more.length + 1 < channelsInStrip);
      if (strip) strip.push(channel);
      else strips.push([channel]);
    }
    return strips;
  };

  // Values of thousands and more are shown in thousands, alike for all channels of a circuit with this unit.
  view.chooseUnits = function (channels) {
    for (const channel of channels) {
      const alike = channels.filter((other) => other.unit === channel.unit && other.isBaseUnit);
      const sizes = alike.flatMap((other) => other.ends.map((code) => Math.abs((other.a * code + other.b) * other.factor)));
      const largest = Math.max(0, ...sizes.filter(Number.isFinite));
      channel.inKilo = channel.isBaseUnit && largest >= 1000;
    }
  };

  // The trace as a list of x, y: all samples where they are fewer than the pixels, otherwise least and greatest of
  // each pixel column. toX and toY give pixels.
  view.tracePoints = function (channel, frame, area, toY) {
    const axis = channel.axis || frame.axis; // a channel of another record has its own
    const first = Math.max(axis.firstFrom(frame.from) - 1, 0);
    const end = Math.min(axis.firstFrom(frame.to) + 1, axis.count);
    const perPixel = area.w / frame.span;
    const points = [];
    if (end - first <= 2 * area.w) {
      for (let i = first; i < end; i++) points.push(area.x + (axis.timeOf(i) - frame.from) * perPixel, toY(channel.value(i)));
      return points;
    }
    let from = axis.firstFrom(frame.from);
    for (let column = 0; column < area.w; column++) {
      const to = axis.firstFrom(frame.from + (column + 1) / perPixel);
      if (to > from) pushExtremes(points, area.x + column + 0.5, channel.range(from, to).map(toY));
      from = to;
    }
    return points;
  };

  // Both extremes, that nearer to the trace so far first.
  function pushExtremes(points, x, [a, b]) {
    const last = points.length ? points[points.length - 1] : a;
    if (Math.abs(last - a) <= Math.abs(last - b)) points.push(x, a, x, b);
    else points.push(x, b, x, a);
  }

  // With a gap where y is no number. A run starts with a short stroke, so that one of a single sample is seen.
  view.strokeTrace = function (context, points) {
    const half = 0.6;
    let broken = true;
    context.beginPath();
    for (let i = 0; i < points.length; i += 2) {
      const [x, y] = [points[i], points[i + 1]];
      const isMissing = !Number.isFinite(y);
      if (broken && !isMissing) context.moveTo(x - half, y);
      if (!isMissing) context.lineTo(broken ? x + half : x, y);
      broken = isMissing;
    }
    context.stroke();
  };

  function drawTrace(context, points, color, width, isSecond) {
    const isDense = points.length > 2 * width;
    context.strokeStyle = color;
    context.fillStyle = color;
    context.lineWidth = 1.25;
    context.lineJoin = 'round';
    context.globalAlpha = isDense ? 0.7 : 1; // what is under a filled band shows through
    const isDashed = isSecond && !isDense;
    if (isDashed) context.setLineDash(secondDash);
    view.strokeTrace(context, points);
    if (isDashed) context.setLineDash([]);
    context.globalAlpha = 1;
    if (points.length > width / 4) return;
    for (let i = 0; i < points.length; i += 2) {
      context.beginPath();
      context.arc(points[i], points[i + 1], 2, 0, 2 * Math.PI);
      context.fill();
    }
  }

  // What all charts have in common; the pointer and the keys are cursors.js's.
  function chartOptions(frame) {
    return {
      labels: ['ms', '0'], legend: 'never', showLabelsOnHighlight: false, highlightCircleSize: 0, interactionModel: {},
      dateWindow: [frame.from, frame.to], rightGap, xRangePad: 0,
      gridLineColor: view.styleColor('--grid'), axisLineColor: view.styleColor('--axis'),
      axisLabelFontSize: 11, axisTickSize: 0, connectSeparatedPoints: false, animatedZooms: false,
    };
  }

  const endPoints = (frame, series) => [frame.start, frame.end].map((time) => [time, ...Array(series).fill(0)]);

  view.Strip = class {
    constructor(channels, frame) {
      this.channels = channels;
      this.frame = frame;
      this.element = document.createElement('div');
      this.element.className = 'strip analog';
      this.legend = document.createElement('div');
      this.legend.className = 'legend';
      this.plot = document.createElement('div');
      this.plot.className = 'plot';
      this.element.append(this.legend, this.plot);
      if (channels[0].heading) this.legend.append(Object.assign(document.createElement('div'), { className: 'what', textContent: channels[0].heading }));
      this.rows = channels.map((channel, index) => this.addRow(channel, index));
      this.onScreen = false;
      this.stale = true;
    }

    addRow(channel, index) {
      channel.color = view.colorName(channel, index);
      const row = document.createElement('div');
      row.className = channel.record ? 'row of-second' : 'row';
      row.dataset.channel = channel.index;
      const name = document.createElement('span');
      name.className = 'name';
      name.style.setProperty('--trace', `var(${channel.color})`);
      name.textContent = view.shortName(channel);
      row.append(name);
      const cells = [0, 1].map((cursor) => ['value', 'rms', 'angle'].map((kind) => {
        const cell = document.createElement('span');
        cell.className = `${kind} cursor${cursor + 1}`;
        row.append(cell);
        return cell;
      }));
      const unit = document.createElement('span');
      unit.className = 'unit';
      name.after(unit);
      this.legend.append(row);
      return { channel, row, cells, name, unit };
    }

    // A calculated channel has its unit when it has its values.
    nameUnits() {
      for (const { channel, name, unit } of this.rows) {
        unit.textContent = channel.shownUnit;
        name.title = `${channel.name}, ${channel.shownUnit}`;
      }
    }

    get visibleChannels() { return this.channels.filter((channel) => channel.visible); }

    // Least and greatest value on the y axis, with some air.
    valueRange(fit) {
      const spanOf = (axis) => [Math.max(axis.firstFrom(this.frame.from) - 1, 0), Math.min(axis.firstFrom(this.frame.to) + 1, axis.count)];
      const ranges = this.visibleChannels.map((channel) => channel.axisRange(...(fit ? spanOf(channel.axis || this.frame.axis) : []))).filter(([low]) => Number.isFinite(low));
      let low = Math.min(...ranges.map((range) => range[0]));
      let high = Math.max(...ranges.map((range) => range[1]));
      if (!(low <= high)) return [-1, 1];
      if (low > 0 && low < 0.5 * high) low = 0;
      if (high < 0 && high > 0.5 * low) high = 0;
      // A quantity that hardly moves is not blown up until its noise fills the strip.
      const least = Math.max(Math.abs(low), Math.abs(high)) * leastSpan || 1;
      const air = Math.max((high - low) * 0.06, (least - (high - low)) / 2);
      return [low - air, high + air];
    }

    draw(fit) {
      if (this.element.hidden) return;
      this.stale = false;
      const options = { dateWindow: [this.frame.from, this.frame.to], valueRange: this.valueRange(fit) };
      if (this.chart) this.chart.updateOptions(options);
      else this.create(options);
    }

    create(options) {
      this.nameUnits();
      this.chart = new Dygraph(this.plot, endPoints(this.frame, 1), {
        ...chartOptions(this.frame), ...options,
        plotter: (event) => this.plotTraces(event),
        axes: {
          x: { drawAxis: false, pixelsPerLabel: 80 },
          y: { axisLabelWidth: axisWidth, pixelsPerLabel: this.channels.length > 1 ? 24 : 18, axisLabelFormatter: (value) => view.tick(value) },
        },
      });
    }

    plotTraces(event) {
      const context = event.drawingContext;
      const area = event.plotArea;
      const [low, high] = event.dygraph.yAxisRange();
      const toY = (value) => area.y + ((high - value) / (high - low)) * area.h;
      context.save();
      context.beginPath();
      context.rect(area.x, area.y, area.w, area.h);
      context.clip();
      for (const channel of this.visibleChannels) {
        const points = view.tracePoints(channel.drawn || channel, this.frame, area, toY);
        drawTrace(context, points, view.styleColor(channel.color), area.w, Boolean(channel.record));
      }
      context.restore();
    }

    restyle() {
      if (this.chart) this.chart.updateOptions({ gridLineColor: view.styleColor('--grid'), axisLineColor: view.styleColor('--axis') });
    }

    resize() { if (this.chart) this.chart.resize(); }
  };

  view.tick = (value) => (Math.abs(value) < 1e-9 ? '0' : view.inLanguage(String(Number(value.toPrecision(6))).replace('-', '−')));

  // The name without that of the circuit, which is above the strips.
  view.shortName = function (channel) {
    const rest = channel.circuit ? channel.name.replace(channel.circuit, '').replace(/^[\s:,]+|[\s:,]+$/g, '') : '';
    return rest || channel.name;
  };

  // The time axis over the strips.
  view.Ruler = class {
    constructor(element, frame) {
      this.element = element;
      this.frame = frame;
    }

    draw() {
      const dateWindow = [this.frame.from, this.frame.to];
      if (this.chart) this.chart.updateOptions({ dateWindow });
      else this.create(dateWindow);
    }

    create(dateWindow) {
      this.chart = new Dygraph(this.element, endPoints(this.frame, 1), {
        ...chartOptions(this.frame), dateWindow, valueRange: [0, 1], plotter: () => {}, xAxisHeight: 20,
        axes: {
          x: { pixelsPerLabel: 80, axisLabelWidth: 80, axisLabelFormatter: (value) => this.label(value) },
          y: { axisLabelWidth: axisWidth, ticker: () => [], drawGrid: false },
        },
      });
    }

    label(milliseconds) {
      const inSeconds = this.frame.span > 3000;
      const units = document.documentElement.lang === 'ru' ? [' с', ' мс'] : [' s', ' ms'];
      return view.tick(inSeconds ? milliseconds / 1000 : milliseconds) + units[inSeconds ? 0 : 1];
    }

    resize() { if (this.chart) this.chart.resize(); }
  };
})(globalThis.zuView = globalThis.zuView || {});
