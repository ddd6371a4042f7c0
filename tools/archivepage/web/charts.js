// Drawings of the statistics.
(function (view) {
  'use strict';

  const height = 190;
  const foot = 20;
  const head = 14;
  const left = 34;
  const most = 160; // bars; of more months the last ones

  // A step of 1, 2 or 5 times a power of ten, so that a count has at most five of them; at least 1.
  function niceStep(count) {
    const power = 10 ** Math.floor(Math.log10(Math.max(count, 1) / 5));
    return Math.max(1, [1, 2, 5, 10].map((factor) => factor * power).find((step) => step * 5 >= count * (1 - 1e-9)));
  }

  // Stacked bars by month: months {first, counts: {group: [...]}}.
  view.monthChart = function ({ first, groups, length }, width) {
    const skipped = Math.max(length - most, 0);
    const shown = length - skipped;
    const sums = Array.from({ length: shown }, (_, bar) => Object.values(groups).reduce((sum, counts) => sum + counts[bar + skipped], 0));
    const top = Math.max(1, ...sums);
    const drawing = view.svg('svg', { width, height: height + foot, viewBox: `0 0 ${width} ${height + foot}`, role: 'img', class: 'monthChart' });
    drawing.setAttribute('aria-label', view.text('monthText', view.monthText(first + skipped), view.monthText(first + length - 1), view.count(top)));
    const yOf = (count) => height - (count / top) * (height - head);
    const step = niceStep(top);
    for (let count = 0; count <= top; count += step) {
      view.svg('path', { d: `M${left} ${Math.round(yOf(count)) + 0.5}H${width}`, class: count === 0 ? 'zero' : 'grid' }, drawing);
      view.svgText(drawing, view.count(count), left - 6, yOf(count) + 4, { 'text-anchor': 'end' });
    }
    const wide = (width - left) / shown;
    drawBars(drawing, { groups, skipped, shown, yOf, wide, first });
    drawMonths(drawing, first + skipped, shown, wide);
    return drawing;
  };

  function drawBars(drawing, { groups, skipped, shown, yOf, wide, first }) {
    const bases = new Array(shown).fill(0);
    const gap = wide > 4 ? Math.min(wide * 0.25, 8) : 0.5;
    for (const [group, counts] of Object.entries(groups)) {
      for (let bar = 0; bar < shown; bar++) {
        const count = counts[bar + skipped];
        if (count === 0) continue;
        const [lower, upper] = [yOf(bases[bar]), yOf(bases[bar] + count)];
        const x = left + bar * wide + gap / 2;
        const rect = view.svg('rect', { x: x.toFixed(1), y: upper.toFixed(1), width: Math.min(wide - gap, 46).toFixed(1), height: (lower - upper).toFixed(1), class: `group ${group}` }, drawing);
        view.svg('title', {}, rect).textContent = `${view.monthText(first + bar + skipped)}, ${view.text(view.groupNames[group])}: ${view.count(count)}`;
        bases[bar] += count;
      }
    }
  }

  function drawMonths(drawing, first, shown, wide) {
    const names = view.text('months');
    const every = [1, 3, 6, 12].find((months) => months * wide >= 44) || 12;
    let free = 0;
    for (let bar = 0; bar < shown; bar++) {
      const month = (((first + bar) % 12) + 12) % 12;
      const x = left + bar * wide;
      if (month % every !== 0 || x < free) continue;
      const year = String(1970 + Math.floor((first + bar) / 12));
      const isNamed = month !== 0 && every < 12;
      view.svgText(drawing, isNamed ? names[month] : year, x + 2, height + 15, isNamed ? {} : { class: 'year' });
      free = x + 40;
    }
  }

  // A bar as long as its part of the whole, cut into groups: [[group, count] ...].
  view.partBar = function (parts, whole) {
    const bar = view.html('span', { className: 'partBar' });
    bar.setAttribute('aria-hidden', 'true');
    for (const [group, count] of parts) {
      const part = view.html('i', { className: group });
      part.style.width = `${(100 * count) / whole}%`;
      bar.append(part);
    }
    return bar;
  };
})(globalThis.zuView = globalThis.zuView || {});
