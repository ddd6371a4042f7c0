// The whole record in small over the strips, with the shown span; dragging it moves the span.
(function (view) {
  'use strict';

  const height = 34;

  // The traces of channels, one over another, over the whole record in an area {left, width} of a canvas.
  view.drawWhole = function (context, channels, { axis, start, end }, area, high) {
    const whole = { axis, from: start, to: end, span: end - start };
    const ends = channels.flatMap((channel) => channel.range()).filter(Number.isFinite);
    const [least, greatest] = [Math.min(...ends), Math.max(...ends)];
    const toY = (value) => 3 + ((greatest - value) / (greatest - least || 1)) * (high - 6);
    context.globalAlpha = 0.75;
    for (const channel of channels) {
      context.strokeStyle = view.styleColor(channel.color);
      view.strokeTrace(context, view.tracePoints(channel, whole, { x: area.left, w: area.width }, toY));
    }
    context.globalAlpha = 1;
  };

  // The trigger in such an area, if the record has it.
  view.drawTrigger = function (context, { start, end }, area, high) {
    if (start > 0 || end < 0) return;
    context.fillStyle = view.styleColor('--trigger');
    context.fillRect(area.left - (start / (end - start)) * area.width, 0, 1, high);
  };

  view.Navigator = class {
    constructor(canvas, channels, frame, marks) {
      this.marks = marks;
      this.canvas = canvas;
      this.channels = channels; // drawn over one another
      this.frame = frame;
      const move = (event) => {
        const area = view.plotArea(canvas.clientWidth);
        const part = (event.offsetX - area.left) / area.width;
        const middle = frame.start + part * (frame.end - frame.start);
        frame.show(middle - frame.span / 2, middle + frame.span / 2);
      };
      canvas.addEventListener('pointerdown', (event) => {
        canvas.setPointerCapture(event.pointerId);
        move(event);
      });
      canvas.addEventListener('pointermove', (event) => { if (event.buttons & 1) move(event); });
    }

    draw() {
      const width = this.canvas.parentElement.clientWidth;
      const context = view.prepareCanvas(this.canvas, width, height);
      const area = view.plotArea(width);
      view.drawWhole(context, this.channels, this.frame, area, height);
      this.drawSpan(context, area);
      view.drawTrigger(context, this.frame, area, height);
      view.drawMarks(context, this.marks, this.frame, area, height);
    }

    drawSpan(context, area) {
      const { start, end } = this.frame;
      const xOf = (time) => area.left + ((time - start) / (end - start)) * area.width;
      const [from, to] = [xOf(this.frame.from), xOf(this.frame.to)];
      context.fillStyle = view.styleColor('--veil');
      context.fillRect(area.left, 0, from - area.left, height);
      context.fillRect(to, 0, area.left + area.width - to, height);
      context.strokeStyle = view.styleColor('--accent');
      context.strokeRect(from + 0.5, 0.5, Math.max(to - from - 1, 2), height - 1);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
