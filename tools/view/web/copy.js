// Measured values as text and CSV.
(function (view) {
  'use strict';

})(globalThis.zuView = globalThis.zuView || {});
