// The requests of the page to its worker.
(function (view) {
  'use strict';

})(globalThis.zuView = globalThis.zuView || {});
