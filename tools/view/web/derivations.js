// The requests of the page for what is derived along the record: computed once, in a worker, and kept while there is room.
(function (view) {
  'use strict';

  // The scripts of the page that the worker needs.
  const parts = ['axis', 'channels', 'windowfit', 'fourier', 'periods', 'quantities', 'derived', 'frequency', 'deriving', 'worker'];
  const slice = 8; // milliseconds at once, where the page has to compute by itself

  function startWorker({ data }, answer, fail) {
    const text = [...parts.map((name) => document.getElementById(`script-${name}`).textContent), 'zuView.startWorker(globalThis);'].join('\n');
    const worker = new Worker(URL.createObjectURL(new Blob([text], { type: 'text/javascript' })));
    worker.onmessage = ({ data: { key, series } }) => answer(key, series);
    worker.onerror = fail;
    worker.postMessage({ start: { time: data.time, count: data.count, frequency: data.frequency } });
    return {
      channel: (place, { a, b, factor, base, wide, codes }) => worker.postMessage({ channel: { place, json: { a, b, factor, base, wide }, codes } }),
      add: (asked) => worker.postMessage({ add: asked }),
      drop: (key) => worker.postMessage({ drop: key }),
    };
  }

  function startInPage({ axis, data }, answer) {
    const calculator = new view.Calculator({ axis, frequency: data.frequency }, answer, (next) => setTimeout(next), slice);
    return {
      channel: (place, channel) => { calculator.channels[place] = channel; },
      add: (asked) => calculator.add(asked),
      drop: (key) => calculator.drop(key),
    };
  }

  view.Derivations = class {
    constructor(page) {
      this.page = page;
      this.wanted = new Map(); // by slot: {key, done}
      this.asked = new Map();  // by key: what the calculator has to do
      this.kept = new Map();   // by key: series; the one used last comes last
      this.given = new Set();  // places of channels that the calculator has
      this.mostKept = 96 * 1024 * 1024; // bytes of results
      this.calculator = null;
    }

    // The kinds that a circuit (place in data.answer.circuits) has the channels for.
    kindsOf(circuit) {
      const own = view.derived.circuit(this.page.data.answer.circuits[circuit], this.page.analog);
      return view.derived.kinds.filter((kind) => view.derived.names(kind, own).length > 0);
    }

    // Calls done({series: {name: Float32Array}}) later, unless a newer request of the same slot comes first. kind: one of view.derived.kinds;
    // series: NaN where there is no value; empty where the circuit lacks the channels for it.
    request(slot, { kind, circuit }, done) {
      const key = `${kind} ${circuit}`;
      const before = this.wanted.get(slot);
      this.wanted.set(slot, { key, done });
      if (before && before.key !== key) this.dropUnwanted(before.key);
      const kept = this.kept.get(key);
      if (kept) queueMicrotask(() => this.give(key, kept));
      else if (!this.asked.has(key)) this.ask({ key, kind, circuit: this.page.data.answer.circuits[circuit] });
    }

    // The same at once, for what cannot wait.
    now({ kind, circuit }) {
      const key = `${kind} ${circuit}`;
      if (!this.kept.has(key)) {
        const { page } = this;
        const steps = view.deriveTracks(kind, page.periods, view.derived.circuit(page.data.answer.circuits[circuit], page.analog));
        let step = steps.next();
        while (!step.done) step = steps.next();
        this.keep(key, step.value.series);
      }
      return { series: this.kept.get(key) };
    }

    dropUnwanted(key) {
      if ([...this.wanted.values()].some((other) => other.key === key) || !this.asked.delete(key)) return;
      this.calculator.drop(key);
    }

    ask(asked) {
      this.asked.set(asked.key, asked);
      this.start();
      for (const place of [...asked.circuit.voltages, ...asked.circuit.currents]) {
        if (place === null || this.given.has(place)) continue;
        this.calculator.channel(place, this.page.analog[place]);
        this.given.add(place);
      }
      this.calculator.add(asked);
    }

    start() {
      if (this.calculator) return;
      const answer = (key, series) => this.take(key, series || {});
      try {
        this.calculator = startWorker(this.page, answer, (event) => this.goOnInPage(event));
      } catch (error) { // a browser that allows no worker
        this.calculator = startInPage(this.page, answer);
      }
    }

    // The worker did not start, or has broken down.
    goOnInPage(event) {
      event.preventDefault();
      this.calculator = startInPage(this.page, (key, series) => this.take(key, series || {}));
      this.given.clear();
      for (const asked of this.asked.values()) this.ask(asked);
    }

    take(key, series) {
      if (!this.asked.delete(key)) return; // dropped meanwhile
      this.keep(key, series);
      this.give(key, series);
    }

    keep(key, series) {
      this.kept.set(key, series);
      const bytes = () => [...this.kept.values()].flatMap(Object.values).reduce((sum, { byteLength }) => sum + byteLength, 0);
      while (this.kept.size > 1 && bytes() > this.mostKept) this.kept.delete(this.kept.keys().next().value);
    }

    give(key, series) {
      if (this.kept.delete(key)) this.kept.set(key, series); // the one used last
      for (const [slot, { key: own, done }] of [...this.wanted]) {
        if (own !== key) continue;
        this.wanted.delete(slot);
        done({ series });
      }
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
