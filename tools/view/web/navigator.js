// The whole record in small over the strips, with the shown span; dragging it moves the span.
(function (view) {
  'use strict';

  const height = 34;

  view.Navigator = class {
    constructor(canvas, channels, frame) {
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
      const whole = { axis: this.frame.axis, from: this.frame.start, to: this.frame.end, span: this.frame.end - this.frame.start };
      const ends = this.channels.flatMap((channel) => channel.range()).filter(Number.isFinite);
      const [low, high] = [Math.min(...ends), Math.max(...ends)];
      const toY = (value) => 3 + ((high - value) / (high - low || 1)) * (height - 6);
      for (const channel of this.channels) {
        const points = this.pointsOf(channel, whole, area, toY);
        context.strokeStyle = view.styleColor(channel.color);
        context.globalAlpha = 0.75;
        view.strokeTrace(context, points);
      }
      context.globalAlpha = 1;
      this.drawSpan(context, area, whole);
    }

    pointsOf(channel, whole, area, toY) {
      return view.tracePoints(channel, whole, { x: area.left, w: area.width }, toY);
    }

    drawSpan(context, area, whole) {
      const xOf = (time) => area.left + ((time - whole.from) / whole.span) * area.width;
      const [from, to] = [xOf(this.frame.from), xOf(this.frame.to)];
      context.fillStyle = view.styleColor('--veil');
      context.fillRect(area.left, 0, from - area.left, height);
      context.fillRect(to, 0, area.left + area.width - to, height);
      context.strokeStyle = view.styleColor('--accent');
      context.strokeRect(from + 0.5, 0.5, Math.max(to - from - 1, 2), height - 1);
      if (whole.from <= 0 && whole.to >= 0) {
        context.fillStyle = view.styleColor('--trigger');
        context.fillRect(xOf(0), 0, 1, height);
      }
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
