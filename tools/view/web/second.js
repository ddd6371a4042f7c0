// Another record over the first.
(function (view) {
  'use strict';

})(globalThis.zuView = globalThis.zuView || {});
