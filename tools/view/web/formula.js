// Formulas of calculated channels.
(function (view) {
  'use strict';

})(globalThis.zuView = globalThis.zuView || {});
