// Everything known of the entry that is chosen.
(function (view) {
  'use strict';

  const pictureSize = { width: 300, height: 132 };

  view.Detail = class {
    constructor(element, entries, pictures, { closed, trouble }) {
      Object.assign(this, { element, entries, pictures, closed, trouble });
      this.entry = -1;
    }

    // Shows an entry; -1 for none.
    show(entry) {
      this.entry = entry;
      this.element.hidden = entry < 0;
      this.element.parentElement.classList.toggle('withDetail', entry >= 0);
      if (entry < 0) return;
      this.element.setAttribute('aria-label', view.text('detailOf'));
      const piece = this.entries.pieceOf(entry);
      this.build(null);
      view.loadPiece(piece.details).then((data) => { if (this.entry === entry) this.build(detailsOf(this.entries, entry, piece, data)); }).catch(this.trouble);
    }

    build(details) {
      const { entries, entry } = this;
      const close = view.html('button', { type: 'button', className: 'close', textContent: '×', title: view.text('close') });
      close.setAttribute('aria-label', view.text('close'));
      close.addEventListener('click', () => this.closed());
      const title = view.html('h2', {}, ...view.whenElements(entries, entry));
      const parts = [view.html('div', { className: 'detailHead' }, title, close), ...view.badges(entries, entry)];
      const picture = this.picture();
      if (picture) parts.push(picture);
      parts.push(this.page(details));
      parts.push(details ? this.facts(details) : view.html('p', { className: 'quiet', textContent: view.text('loadingDetail') }));
      this.element.replaceChildren(...parts);
    }

    picture() {
      const { entry } = this;
      const picture = this.pictures.of(entry);
      if (picture) return view.faultDrawing(picture, pictureSize);
      if (picture === undefined) this.pictures.load(entry, () => { if (this.entry === entry) this.show(entry); });
      return null;
    }

    // The link to its page, or the commands that make one.
    page(details) {
      const href = view.pageAddress(this.entries, this.entry);
      if (href) return view.html('p', { className: 'pageLink' }, view.html('a', { href, target: '_blank', rel: 'noopener', textContent: view.text('open'), title: view.text('openHint') }));
      const { states } = view;
      if (!details || this.entries.is(this.entry, states.gone | states.unread)) return view.html('p');
      return view.html('div', { className: 'command' }, view.html('p', { className: 'quiet', textContent: view.text('command') }), this.command(view.viewCommand(details.path)),
        view.html('p', { className: 'quiet', textContent: view.text('commandAll') }), this.command('zucmtr archive page --pages faults …'));
    }

    command(text) {
      const code = view.html('code', { textContent: text });
      if (text.endsWith('…')) return code;
      const copy = view.html('button', { type: 'button', textContent: view.text('copy') });
      copy.addEventListener('click', () => {
        view.copyText(text, code);
        copy.textContent = view.text('copied');
      });
      return view.html('div', { className: 'copied' }, code, copy);
    }

    facts(details) {
      const rows = factsOf(this.entries, this.entry, details).filter(([, value]) => value !== '' && value !== null && value !== undefined && value !== '—');
      return view.html('dl', { className: 'facts' }, ...rows.flatMap(([key, value]) => [view.html('dt', { textContent: view.text(key) }), view.html('dd', {}, value)]));
    }
  };

  // A page from a disk may not have the clipboard: then the text is selected, for the usual key.
  view.copyText = function (text, element) {
    const select = () => getSelection().selectAllChildren(element);
    if (!navigator.clipboard) return select();
    return navigator.clipboard.writeText(text).catch(select);
  };

  // The values of an entry from its piece.
  function detailsOf(entries, entry, piece, data) {
    const place = entries.placeOf(entry, piece);
    const text = (column) => column.words[Array.isArray(column.of) ? column.of[place] : column.of];
    const value = (column) => (Array.isArray(column) ? column[place] : column);
    const details = { path: view.absolutePath(entries.archive.root, text(data.folder), entries.names[entry]) };
    for (const name of ['gone', 'reason', 'error', 'cause', 'setting', 'rates']) details[name] = text(data[name]);
    for (const name of ['trigger', 'samples', 'analog', 'digital', 'events', 'bytes', 'forgiven']) details[name] = value(data[name]);
    if (entries.kind[entry] === 0) return details;
    const number = entries.faultNumber[entry];
    for (const [name, column] of Object.entries(data.fault)) details[name] = Array.isArray(column) ? column[number] : column;
    return details;
  }

  // [key, text] ...; an empty text for what is not known.
  function factsOf(entries, entry, details) {
    const isRead = !entries.is(entry, view.states.unread);
    const counted = (number) => (number === null || !isRead ? '' : view.count(number));
    const facts = [
      ['dtUnread', details.error], ['dtGone', details.gone.replace('T', ' ').replace('Z', ' UTC')],
      ['dtTrigger', details.trigger && `${details.trigger.replace('T', ' ').replace(/([+-]\d\d:\d\d|Z)$/, '')} (${clockText(entries.offset[entry])})`],
      ['dtStation', entries.stations.words[entries.station[entry]]], ['dtRecorder', entries.recorders.words[entries.recorder[entry]]],
      ['dtCircuit', entries.circuits.words[entries.circuit[entry]]], ['dtCause', details.cause], ['dtSetting', details.setting],
      ...(entries.kind[entry] > 0 ? faultFacts(entries, entry, details) : []),
      ['dtLength', Number.isNaN(entries.length[entry]) ? '' : view.duration(entries.length[entry] / 1000)], ['dtSamples', counted(details.samples)],
      ['dtRates', details.rates], ['dtChannels', isRead ? view.text('channelCounts', view.count(details.analog), view.count(details.digital)) : ''],
      ['dtEvents', counted(details.events)], ['dtForgiven', details.forgiven > 0 ? view.count(details.forgiven) : ''],
      ['dtVerified', ['right', 'wrong'].filter((name) => entries.is(entry, view.states[name])).map((name) => view.text(name)).join()],
      ['dtBytes', view.bytes(details.bytes)], ['dtPath', view.html('span', { className: 'path', textContent: details.path })],
    ];
    return facts;
  }

  const clockText = (offset) => (offset === view.noOffset ? view.text('dtClock') : view.text('dtUtc', view.offsetText(offset)));

  function directionOf(entries, entry) {
    const word = entries.directions.words[entries.direction[entry]];
    return word === 'forward' || word === 'reverse' ? word : 'unknown';
  }

  function faultFacts(entries, entry, details) {
    const after = (milliseconds) => (milliseconds === null ? '' : view.text('after', view.duration(milliseconds / 1000)));
    const percent = entries.percent[entry];
    const distance = view.distanceText(entries, entry);
    const reclosed = { 0: 'reclosedNo', 1: 'reclosedYes' }[entries.reclosed[entry]];
    return [
      ['dtFaultCircuit', entries.circuits.words[entries.faultCircuit[entry]]], ['dtFault', view.faultElement(entries, entry)],
      ['dtDirection', view.text(directionOf(entries, entry))], ['dtDuration', view.lastingText(entries, entry)],
      ['dtCurrent', view.quantity(entries.current[entry], 'ampere')], ['dtDistance', distance && !Number.isNaN(percent) ? `${distance}, ${view.short(percent)} %` : distance],
      ['dtResistance', details.resistance === null ? '' : `${view.short(details.resistance)} ${view.text('ohm')}`],
      ['dtStart', after(details.start)], ['dtTrip', after(details.trip)], ['dtBreaker', after(details.breaker)],
      ['dtReclosed', reclosed ? [view.text(reclosed), details.deadTime === null ? '' : view.duration(details.deadTime / 1000)].filter(Boolean).join(', ') : ''],
    ];
  }
})(globalThis.zuView = globalThis.zuView || {});
