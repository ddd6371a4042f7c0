// What follows from the phasors of a period: at a sample, and along the record.
(function (view) {
  'use strict';

})(globalThis.zuView = globalThis.zuView || {});
