// The two cursors, the trigger's line, and what pointer and keys do to them and to the shown span.
(function (view) {
  'use strict';

  const grip = 6;      // pixels within which a cursor is taken hold of
  const snapWithin = 6; // pixels within which a cursor snaps to an event
  const dragFrom = 4;  // pixels from which a press is no click any more
  const wheelZoom = 1.0015;
  const longest = 25;  // periods of a fault that are shown at first

  view.Cursors = class {
    // moved: called when a cursor has another sample, or another cursor is chosen. shiftSecond, if there is a second record:
    // called with milliseconds by which it is dragged, and whether that was the last of them.
    constructor(overlay, frame, periods, moved) {
      this.overlay = overlay;
      this.frame = frame;
      this.periods = periods;
      this.moved = moved;
      this.events = null; // an EventSamples, where cursors snap
      this.snaps = true;
      this.fault = null;  // as of faultTimes
      this.chosen = 0;
      this.samples = [0, 0];
      this.lines = ['first', 'second', 'trigger'].map((name) => {
        const line = document.createElement('div');
        line.className = `line ${name}`;
        const flag = document.createElement('span');
        flag.textContent = { first: '1', second: '2', trigger: '' }[name];
        line.append(flag);
        overlay.append(line);
        return line;
      });
      this.box = document.createElement('div');
      this.box.className = 'box';
      this.box.hidden = true;
      overlay.append(this.box);
    }

    time(cursor) { return this.frame.axis.timeOf(this.samples[cursor]); }

    set(cursor, sample) {
      this.samples[cursor] = Math.max(0, Math.min(this.frame.axis.count - 1, sample));
      this.chosen = cursor;
      this.place();
      this.moved();
    }

    // Puts the lines where their times are; outside of the shown span they vanish.
    place() {
      const area = this.area();
      [this.time(0), this.time(1), 0].forEach((time, index) => {
        const inside = time >= this.frame.from && time <= this.frame.to;
        this.lines[index].hidden = !inside;
        this.lines[index].style.transform = `translateX(${area.left + this.xOf(time, area)}px)`;
      });
      this.lines.forEach((line, index) => line.classList.toggle('chosen', index === this.chosen));
    }

    // The plots' area in the overlay: left edge and width, pixels.
    area() {
      const plot = document.querySelector('.ruler .plot').getBoundingClientRect();
      const area = view.plotArea(plot.width);
      return { left: plot.left - this.overlay.getBoundingClientRect().left + area.left, width: area.width };
    }

    xOf(time, area) { return ((time - this.frame.from) / this.frame.span) * area.width; }

    timeAt(clientX) {
      const area = this.area();
      const x = clientX - this.overlay.getBoundingClientRect().left - area.left;
      return this.frame.from + (x / area.width) * this.frame.span;
    }

    // The sample that the pointer means: an event within a few pixels of it, unless Shift is held.
    sampleUnder(event) {
      const time = this.timeAt(event.clientX);
      const isFree = !this.snaps || event.shiftKey || !this.events;
      const near = isFree ? null : this.events.nearest(time, (snapWithin * this.frame.span) / this.area().width);
      return near === null ? this.frame.axis.sampleAt(time) : near;
    }

    // Listens to the element that holds the strips.
    listen(element) {
      this.pointers = new Map();
      element.addEventListener('pointerdown', (event) => this.press(event, element));
      element.addEventListener('pointermove', (event) => this.drag(event));
      element.addEventListener('pointerup', (event) => this.release(event));
      element.addEventListener('pointercancel', (event) => this.forget(event));
      element.addEventListener('dblclick', (event) => { if (this.onPlot(event)) this.frame.showAll(); });
      element.addEventListener('contextmenu', (event) => { if (this.onPlot(event)) event.preventDefault(); });
      element.addEventListener('wheel', (event) => this.wheel(event), { passive: false });
      document.addEventListener('keydown', (event) => this.key(event));
    }

    onPlot(event) { return event.target.closest('.plot') !== null; }

    press(event, element) {
      if (!this.onPlot(event)) return;
      element.setPointerCapture(event.pointerId);
      this.pointers.set(event.pointerId, event.clientX);
      const near = [0, 1].find((cursor) => Math.abs(this.clientXOf(cursor) - event.clientX) <= grip);
      this.gesture = {
        start: event.clientX, last: event.clientX, moved: false, cursor: near,
        isBox: event.shiftKey && near === undefined, second: event.altKey || event.button === 2,
        isShift: Boolean(this.shiftSecond) && (event.ctrlKey || event.metaKey) && near === undefined,
      };
      if (this.pointers.size === 2) this.gesture = { pinch: true, moved: true };
    }

    clientXOf(cursor) {
      const area = this.area();
      return this.overlay.getBoundingClientRect().left + area.left + this.xOf(this.time(cursor), area);
    }

    drag(event) {
      if (!this.pointers.has(event.pointerId)) return;
      const gesture = this.gesture;
      if (gesture.pinch) this.pinch(event);
      this.pointers.set(event.pointerId, event.clientX);
      if (gesture.pinch) return;
      gesture.moved = gesture.moved || Math.abs(event.clientX - gesture.start) >= dragFrom;
      if (!gesture.moved) return;
      if (gesture.cursor !== undefined) this.set(gesture.cursor, this.sampleUnder(event));
      else if (gesture.isBox) this.showBox(gesture.start, event.clientX);
      else if (gesture.isShift) this.shiftSecond(((event.clientX - gesture.last) / this.area().width) * this.frame.span, false);
      else this.frame.pan(((gesture.last - event.clientX) / this.area().width) * this.frame.span);
      gesture.last = event.clientX;
    }

    // Two fingers keep the times under them.
    pinch(event) {
      const [other] = [...this.pointers].filter(([id]) => id !== event.pointerId).map(([, x]) => x);
      const before = Math.abs(this.pointers.get(event.pointerId) - other);
      const after = Math.abs(event.clientX - other);
      if (before > 0 && after > 0) this.frame.zoom(before / after, this.timeAt(other));
    }

    showBox(from, to) {
      const left = this.overlay.getBoundingClientRect().left;
      this.box.hidden = false;
      this.box.style.left = `${Math.min(from, to) - left}px`;
      this.box.style.width = `${Math.abs(to - from)}px`;
    }

    release(event) {
      if (!this.pointers.has(event.pointerId)) return;
      const gesture = this.gesture;
      if (gesture.isBox && gesture.moved) {
        const times = [gesture.start, event.clientX].map((x) => this.timeAt(x)).sort((a, b) => a - b);
        this.frame.show(...times);
      } else if (gesture.isShift && gesture.moved) {
        this.shiftSecond(0, true);
      } else if (!gesture.moved && gesture.cursor === undefined) {
        this.set(gesture.second ? 1 : 0, this.sampleUnder(event));
      }
      this.forget(event);
    }

    forget(event) {
      this.pointers.delete(event.pointerId);
      this.box.hidden = true;
    }

    wheel(event) {
      const sideways = Math.abs(event.deltaX) > Math.abs(event.deltaY);
      if (!this.onPlot(event) || (!event.ctrlKey && !event.metaKey && !sideways)) return;
      event.preventDefault();
      if (sideways) this.frame.pan((event.deltaX / this.area().width) * this.frame.span);
      else this.frame.zoom(wheelZoom ** event.deltaY, this.timeAt(event.clientX));
    }

    // By the place of the keys, so that they work in every layout.
    key(event) {
      if (event.ctrlKey || event.metaKey || event.altKey || event.target.closest('input:not([type=checkbox]), select, textarea')) return;
      const onStrips = {
        ArrowLeft: () => this.frame.pan(-this.frame.span / 10), ArrowRight: () => this.frame.pan(this.frame.span / 10),
        Equal: () => this.zoomAtCursor(0.5), NumpadAdd: () => this.zoomAtCursor(0.5),
        Minus: () => this.zoomAtCursor(2), NumpadSubtract: () => this.zoomAtCursor(2),
        Home: () => this.frame.showAll(), KeyT: () => this.showFault(),
      };
      const onCursors = {
        Comma: () => this.step(-1, event.shiftKey), Period: () => this.step(1, event.shiftKey),
        Digit1: () => this.set(0, this.samples[0]), Digit2: () => this.set(1, this.samples[1]),
      };
      const isOscillogram = !document.getElementById('oscillogram').hidden;
      const everywhere = { BracketLeft: () => this.toEvent(-1), BracketRight: () => this.toEvent(1) };
      const hasCursors = isOscillogram || document.querySelector('.sheet:not([hidden]) .cursorBar');
      const action = everywhere[event.code] || (hasCursors && onCursors[event.code]) || (isOscillogram && onStrips[event.code]);
      if (!action) return;
      event.preventDefault();
      action();
    }

    // Moves the chosen cursor by a sample or by a period.
    step(direction, isPeriod) {
      const sample = this.samples[this.chosen];
      this.set(this.chosen, isPeriod ? this.periods.moved(sample, direction) : sample + direction);
    }

    // Moves the chosen cursor to the next event or the one before, and the shown span with it.
    toEvent(direction) {
      const sample = this.events && this.events.beside(this.samples[this.chosen], direction);
      if (sample === null) return;
      this.set(this.chosen, sample);
      this.reveal(this.time(this.chosen));
    }

    // Moves the shown span to a time outside of it.
    reveal(time) {
      const { from, to, span } = this.frame;
      if (time < from || time > to) this.frame.show(time - span / 2, time + span / 2);
    }

    // Around the chosen cursor if it is seen, otherwise around the middle.
    zoomAtCursor(factor) {
      const time = this.time(this.chosen);
      const inside = time >= this.frame.from && time <= this.frame.to;
      this.frame.zoom(factor, inside ? time : (this.frame.from + this.frame.to) / 2);
    }

    // Three periods before the fault, or without one the trigger, and what follows it: at least nine periods, and the
    // clearing unless it takes long.
    showFault() {
      const period = this.periods.milliseconds;
      const { from, to } = this.fault || { from: 0, to: 0 };
      this.frame.show(from - 3 * period, Math.min(Math.max(from + 9 * period, to + 3 * period), from + longest * period));
    }

    // At first they are one period after the onset, or the trigger, so that the first one shows the start of the fault,
    // and three. The window of a period before them has nothing from before the onset.
    placeAtFault() {
      const { axis } = this.frame;
      const after = (periods) => periods * this.periods.milliseconds;
      const trigger = axis.timeOf(axis.sampleAt(0)); // the nearest sample, where the record is elsewhere
      const sampleOf = (periods) => (this.fault ? Math.min(axis.firstFrom(this.fault.from + after(periods)), axis.count - 1)
        : axis.sampleAt(trigger + after(periods)));
      this.samples = [1, 3].map(sampleOf);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
