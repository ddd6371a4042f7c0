// What is drawn on the plane: grid, zones, line, loci, cursors.
(function (view) {
  'use strict';

  const zoneColors = ['--other1', '--other4', '--other5', '--other3', '--other2', '--other6'];
  const closest = 0.7;  // pixels between two points of a locus
  const farthest = 1e6; // pixels from the screen's edge that a canvas can draw to
  const mostDots = 200;
  const font = (size, weight = 400) => `${weight} ${size}px system-ui, "Segoe UI", Roboto, "DejaVu Sans", sans-serif`;

  // A text that stays readable on whatever is under it.
  function label(context, text, x, y, color, size = 12) {
    context.font = font(size, 600);
    context.lineWidth = 3;
    context.lineJoin = 'round';
    context.strokeStyle = view.styleColor('--card');
    context.strokeText(text, x, y);
    context.fillStyle = color;
    context.fillText(text, x, y);
  }

  function line(context, x1, y1, x2, y2) {
    context.beginPath();
    context.moveTo(x1, y1);
    context.lineTo(x2, y2);
    context.stroke();
  }

  function drawGrid(context, plane) {
    const { left, top, width, height } = plane.area;
    const { r, x } = plane.ends;
    context.lineWidth = 1;
    const colorOf = (tick) => view.styleColor(Math.abs(tick) < plane.step / 2 ? '--axis' : '--grid');
    for (const tick of plane.ticks(r)) {
      context.strokeStyle = colorOf(tick);
      line(context, Math.round(plane.xOf(tick)) + 0.5, top, Math.round(plane.xOf(tick)) + 0.5, top + height);
    }
    for (const tick of plane.ticks(x)) {
      context.strokeStyle = colorOf(tick);
      line(context, left, Math.round(plane.yOf(tick)) + 0.5, left + width, Math.round(plane.yOf(tick)) + 0.5);
    }
  }

  view.drawPlaneAxes = function (context, plane) {
    const { left, top, width, height } = plane.area;
    const { r, x } = plane.ends;
    context.font = font(11);
    context.fillStyle = view.styleColor('--quiet');
    context.textAlign = 'center';
    context.textBaseline = 'top';
    for (const tick of plane.ticks(r)) if (plane.xOf(tick) < left + width - 44) context.fillText(view.tick(tick), plane.xOf(tick), top + height + 6);
    context.textAlign = 'right';
    context.fillText(view.text('planeR'), left + width, top + height + 6);
    context.textBaseline = 'middle';
    for (const tick of plane.ticks(x)) if (plane.yOf(tick) > top + 16) context.fillText(view.tick(tick), left - 6, plane.yOf(tick));
    context.fillText(view.text('planeX'), left - 6, top + 6);
    context.strokeStyle = view.styleColor('--rule');
    context.strokeRect(left + 0.5, top + 0.5, width - 1, height - 1);
  };

  // A circle is drawn around its only corner.
  function zonePath(context, plane, { radius, corners }) {
    context.beginPath();
    if (corners.length === 1) {
      context.arc(plane.xOf(corners[0][0]), plane.yOf(corners[0][1]), radius / plane.ohms, 0, 2 * Math.PI);
      return;
    }
    for (const [r, x] of corners) context.lineTo(plane.xOf(r), plane.yOf(x));
    context.closePath();
  }

  // Points around a zone.
  view.zoneCorners = function ({ radius, corners }) {
    if (corners.length > 1) return corners;
    const [[r, x]] = corners;
    return [[r - radius, x - radius], [r + radius, x + radius]];
  };

  // Its highest point, where the number stands.
  function topOf({ radius, corners }) {
    if (corners.length === 1) return [corners[0][0], corners[0][1] + radius];
    return corners.reduce((best, corner) => (corner[1] > best[1] || (corner[1] === best[1] && corner[0] > best[0]) ? corner : best));
  }

  function drawZones(context, plane, zones) {
    for (const zone of [...zones].reverse()) {
      const color = view.styleColor(zoneColors[(zone.number - 1) % zoneColors.length]);
      zonePath(context, plane, zone);
      context.fillStyle = color;
      context.globalAlpha = 0.07;
      context.fill();
      context.globalAlpha = 0.85;
      context.strokeStyle = color;
      context.lineWidth = 1.25;
      context.stroke();
      context.globalAlpha = 1;
      const [r, x] = topOf(zone);
      context.textAlign = zone.corners.length === 1 ? 'center' : 'right';
      context.textBaseline = 'top';
      label(context, view.text('planeZone', zone.number), plane.xOf(r) - (zone.corners.length === 1 ? 0 : 7), plane.yOf(x) + 4, color);
    }
  }

  // Kilometres between two ticks of the line.
  function kilometreStep(pixelsPerKilometre) {
    const least = 46 / pixelsPerKilometre;
    const power = 10 ** Math.floor(Math.log10(least));
    return [1, 2, 5, 10].find((times) => times * power >= least) * power;
  }

  function drawLine(context, plane, { length, r1, x1 }, kilometres) {
    const size = Math.hypot(r1, x1);
    const at = (km) => [plane.xOf(km * r1), plane.yOf(km * x1)];
    const across = [x1 / size, r1 / size]; // on the screen, at right angles to the line
    const color = view.styleColor('--ink');
    context.strokeStyle = color;
    context.lineWidth = 2;
    line(context, ...at(0), ...at(length));
    context.textAlign = 'left';
    context.textBaseline = 'middle';
    const step = kilometreStep(size / plane.ohms);
    const ticks = Array.from({ length: Math.min(Math.floor(length / step + 1e-9), 1000) }, (_, i) => (i + 1) * step).filter((km) => length - km > step / 2);
    for (const km of [...ticks, length]) {
      const [x, y] = at(km);
      context.strokeStyle = color;
      context.lineWidth = 1.5;
      line(context, x - 4 * across[0], y - 4 * across[1], x + 4 * across[0], y + 4 * across[1]);
      label(context, view.text('planeKm', view.tick(km)), x + 9 * across[0], y + 9 * across[1], color, 11);
    }
    if (kilometres !== null) drawDiamond(context, ...at(kilometres));
  }

  // Where the analysis puts the fault.
  function drawDiamond(context, x, y) {
    context.beginPath();
    for (const [dx, dy] of [[0, -7], [7, 0], [0, 7], [-7, 0]]) context.lineTo(x + dx, y + dy);
    context.closePath();
    context.fillStyle = view.styleColor('--trigger');
    context.strokeStyle = view.styleColor('--card');
    context.lineWidth = 1.5;
    context.fill();
    context.stroke();
  }

  // Runs of points in pixels of samples first .. end - 1, without those that have no current and those that nearly coincide.
  view.locusRuns = function (loci, loop, plane, first, end) {
    const [r, x, live] = [loci.r(loop), loci.x(loop), loci.live(loop)];
    const [zeroX, zeroY, perOhm] = [plane.xOf(0), plane.yOf(0), 1 / plane.ohms];
    const runs = [];
    let run = null;
    for (let i = first; i < end; i++) { // of a long record, at each step of a zoom
      const px = zeroX + r[i] * perOhm;
      const py = zeroY - x[i] * perOhm;
      if (!live[i] || !(Math.abs(px) < farthest && Math.abs(py) < farthest)) {
        run = null;
        continue;
      }
      if (!run) runs.push(run = []);
      const last = run.length - 2;
      if (last < 0 || Math.abs(px - run[last]) + Math.abs(py - run[last + 1]) >= closest) run.push(px, py);
    }
    return runs;
  };

  function strokeRuns(context, runs) {
    context.beginPath();
    for (const run of runs) {
      context.moveTo(run[0], run[1]);
      for (let i = 2; i < run.length; i += 2) context.lineTo(run[i], run[i + 1]);
      if (run.length === 2) context.lineTo(run[0] + 0.5, run[1]);
    }
    context.stroke();
  }

  // The shown span thin and pale, the fault in it thick, with a dot after each of its periods.
  function drawLocus(context, plane, loci, loop, spans) {
    const { axis, periods } = loci.page;
    const [first, end] = loci.span();
    context.strokeStyle = context.fillStyle = view.styleColor(view.planeLoops[loop].color);
    context.lineJoin = 'round';
    context.lineWidth = 1;
    context.globalAlpha = spans.length > 0 ? 0.4 : 0.9;
    strokeRuns(context, view.locusRuns(loci, loop, plane, first, end));
    context.globalAlpha = 1;
    context.lineWidth = 2;
    for (const { from, to } of spans) {
      const ends = [Math.max(axis.firstFrom(from), first), Math.min(axis.firstFrom(to) + 1, end)];
      strokeRuns(context, view.locusRuns(loci, loop, plane, ...ends));
      for (let n = 1; n < mostDots && from + n * periods.milliseconds <= to; n++) {
        const sample = axis.sampleAt(from + n * periods.milliseconds);
        if (sample < first || sample >= end || !loci.isLive(loop, sample)) continue;
        context.beginPath();
        context.arc(plane.xOf(loci.r(loop)[sample]), plane.yOf(loci.x(loop)[sample]), 3, 0, 2 * Math.PI);
        context.fill();
      }
    }
  }

  function drawCursor(context, plane, [r, x], cursor, isChosen, color) {
    const [px, py] = [plane.xOf(r), plane.yOf(x)];
    context.beginPath();
    context.arc(px, py, isChosen ? 8.5 : 7.5, 0, 2 * Math.PI);
    context.fillStyle = view.styleColor(cursor === 0 ? '--first' : '--second');
    context.fill();
    context.lineWidth = 2;
    context.strokeStyle = color;
    context.stroke();
    context.font = font(10, 700);
    context.textAlign = 'center';
    context.textBaseline = 'middle';
    context.fillStyle = view.styleColor('--card');
    context.fillText(String(cursor + 1), px, py + 0.5);
  }

  // what: {loci, loops, spans of the fault, line, kilometres of the fault or null, cursors: [{loop: [r, x]}], chosen}
  view.drawPlane = function (context, plane, { loci, loops, spans, line: data, kilometres, cursors, chosen }) {
    const { left, top, width, height } = plane.area;
    context.save();
    context.beginPath();
    context.rect(left, top, width, height);
    context.clip();
    drawGrid(context, plane);
    if (data) drawZones(context, plane, data.zones);
    if (data) drawLine(context, plane, data, kilometres);
    if (loci.isReady) for (const loop of loops) drawLocus(context, plane, loci, loop, spans);
    for (const cursor of [1 - chosen, chosen])
      for (const loop of loops) if (cursors[cursor][loop]) drawCursor(context, plane, cursors[cursor][loop], cursor, cursor === chosen, view.styleColor(view.planeLoops[loop].color));
    context.restore();
    view.drawPlaneAxes(context, plane);
  };
})(globalThis.zuView = globalThis.zuView || {});
