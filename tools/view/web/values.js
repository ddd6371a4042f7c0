// The sheet of the values.
(function (view) {
  'use strict';

  view.ValuesSheet = class {
    constructor(page, element) {
      this.page = page;
      this.element = element;
      this.bar = new view.CursorBar(page);
    }

    build() {
      this.bar.build();
      this.element.replaceChildren(this.bar.element);
    }

    draw() { this.bar.draw(); }
  };
})(globalThis.zuView = globalThis.zuView || {});
