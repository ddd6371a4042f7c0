// Both cursors on a sheet that has no strips: their times, steps of the chosen one, and the whole record in small, in
// which they are dragged.
(function (view) {
  'use strict';

  const height = 34;
  const grip = 6; // pixels within which a cursor is taken hold of

  view.addTexts({
    en: {
      barEvent: 'Event', barPeriod: 'Period', barSample: 'Sample', barChoose: 'Choose cursor {0} ({0})',
      barBack: 'The chosen cursor back: {0}', barForward: 'The chosen cursor forward: {0}',
      barDrag: 'The whole record. Click or drag: the chosen cursor; either cursor can be dragged',
    },
    ru: {
      barEvent: 'Событие', barPeriod: 'Период', barSample: 'Отсчёт', barChoose: 'Выбрать курсор {0} ({0})',
      barBack: 'Выбранный курсор назад: {0}', barForward: 'Выбранный курсор вперёд: {0}',
      barDrag: 'Вся запись. Щелчок или перетаскивание: выбранный курсор; каждый курсор можно тянуть',
    },
  });

  const make = (tag, className, text = '') => Object.assign(document.createElement(tag), { className, textContent: text });

  view.CursorBar = class {
    constructor(page) {
      this.page = page;
      this.element = make('div', 'cursorBar');
      this.element.hidden = page.data.count === 0;
    }

    get cursors() { return this.page.cursors; }

    build() {
      const tools = make('div', 'tools');
      this.times = [0, 1].map((cursor) => this.chooser(cursor));
      const choosers = make('span', 'switch');
      choosers.append(...this.times.map((time) => time.parentElement));
      this.between = make('span', 'between');
      tools.append(choosers, this.between, ...[
        this.steps('barEvent', (direction) => this.cursors.toEvent(direction)),
        this.steps('barPeriod', (direction) => this.cursors.step(direction, true)),
        this.steps('barSample', (direction) => this.cursors.step(direction, false)),
      ]);
      this.element.replaceChildren(tools, this.overview());
      this.drawn = '';
    }

    chooser(cursor) {
      const button = Object.assign(make('button', ['first', 'second'][cursor]), { type: 'button', title: view.text('barChoose', cursor + 1) });
      const time = make('span', 'time');
      button.append(make('b', '', String(cursor + 1)), time);
      button.addEventListener('click', () => this.cursors.set(cursor, this.cursors.samples[cursor]));
      return time;
    }

    steps(key, step) {
      const group = make('span', 'steps', view.text(key));
      const pair = make('span', 'switch');
      for (const [sign, direction, hint] of [['‹', -1, 'barBack'], ['›', 1, 'barForward']]) {
        const button = Object.assign(make('button', '', sign), { type: 'button', title: view.text(hint, view.text(key).toLowerCase()) });
        button.setAttribute('aria-label', button.title);
        button.addEventListener('click', () => step(direction));
        pair.append(button);
      }
      group.append(pair);
      return group;
    }

    overview() {
      const whole = make('div', 'whole');
      whole.title = view.text('barDrag');
      this.canvas = document.createElement('canvas');
      this.lines = ['first', 'second'].map((name, cursor) => {
        const line = make('div', `line ${name}`);
        line.append(make('span', '', String(cursor + 1)));
        return line;
      });
      whole.append(this.canvas, ...this.lines);
      whole.addEventListener('pointerdown', (event) => this.press(event, whole));
      whole.addEventListener('pointermove', (event) => { if (event.buttons & 1) this.cursors.set(this.cursors.chosen, this.sampleAt(event, whole)); });
      return whole;
    }

    press(event, whole) {
      if (event.button !== 0) return;
      whole.setPointerCapture(event.pointerId);
      const x = event.clientX - whole.getBoundingClientRect().left;
      const near = [0, 1].find((cursor) => Math.abs(this.xOf(this.cursors.time(cursor)) - x) <= grip);
      if (near !== undefined) this.cursors.set(near, this.cursors.samples[near]);
      else this.cursors.set(this.cursors.chosen, this.sampleAt(event, whole));
    }

    sampleAt(event, whole) {
      const { start, end } = this.page.frame;
      const box = whole.getBoundingClientRect();
      return this.page.axis.sampleAt(start + ((event.clientX - box.left) / box.width) * (end - start));
    }

    xOf(time) {
      const { start, end } = this.page.frame;
      return ((time - start) / (end - start)) * this.canvas.parentElement.clientWidth;
    }

    draw() {
      if (this.element.hidden) return;
      this.drawWhole();
      this.times.forEach((cell, cursor) => {
        cell.textContent = view.milliseconds(this.cursors.time(cursor));
        cell.parentElement.setAttribute('aria-pressed', cursor === this.cursors.chosen);
        this.lines[cursor].style.transform = `translateX(${this.xOf(this.cursors.time(cursor))}px)`;
        this.lines[cursor].classList.toggle('chosen', cursor === this.cursors.chosen);
      });
      this.between.textContent = `Δ ${view.milliseconds(this.cursors.time(1) - this.cursors.time(0))}`;
    }

    // The traces stay as they are while the cursors move.
    drawWhole() {
      const width = this.canvas.parentElement.clientWidth;
      const look = `${width} ${document.documentElement.dataset.theme} ${globalThis.devicePixelRatio}`;
      if (look === this.drawn) return;
      this.drawn = look;
      const context = view.prepareCanvas(this.canvas, width, height);
      view.drawWhole(context, this.page.navigatorChannels(), this.page.frame, { left: 0, width }, height);
      view.drawTrigger(context, this.page.frame, { left: 0, width }, height);
      view.drawMarks(context, this.page.marks.marks, this.page.frame, { left: 0, width }, height);
      context.fillStyle = view.styleColor('--quiet');
      for (const sample of this.cursors.events.samples) context.fillRect(this.xOf(this.page.axis.timeOf(sample)), height - 5, 1, 5);
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
