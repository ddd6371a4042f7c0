// Marks of the fault in the oscillogram: onset, trips, clearing, reclosing; lines through the strips with flags above them.
(function (view) {
  'use strict';

  const mostTrips = 12;
  const gap = 2; // pixels between flags
  const dot = 4; // pixels on each side of a line that has no flag
  const rank = { onset: 0, clearing: 1, change: 1, again: 1, reclosing: 2, trip: 3 }; // who gets a place for its flag first
  const colors = { onset: '--trigger', change: '--trigger', again: '--trigger', trip: '--other3', clearing: '--other4', reclosing: '--other5' };

  view.addTexts({
    en: {
      marks: 'Fault',
      markonset: 'Fault {0}', markchange: '→ {0}', markagain: 'Again {0}', marktrip: 'Trip', markclearing: 'Cleared', markreclosing: 'Reclosed',
      hintonset: 'Onset of the fault {0}', hintchange: 'The fault becomes {0}', hintagain: 'The fault is back: {0}',
      hinttrip: 'Trip: {0}', hintclearing: 'The fault is cleared', hintreclosing: 'The breaker is closed again',
      snap: 'Snap', snapHint: 'Cursors snap to marks and to changes of discrete channels; Shift suspends it',
    },
    ru: {
      marks: 'КЗ',
      markonset: 'КЗ {0}', markchange: '→ в {0}', markagain: 'Снова {0}', marktrip: 'Откл.', markclearing: 'КЗ отключено', markreclosing: 'АПВ',
      hintonset: 'Начало КЗ {0}', hintchange: 'КЗ переходит в {0}', hintagain: 'Повторное КЗ {0}',
      hinttrip: 'Отключение от защит: {0}', hintclearing: 'КЗ отключено', hintreclosing: 'Выключатель включён повторно',
      snap: 'Привязка', snapHint: 'Курсоры привязываются к отметкам и к изменениям дискретных каналов; Shift отменяет',
    },
  });

  function partMarks(part, index, parts) {
    const kind = index === 0 ? 'onset' : part.afterReclosing ? 'again' : 'change';
    const next = parts[index + 1];
    const goesOn = next && next.onset === part.clearing; // what evolves is not cleared
    const marks = [{ kind, fault: part.kind, time: 1000 * part.onset }];
    if (part.clearing !== null && !goesOn) marks.push({ kind: 'clearing', time: 1000 * part.clearing });
    return marks;
  }

  // Trips of the circuit whose operating times are known, else of all; those at one time are one mark.
  function tripMarks({ events, operating }) {
    const marks = [];
    for (const event of events) {
      if (event.kind !== 'trip' || !event.active || event.bounce) continue;
      if (operating.circuit && event.circuit !== operating.circuit) continue;
      const last = marks[marks.length - 1];
      if (last && last.time === 1000 * event.time) last.names.push(event.name);
      else marks.push({ kind: 'trip', time: 1000 * event.time, names: [event.name] });
    }
    return marks.slice(0, mostTrips);
  }

  // The closing after the opening that the operating time of the breaker is of.
  function reclosingMarks({ from, breaker, deadTime }) {
    return [from, breaker, deadTime].includes(null) ? [] : [{ kind: 'reclosing', time: 1000 * (from + breaker + deadTime) }];
  }

  // [{kind, time in ms, sample}] in the order of time, as far as the samples of the page go.
  view.marksOf = function ({ summary }, frame) {
    const parts = summary.fault ? summary.fault.parts : [];
    return [...parts.flatMap(partMarks), ...tripMarks(summary), ...reclosingMarks(summary.operating)]
      .filter(({ time }) => time >= frame.ends[0] && time <= frame.ends[1])
      .map((mark) => ({ ...mark, sample: frame.axis.sampleAt(mark.time), color: colors[mark.kind] }))
      .sort((a, b) => a.time - b.time);
  };

  // In the whole record in small, in an area {left, width} of a canvas.
  view.drawMarks = function (context, marks, { start, end }, area, high) {
    for (const { time, color } of marks) {
      context.fillStyle = view.styleColor(color);
      context.fillRect(area.left + ((time - start) / (end - start)) * area.width - 0.5, 0, 1.5, high);
    }
  };

  // Where flags go that are not to overlap: for each [left, right] in pixels, or null where there is no room and a dot has to
  // do. marks: [{x, width, rank, isBefore}]; a flag stands at the right of its line or, if that is taken, at its left (isBefore:
  // the other way round), and over no other line, nor over its dot if that can be.
  view.placeFlags = function (marks, area) {
    const places = marks.map(() => null);
    const isFree = ([left, right]) => left >= area.left && right <= area.left + area.width &&
      places.every((place) => !place || right + gap <= place[0] || left >= place[1] + gap);
    const order = marks.map((mark, index) => index).sort((a, b) => marks[a].rank - marks[b].rank || a - b);
    for (const index of order) {
      const { x, width, isBefore } = marks[index];
      const both = [[x, x + width], [x - width, x]];
      const sides = (isBefore ? both.reverse() : both).filter(isFree);
      const coversNone = ([left, right], air) => marks.every((other, at) => at === index || other.x <= left - air || other.x >= right + air);
      places[index] = sides.find((side) => coversNone(side, dot)) || sides.find((side) => coversNone(side, 0)) || null;
    }
    return places;
  };

  view.Marks = class {
    // marks: as of marksOf; chosen: called with a mark whose flag is clicked
    constructor(row, overlay, marks, frame, chosen) {
      Object.assign(this, { row, marks, frame, chosen });
      row.parentElement.hidden = marks.length === 0;
      this.lines = marks.map(({ color }) => {
        const line = view.html('div', { className: 'mark' });
        line.style.setProperty('--mark', `var(${color})`);
        overlay.prepend(line); // under the cursors
        return line;
      });
      this.flags = [];
    }

    build() {
      this.flags = this.marks.map((mark) => this.flag(mark));
      this.spans = this.faultSpans().map((span) => ({ ...span, element: view.html('div', { className: 'lasting' }) }));
      this.row.replaceChildren(...this.spans.map(({ element }) => element), ...this.flags);
      this.widths = null;
    }

    flag(mark) {
      const detail = mark.fault ? view.kindText(mark.fault) : mark.names ? mark.names.join(', ') : '';
      const flag = view.html('button', { className: 'flag', type: 'button', textContent: view.text(`mark${mark.kind}`, detail) });
      flag.dataset.kind = mark.kind;
      flag.title = `${view.text(`hint${mark.kind}`, detail)}, ${view.milliseconds(mark.time)}`;
      flag.style.setProperty('--mark', `var(${mark.color})`);
      flag.addEventListener('click', () => this.chosen(mark));
      return flag;
    }

    // From each start of fault current to its clearing, or to the end of the record.
    faultSpans() {
      const ends = this.marks.filter(({ kind }) => kind === 'clearing').map(({ time }) => time);
      return this.marks.filter(({ kind }) => kind === 'onset' || kind === 'again').map(({ time }) =>
        ({ from: time, to: ends.find((end) => end > time) || this.frame.ends[1] }));
    }

    draw() {
      if (this.marks.length === 0) return;
      const width = this.row.clientWidth;
      if (width === 0) return;
      const area = view.plotArea(width);
      const xOf = (time) => area.left + ((time - this.frame.from) / this.frame.span) * area.width;
      this.widths = this.widths || this.flags.map((flag) => this.widthOf(flag));
      const shown = this.marks.map(({ time }) => time >= this.frame.from && time <= this.frame.to);
      this.drawFlags(shown, xOf, area);
      const offset = this.row.getBoundingClientRect().left - this.lines[0].parentElement.getBoundingClientRect().left;
      this.lines.forEach((line, index) => {
        line.hidden = !shown[index];
        line.style.transform = `translateX(${offset + xOf(this.marks[index].time)}px)`;
      });
      this.drawSpans(xOf, area);
    }

    widthOf(flag) {
      flag.hidden = false;
      flag.classList.remove('bare');
      return flag.offsetWidth;
    }

    drawFlags(shown, xOf, area) {
      const inside = this.marks.map((mark, index) => index).filter((index) => shown[index]);
      const places = view.placeFlags(inside.map((index) =>
        ({ x: xOf(this.marks[index].time), width: this.widths[index], rank: rank[this.marks[index].kind], isBefore: this.marks[index].kind === 'onset' })), area);
      this.flags.forEach((flag, index) => {
        const place = places[inside.indexOf(index)];
        const x = xOf(this.marks[index].time);
        flag.hidden = !shown[index];
        flag.classList.toggle('bare', !place);
        flag.classList.toggle('atLeft', Boolean(place) && place[0] < x);
        flag.style.transform = `translateX(${place ? place[0] : x}px)`;
      });
    }

    drawSpans(xOf, area) {
      for (const { from, to, element } of this.spans) {
        const [left, right] = [Math.max(xOf(from), area.left), Math.min(xOf(to), area.left + area.width)];
        element.hidden = right <= left;
        element.style.left = `${left}px`;
        element.style.width = `${Math.max(right - left, 1)}px`;
      }
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
