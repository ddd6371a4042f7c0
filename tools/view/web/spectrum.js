// The sheet of the spectrum.
(function (view) {
  'use strict';

  view.SpectrumSheet = class {
    constructor(page, element) {
      this.page = page;
      this.element = element;
    }

    build() {}

    draw() {}
  };
})(globalThis.zuView = globalThis.zuView || {});
