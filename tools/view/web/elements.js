// Elements made in one line each.
(function (view) {
  'use strict';

  const svgSpace = 'http://www.w3.org/2000/svg';

  // An element with properties (className, textContent ...) and children, elements or texts.
  view.html = function (name, properties = {}, ...children) {
    const element = Object.assign(document.createElement(name), properties);
    element.append(...children);
    return element;
  };

  // An element of a drawing, in its parent if there is one.
  view.svg = function (name, attributes, parent) {
    const element = document.createElementNS(svgSpace, name);
    for (const key of Object.keys(attributes)) element.setAttribute(key, attributes[key]);
    if (parent) parent.append(element);
    return element;
  };

  // A text at a place of a drawing.
  view.svgText = function (parent, text, x, y, attributes = {}) {
    const element = view.svg('text', { x, y, ...attributes }, parent);
    element.textContent = text;
    return element;
  };
})(globalThis.zuView = globalThis.zuView || {});
