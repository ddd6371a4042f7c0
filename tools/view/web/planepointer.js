// What the pointer and the keys do on the plane.
(function (view) {
  'use strict';

  const dragFrom = 4;    // pixels from which a press is no click any more
  const clickWithin = 14; // pixels from a locus
  const dragWithin = 80;
  const grip = 11;       // pixels from the point of a cursor
  const wheelZoom = 1.0015;

  view.PlanePointer = class {
    // sheet: the PlaneSheet whose canvas it is
    constructor(sheet, canvas) {
      this.sheet = sheet;
      this.canvas = canvas;
      this.pointers = new Map();
      canvas.addEventListener('pointerdown', (event) => this.press(event));
      canvas.addEventListener('pointermove', (event) => this.drag(event));
      canvas.addEventListener('pointerup', (event) => this.release(event));
      canvas.addEventListener('pointercancel', (event) => this.pointers.delete(event.pointerId));
      canvas.addEventListener('dblclick', () => sheet.fit());
      canvas.addEventListener('contextmenu', (event) => event.preventDefault());
      canvas.addEventListener('wheel', (event) => this.wheel(event), { passive: false });
    }

    placeOf(event) {
      const box = this.canvas.getBoundingClientRect();
      return [event.clientX - box.left, event.clientY - box.top];
    }

    press(event) {
      this.canvas.setPointerCapture(event.pointerId);
      const place = this.placeOf(event);
      this.pointers.set(event.pointerId, place);
      const held = event.button === 0 && !event.altKey ? this.cursorAt(place) : null;
      this.gesture = { start: place, held, moved: this.pointers.size > 1, second: event.altKey || event.button === 2 };
    }

    // {cursor, loop} whose point is at a place; null if none is.
    cursorAt([x, y]) {
      const { plane, points, loops, page } = this.sheet;
      for (const cursor of [page.cursors.chosen, 1 - page.cursors.chosen])
        for (const loop of loops) {
          const point = points[cursor] && points[cursor][loop];
          if (point && Math.hypot(plane.xOf(point[0]) - x, plane.yOf(point[1]) - y) <= grip) return { cursor, loop };
        }
      return null;
    }

    drag(event) {
      if (!this.pointers.has(event.pointerId)) return;
      const [before, place] = [this.pointers.get(event.pointerId), this.placeOf(event)];
      this.pointers.set(event.pointerId, place);
      if (this.pointers.size > 1) {
        this.pinch(event.pointerId, before, place);
        return;
      }
      const { gesture } = this;
      gesture.moved = gesture.moved || Math.hypot(place[0] - gesture.start[0], place[1] - gesture.start[1]) >= dragFrom;
      if (!gesture.moved) return;
      if (gesture.held) this.sheet.take(place, dragWithin, gesture.held.cursor, [gesture.held.loop]);
      else this.sheet.pan(place[0] - before[0], place[1] - before[1]);
    }

    // What is under the other finger stays there.
    pinch(id, before, place) {
      const [other] = [...this.pointers].filter(([key]) => key !== id).map(([, at]) => at);
      const distance = ([x, y]) => Math.hypot(x - other[0], y - other[1]);
      if (distance(before) > 0 && distance(place) > 0) this.sheet.zoom(distance(before) / distance(place), ...other);
    }

    release(event) {
      if (!this.pointers.delete(event.pointerId) || this.gesture.moved) return;
      const { held, second, start } = this.gesture;
      const { cursors } = this.sheet.page;
      if (held) cursors.set(held.cursor, cursors.samples[held.cursor]);
      else this.sheet.take(start, clickWithin, second ? 1 : cursors.chosen, this.sheet.loops);
    }

    wheel(event) {
      if (!event.ctrlKey && !event.metaKey) return;
      event.preventDefault();
      this.sheet.zoom(wheelZoom ** event.deltaY, ...this.placeOf(event));
    }

    // By the place of the keys, so that they work in every layout.
    key(event) {
      if (event.ctrlKey || event.metaKey || event.altKey || event.target.closest('input:not([type=checkbox]), select, textarea')) return;
      const { sheet } = this;
      const actions = {
        Equal: () => sheet.zoom(0.5), NumpadAdd: () => sheet.zoom(0.5), Minus: () => sheet.zoom(2), NumpadSubtract: () => sheet.zoom(2),
        Home: () => sheet.fit(),
      };
      if (!actions[event.code]) return;
      event.preventDefault();
      actions[event.code]();
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
