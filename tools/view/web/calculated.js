// Calculated channels on the page.
(function (view) {
  'use strict';

})(globalThis.zuView = globalThis.zuView || {});
