// The sheet of the plane.
(function (view) {
  'use strict';

  view.PlaneSheet = class {
    constructor(page, element) {
      this.page = page;
      this.element = element;
    }

    build() {}

    draw() {}
  };
})(globalThis.zuView = globalThis.zuView || {});
