// The fault report as text.
(function (view) {
  'use strict';

  view.showReport = function (element, text) {
    element.textContent = text || view.text('noReport');
  };
})(globalThis.zuView = globalThis.zuView || {});
