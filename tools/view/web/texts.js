// What a page says, in English and Russian, and how it writes numbers. Texts of records are not here: they are shown
// unchanged.
(function (view) {
  'use strict';

  const texts = {
    en: { durationSeconds: '{0} s', durationMilliseconds: '{0} ms' },
    ru: { durationSeconds: '{0} с', durationMilliseconds: '{0} мс' },
  };

  let language = 'en';

  // Texts of a part of the page, which stand beside its code.
  view.addTexts = function (more) {
    for (const name of Object.keys(texts)) Object.assign(texts[name], more[name]);
  };

  view.setLanguage = function (name) {
    language = texts[name] ? name : 'en';
    return language;
  };

  // The text of a key; {0}, {1} ... are replaced by the values.
  view.text = function (key, ...values) {
    const text = texts[language][key];
    return Array.isArray(text) ? text : text.replace(/\{(\d)\}/g, (mark, index) => values[index]);
  };

  // A number with four significant digits or so, for read-outs.
  view.number = function (value) {
    if (!Number.isFinite(value)) return '—';
    const size = Math.abs(value);
    const decimals = size >= 1000 ? 0 : size >= 100 ? 1 : size >= 10 ? 2 : 3;
    const text = value.toFixed(decimals);
    return view.inLanguage((Number(text) === 0 ? text.replace('-', '') : text).replace('-', '−'));
  };

  // Whole degrees. A full turn is 0; only the report's method has 360 where its angle is just that.
  view.angle = function (degrees) {
    if (!Number.isFinite(degrees)) return '—';
    const rounded = Math.round(degrees);
    return `${rounded === 360 && degrees < 360 ? 0 : rounded}°`;
  };

  // A direct component, marked by an equals sign as on diagrams; nothing where there is none, or none that is seen.
  view.direct = function (value) {
    const text = view.number(value);
    return Number.isFinite(value) && /[1-9]/.test(text) ? `=${text}` : '';
  };

  // Milliseconds with a sign.
  view.milliseconds = function (value) {
    const text = Math.abs(value).toFixed(3);
    const unit = language === 'ru' ? ' мс' : ' ms';
    return (value < 0 && Number(text) !== 0 ? '−' : '+') + view.inLanguage(text) + unit;
  };

  // A number with so many decimals and the decimal separator of the language, as in the sentences.
  view.decimal = function (value, decimals) {
    const text = value.toFixed(decimals);
    return view.inLanguage((Number(text) === 0 ? text.replace('-', '') : text).replace('-', '−'));
  };

  // A number's text with the decimal separator of the language.
  view.inLanguage = (text) => (language === 'ru' ? text.replace('.', ',') : text);

  // Seconds as the sentences have them: 62 ms, 12.5 ms, 1.25 s.
  view.duration = function (seconds) {
    if (Math.abs(seconds) >= 1) return view.text('durationSeconds', view.decimal(seconds, 2));
    const milliseconds = seconds * 1000;
    const isWhole = Math.abs(milliseconds - Math.round(milliseconds)) < 0.05;
    return view.text('durationMilliseconds', view.decimal(milliseconds, isWhole ? 0 : 1));
  };

  view.textsForTests = texts;
})(globalThis.zuView = globalThis.zuView || {});
