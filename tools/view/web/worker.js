// What computes beside the page: in a worker, or in slices in the page itself where the browser allows none.
(function (view) {
  'use strict';

  // Works off what it is asked for, {key, kind, circuit}, one after the other and a slice of time at once.
  view.Calculator = class {
    // answer(key, series): called with what was asked for; series is null if it could not be computed. pause(next): calls next() after
    // whatever else waits has had its turn. slice: milliseconds between two pauses.
    constructor({ axis, frequency }, answer, pause, slice) {
      this.periods = new view.Periods(axis, frequency);
      this.answer = answer;
      this.pause = pause;
      this.slice = slice;
      this.channels = []; // by their places in the record
      this.waiting = [];
      this.running = null;
    }

    add(asked) {
      this.waiting.push(asked);
      if (!this.running) this.start();
    }

    // Nobody wants this any more.
    drop(key) {
      this.waiting = this.waiting.filter((asked) => asked.key !== key);
      if (this.running && this.running.key === key) this.running.isDropped = true;
    }

    stepsOf({ kind, circuit }) { return view.deriveTracks(kind, this.periods, view.derived.circuit(circuit, this.channels)); }

    start() {
      const asked = this.waiting.shift();
      this.running = asked ? { key: asked.key, steps: this.stepsOf(asked), isDropped: false } : null;
      if (asked) this.pause(() => this.goOn());
    }

    goOn() {
      const { running } = this;
      const step = running.isDropped ? { done: true } : this.sliceOf(running.steps);
      if (!step.done) {
        this.pause(() => this.goOn());
        return;
      }
      if (!running.isDropped) this.answer(running.key, step.value.series);
      this.start();
    }

    sliceOf(steps) {
      const end = performance.now() + this.slice;
      try {
        let step = steps.next();
        while (!step.done && performance.now() < end) step = steps.next();
        return step;
      } catch (error) {
        setTimeout(() => { throw error; }); // to be seen, while what else is asked for goes on
        return { done: true, value: { series: null } };
      }
    }
  };

  const slice = 15; // milliseconds

  // Called in the worker: {start: {time, count, frequency}}, {channel: {place, json, codes}}, {add: {key, kind, circuit}} and {drop: key} come as
  // messages, {key, series} go back.
  view.startWorker = function (scope) {
    let calculator = null;
    const turns = new MessageChannel(); // messages of the page have their turn between two of these
    let next = null;
    turns.port1.onmessage = () => next();
    const pause = (after) => {
      next = after;
      turns.port2.postMessage(null);
    };
    const answer = (key, series) => scope.postMessage({ key, series }, Object.values(series || {}).map(({ buffer }) => buffer));
    const actions = {
      start({ time, count, frequency }) { calculator = new view.Calculator({ axis: new view.TimeAxis(time, count), frequency }, answer, pause, slice); },
      channel({ place, json, codes }) {
        calculator.channels[place] = new view.AnalogChannel(json, place, null);
        calculator.channels[place].decoded = codes;
      },
      add(asked) { calculator.add(asked); },
      drop(key) { calculator.drop(key); },
    };
    scope.onmessage = ({ data }) => { for (const name of Object.keys(data)) actions[name](data[name]); };
  };
})(globalThis.zuView = globalThis.zuView || {});
