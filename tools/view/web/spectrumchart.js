// The bars of spectra: for each order those of the channels beside each other, the lines between the harmonics thin.
(function (view) {
  'use strict';

  const height = 300;
  const edge = { left: 62, right: 12, top: 26, bottom: 26 }; // around the bars
  const decades = 4; // of a logarithmic axis, from the largest value down
  const widestBar = 22;
  const gap = 0.28; // part of an order's width without bars
  const leastLabel = 24; // pixels between the labels of orders

  // Steps of 1, 2 or 5 times a power of ten, about so many up to a value.
  function stepOf(largest, count) {
    const raw = largest / count;
    const power = 10 ** Math.floor(Math.log10(raw));
    return [1, 2, 5, 10].map((factor) => factor * power).find((step) => step >= raw);
  }

  class Scale {
    constructor(largest, isLogarithmic) {
      this.isLogarithmic = isLogarithmic;
      this.largest = largest > 0 ? largest : 1;
      if (isLogarithmic) this.top = Math.ceil(Math.log10(this.largest) - 1e-9);
      else this.end = this.largest * 1.04;
    }

    // From 0 at the bottom to 1 at the top.
    partOf(value) {
      if (!(value > 0)) return 0;
      const part = this.isLogarithmic ? (Math.log10(value) - this.top + decades) / decades : value / this.end;
      return Math.max(0, Math.min(1, part));
    }

    get ticks() {
      if (this.isLogarithmic) return Array.from({ length: decades + 1 }, (_, i) => 10 ** (this.top - decades + i));
      const step = stepOf(this.largest, 5);
      return Array.from({ length: Math.floor(this.end / step) + 1 }, (_, i) => i * step);
    }
  }

  // spectra: [{channel, color, lines: [{order, value, text}], between: [{order, value}]}], order 0 being the direct component;
  // highest: the last order; unit: of the values.
  view.spectrumChart = function (spectra, { highest, unit, isLogarithmic, width }) {
    const svg = view.svg('svg', { viewBox: `0 0 ${width} ${height}`, width, height, class: 'spectrum', role: 'img' });
    const largest = Math.max(0, ...spectra.flatMap(({ lines, between }) => [...lines, ...between].map(({ value }) => value)).filter(Number.isFinite));
    const scale = new Scale(largest, isLogarithmic);
    const inner = { width: width - edge.left - edge.right, height: height - edge.top - edge.bottom };
    const perOrder = inner.width / (highest + 1);
    const xOf = (order) => edge.left + (order + 0.5) * perOrder;
    const yOf = (value) => edge.top + (1 - scale.partOf(value)) * inner.height;
    drawAxes(svg, scale, { highest, unit, width, perOrder, xOf, yOf });
    for (const { between, color } of spectra) drawBetween(svg, between, color, xOf, yOf);
    const barWidth = Math.min(widestBar, (perOrder * (1 - gap)) / spectra.length);
    spectra.forEach(({ channel, color, lines }, index) => {
      for (const { order, value, text } of lines) {
        const x = xOf(order) + (index - spectra.length / 2) * barWidth;
        const y = Number.isFinite(value) ? yOf(value) : yOf(0);
        const bar = view.svg('rect', { x: x.toFixed(2), y: y.toFixed(2), width: Math.max(barWidth - 0.6, 0.8).toFixed(2), height: (yOf(0) - y).toFixed(2), fill: `var(${color})` }, svg);
        Object.assign(bar.dataset, { channel: channel.index, order, part: scale.partOf(value) });
        view.svg('title', {}, bar).textContent = text;
      }
    });
    return svg;
  };

  function drawAxes(svg, scale, { highest, unit, width, perOrder, xOf, yOf }) {
    for (const tick of scale.ticks) {
      const y = scale.isLogarithmic ? yOf(tick * (1 + 1e-12)) : yOf(tick);
      view.svg('line', { x1: edge.left, x2: width - edge.right, y1: y, y2: y, class: tick === scale.ticks[0] ? 'base' : 'grid' }, svg);
      view.svgText(svg, view.tick(tick), edge.left - 7, y + 4, { 'text-anchor': 'end' });
    }
    view.svgText(svg, unit, edge.left - 7, edge.top - 13, { class: 'unit', 'text-anchor': 'end' });
    const every = Math.ceil(leastLabel / perOrder);
    for (let order = 0; order <= highest; order++)
      if (order % every === 0 || order === 1) view.svgText(svg, order === 0 ? '=' : String(order), xOf(order), height - 8, { 'text-anchor': 'middle' });
  }

  function drawBetween(svg, between, color, xOf, yOf) {
    const path = between.map(({ order, value }) => `M${xOf(order).toFixed(2)} ${yOf(0).toFixed(2)}V${yOf(value).toFixed(2)}`).join('');
    if (path) view.svg('path', { d: path, class: 'between', stroke: `var(${color})` }, svg);
  }
})(globalThis.zuView = globalThis.zuView || {});
