// Puts the page of an archive together.
(function (view) {
  'use strict';

  const byId = (id) => document.getElementById(id);
  const sheets = [['listSheet', 'list'], ['statisticsSheet', 'statistics']];

  class Page {
    constructor() {
      this.archive = JSON.parse(byId('archive').textContent);
      this.entries = new view.Entries(this.archive);
      this.filter = new view.Filter();
      const trouble = (error) => this.complain(error);
      this.pictures = new view.Pictures(this.entries, this.archive.pictures, trouble);
      this.order = new view.Order(this.entries);
      this.searching = new view.Searching(this.entries, () => this.request(), trouble);
      const changed = () => this.select();
      this.bar = new view.FilterBar(byId('filters'), this.entries, this.filter, changed);
      this.timeline = new view.Timeline(byId('times'), this.entries, this.filter, () => { this.bar.show(); this.select(); });
      this.detail = new view.Detail(byId('detail'), this.entries, this.pictures, { closed: () => this.list.press({ target: this.list.grid, key: 'Escape' }), trouble });
      this.list = new view.List(byId('list'), this.entries, this.pictures, { chosen: (entry) => this.detail.show(entry), sorted: () => this.showFound() });
      this.statistics = new view.Statistics(byId('statisticsSheet'), this.entries, this.filter, {
        date: view.dayOfText(this.archive.date), goTo: (entry) => this.goTo(entry), changed: () => { this.bar.show(); this.select(); },
      });
    }

    open() {
      this.listen();
      const wanted = view.address.get('sheet');
      this.opened = sheets.some(([id]) => id === wanted) ? wanted : sheets[0][0];
      this.setTheme(view.address.get('theme') || (matchMedia('(prefers-color-scheme: dark)').matches ? 'dark' : 'light'));
      this.setLanguage(view.address.get('lang') || ((navigator.language || '').startsWith('ru') ? 'ru' : 'en'));
      this.loading = this.entries.load(() => this.request(), (error) => this.complain(error));
    }

    listen() {
      byId('theme').addEventListener('click', () => {
        const name = document.documentElement.dataset.theme === 'dark' ? 'light' : 'dark';
        view.address.set('theme', name);
        this.setTheme(name);
      });
      byId('print').addEventListener('click', () => globalThis.print());
      for (const button of byId('languages').children) {
        button.addEventListener('click', () => { view.address.set('lang', button.dataset.language); this.setLanguage(button.dataset.language); });
      }
      globalThis.addEventListener('resize', () => this.resize());
      globalThis.addEventListener('hashchange', () => globalThis.location.reload());
      globalThis.addEventListener('beforeprint', () => this.toPaper());
      globalThis.addEventListener('afterprint', () => { this.list.fromPaper(); this.describeFound(); });
    }

    setTheme(name) {
      document.documentElement.dataset.theme = name === 'dark' ? 'dark' : 'light';
      if (this.list.grid) this.list.show(this.list.found); // the links have the theme
    }

    setLanguage(name) {
      document.documentElement.lang = view.setLanguage(name);
      for (const element of document.querySelectorAll('[data-text]')) element.textContent = view.text(element.dataset.text);
      for (const button of byId('languages').children) button.setAttribute('aria-pressed', button.dataset.language === document.documentElement.lang);
      this.bar.build();
      this.timeline.build();
      this.list.build();
      this.buildTabs();
      this.openSheet(this.opened);
      if (this.detail.entry >= 0) this.detail.show(this.detail.entry);
    }

    buildTabs() {
      byId('tabs').replaceChildren(...sheets.map(([id, key]) => {
        const tab = view.html('button', { type: 'button', textContent: view.text(key), id: `tab-${id}` });
        tab.setAttribute('role', 'tab');
        tab.setAttribute('aria-controls', id);
        tab.dataset.sheet = id;
        tab.addEventListener('click', () => this.openSheet(id));
        byId(id).setAttribute('aria-labelledby', tab.id);
        return tab;
      }));
    }

    openSheet(opened) {
      this.opened = opened;
      view.address.set('sheet', opened === sheets[0][0] ? '' : opened);
      for (const [id] of sheets) byId(id).hidden = id !== opened;
      for (const tab of byId('tabs').children) tab.setAttribute('aria-selected', tab.dataset.sheet === opened);
      this.select();
    }

    // Selects with the next frame of the screen, however many pieces come before it.
    request() {
      if (this.isRequested) return;
      this.isRequested = true;
      requestAnimationFrame(() => {
        this.isRequested = false;
        this.bar.offer();
        this.select();
      });
    }

    // Filters the entries, and shows what is found.
    select() {
      this.selected = view.selectEntries(this.entries, this.filter, this.searching.finder(this.filter.text));
      this.bar.enableReset();
      this.timeline.show(this.selected);
      this.showFound();
    }

    showFound() {
      if (this.opened === 'listSheet') this.list.show(this.order.selected(this.selected, this.list.key, this.list.isDown));
      else this.statistics.show(this.selected);
      this.describe();
      this.describeFound();
    }

    describe() {
      const { archive, entries } = this;
      document.title = archive.title;
      byId('title').textContent = archive.title;
      const reach = this.timeline.reach;
      const parts = [entries.total === 0 ? view.text('noEntries') : reach
        ? view.text('period', view.count(entries.total), view.dayText(reach[0]), view.dayText(reach[1])) : view.text('entriesOnly', view.count(entries.total))];
      if (archive.date) parts.push(view.text('stateOf', archive.date));
      byId('event').textContent = parts.join(' · ');
    }

    describeFound() {
      const { entries, selected } = this;
      const loaded = entries.loadedCount;
      let again = 0;
      selected.flags.forEach((flag, entry) => { if (flag === 2 && entries.is(entry, view.states.again)) again++; });
      const parts = [selected.count === 0 && loaded > 0 ? view.text('foundNone', view.count(loaded)) : view.text('found', view.count(selected.count), view.count(entries.total))];
      if (again > 0) parts.push(view.text('foundAgain', view.count(again)));
      const text = parts.join(', ');
      if (byId('found').textContent !== text) byId('found').textContent = text;
      const isSearching = this.filter.text !== '' && !this.searching.isWhole;
      byId('loading').hidden = loaded === entries.total && !isSearching;
      byId('loading').textContent = loaded < entries.total ? view.text('loadingEntries', view.count(loaded), view.count(entries.total)) : isSearching ? view.text('loadingWords') : '';
    }

    // Shows an entry in the list.
    goTo(entry) {
      this.openSheet('listSheet');
      this.list.activate(this.list.found.indexOf(entry));
      this.list.grid.focus({ preventScroll: true });
    }

    resize() {
      this.timeline.draw();
      this.statistics.drawMonths();
      this.list.show(this.list.found);
    }

    toPaper() {
      if (this.opened !== 'listSheet') return;
      const count = this.list.toPaper();
      if (count < this.list.found.length) byId('found').textContent = view.text('printed', view.count(count), view.count(this.list.found.length));
    }

    complain(error) {
      byId('trouble').hidden = false;
      byId('trouble').textContent = error.message;
    }
  }

  try {
    view.page = new Page();
    view.page.open();
  } catch (error) {
    byId('trouble').hidden = false;
    byId('trouble').textContent = view.text('failed', error.message);
    throw error;
  }
})(globalThis.zuView = globalThis.zuView || {});
