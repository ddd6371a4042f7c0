// Marks of the fault in the oscillogram.
(function (view) {
  'use strict';

})(globalThis.zuView = globalThis.zuView || {});
