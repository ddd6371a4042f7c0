// What computes beside the page.
(function (view) {
  'use strict';

})(globalThis.zuView = globalThis.zuView || {});
