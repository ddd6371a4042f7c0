// Days and months of entries, on the clocks of their recorders: numbers that count from 1970.
(function (view) {
  'use strict';

  const dayLength = 86400000; // ms

  view.noOffset = -32768; // of a clock whose distance from UTC is not known

  view.dayOf = (milliseconds) => Math.floor(milliseconds / dayLength);

  // Year and month of a day, 0 for January 1970, by the calendar's periods of 400 years (Howard Hinnant, "chrono-Compatible
  // Low-Level Date Algorithms").
  view.monthOfDay = function (day) {
    const shifted = day + 719468;
    const era = Math.floor(shifted / 146097);
    const dayOfEra = shifted - era * 146097;
    const yearOfEra = Math.floor((dayOfEra - Math.floor(dayOfEra / 1460) + Math.floor(dayOfEra / 36524) - Math.floor(dayOfEra / 146096)) / 365);
    const dayOfYear = dayOfEra - (365 * yearOfEra + Math.floor(yearOfEra / 4) - Math.floor(yearOfEra / 100));
    const month = Math.floor((5 * dayOfYear + 2) / 153); // 0: March
    return (yearOfEra + era * 400 - 1970) * 12 + month + 2;
  };

  const two = (number) => String(number).padStart(2, '0');

  // The first day of a month.
  view.dayOfMonth = (month) => Date.UTC(1970 + Math.floor(month / 12), ((month % 12) + 12) % 12, 1) / dayLength;

  // "2024-05-31"
  view.dayText = (day) => new Date(day * dayLength).toISOString().slice(0, 10);

  // "2024-05"
  view.monthText = (month) => `${1970 + Math.floor(month / 12)}-${two(((month % 12) + 12) % 12 + 1)}`;

  // The day of a date in that form; null of any other text.
  view.dayOfText = function (text) {
    const time = /^\d{4}-\d{2}-\d{2}$/.test(text) ? Date.parse(text) : NaN;
    return Number.isNaN(time) ? null : time / dayLength;
  };

  // "12:00:00.123"
  view.clockText = (local) => new Date(local).toISOString().slice(11, 23);

  // "+03:00"; nothing where it is not known.
  view.offsetText = function (minutes) {
    if (minutes === view.noOffset) return '';
    const size = Math.abs(minutes);
    return `${minutes < 0 ? '−' : '+'}${two(Math.floor(size / 60))}:${two(size % 60)}`;
  };
})(globalThis.zuView = globalThis.zuView || {});
