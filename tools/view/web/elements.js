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

  const ruler = document.createElement('canvas').getContext('2d');

  // Pixels that a text takes in a drawing, with a little air.
  view.textWidth = function (text, size = 13, weight = 600) {
    ruler.font = `${weight} ${size}px system-ui, "Segoe UI", Roboto, "DejaVu Sans", sans-serif`;
    return ruler.measureText(text).width * 1.03;
  };

  // A text at a place of a drawing.
  view.svgText = function (parent, text, x, y, attributes = {}) {
    const element = view.svg('text', { x, y, ...attributes }, parent);
    element.textContent = text;
    return element;
  };
})(globalThis.zuView = globalThis.zuView || {});
