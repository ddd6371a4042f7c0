// The sheet of the values.
(function (view) {
  'use strict';

  view.ValuesSheet = class {
    constructor(page, element) {
      this.page = page;
      this.element = element;
    }

    build() {}

    draw() {}
  };
})(globalThis.zuView = globalThis.zuView || {});
