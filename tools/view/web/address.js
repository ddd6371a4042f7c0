// Settings after the page's address, as in page.html#lang=ru&sheet=oscillogram: they survive a reload, and whoever gets
// the address sees the same.
(function (view) {
  'use strict';

  const settings = () => new URLSearchParams(location.hash.slice(1));

  view.address = {
    // The text of a setting; null if there is none.
    get: (name) => settings().get(name),

    // Keeps a setting; an empty text removes it.
    set(name, text) {
      const all = settings();
      if (text) all.set(name, text);
      else all.delete(name);
      history.replaceState(null, '', `#${all}`);
    },
  };
})(globalThis.zuView = globalThis.zuView || {});
