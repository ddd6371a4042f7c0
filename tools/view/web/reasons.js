// Why there are no values at a cursor, in words.
(function (view) {
  'use strict';

  const mostNames = 6;

  // Collects what is found at the two cursors while their values are put down.
  view.Reasons = class {
    constructor() { this.found = [new Map(), new Map()]; }

    add(cursor, reason, channel) {
      if (!reason) return;
      if (!this.found[cursor].has(reason)) this.found[cursor].set(reason, new Set());
      this.found[cursor].get(reason).add(view.shortName(channel));
    }

    // One line for each cursor and reason. Only missing samples are a matter of single channels.
    lines() {
      return this.found.flatMap((reasons, cursor) => [...reasons].map(([reason, names]) => {
        const shown = [...names].slice(0, mostNames).join(', ') + (names.size > mostNames ? ' …' : '');
        return view.text('why', cursor + 1, view.text(reason, shown));
      }));
    }
  };
})(globalThis.zuView = globalThis.zuView || {});
