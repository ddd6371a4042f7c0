// What is said of one entry, in the list and beside it.
(function (view) {
  'use strict';

  const { states } = view;

  // Date and time of day with milliseconds; two elements, or one that says that it is not known.
  view.whenElements = function (entries, entry) {
    if (Number.isNaN(entries.time[entry])) return [view.html('span', { className: 'quiet', textContent: view.text('noTime') })];
    return [view.html('span', { className: 'date', textContent: view.dayText(entries.day[entry]) }), ' ',
      view.html('span', { className: 'clock', textContent: view.clockText(entries.local[entry]) })];
  };

  // How long a fault lasts.
  view.lastingText = (entries, entry) => (Number.isNaN(entries.duration[entry]) ? view.text('toTheEnd') : view.duration(entries.duration[entry] / 1000));

  view.distanceText = function (entries, entry) {
    if (Number.isNaN(entries.km[entry])) return '';
    return `${view.short(entries.km[entry])} ${view.text('kilometre')}`;
  };

  // The kind of the fault in the colours of its phases, or that there is none.
  view.faultElement = function (entries, entry) {
    if (entries.kind[entry] > 0) return view.kindElement(entries.kinds.words[entries.kind[entry]]);
    if (entries.is(entry, states.unread)) return view.html('span');
    return view.html('span', { className: 'quiet', textContent: view.text('noFault') });
  };

  // Marks of what is odd about an entry, or good.
  view.badges = function (entries, entry) {
    const badge = (name) => view.html('span', { className: `badge ${name}`, textContent: view.text(name), title: view.text(`${name}Hint`) });
    return ['unread', 'gone', 'wrong', 'again'].filter((name) => entries.is(entry, states[name])).map(badge);
  };

  // The address of the page of an entry, in the language and the theme of this one; null without a page.
  view.pageAddress = function (entries, entry) {
    const name = entries.pages.get(entry);
    const { lang, dataset } = document.documentElement;
    return name ? `pages/${name}#${new URLSearchParams({ lang, theme: dataset.theme })}` : null;
  };

  // A path of a file as the shell takes it.
  const quoted = (path) => (/^[\w./@%+=:,-]+$/.test(path) ? path : `'${path.replace(/'/g, "'\\''")}'`);

  view.absolutePath = function (root, folder, name) {
    const directory = folder.startsWith('/') ? folder : folder === '.' ? root : `${root}/${folder}`;
    return `${directory.replace(/\/$/, '')}/${name}`;
  };

  view.viewCommand = (path) => `zucmtr view ${quoted(path)}`;
})(globalThis.zuView = globalThis.zuView || {});
