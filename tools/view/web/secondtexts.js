// What the page says of a second record.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      second: 'Second record', secondTrigger: 'Trigger {0}', secondClocks: '{0} by the clocks', secondShown: 'here {0}',
      secondClocksHint: 'From the trigger of the first record to that of the second, by their dates and times',
      secondUtcHint: 'Both records have their time zone: compared in UTC', secondLocalHint: 'At least one record has no time zone: the clocks are compared as they stand',
      secondShownHint: 'From the trigger of the first record to that of the second, as they are shown',
      secondShift: 'Shift, ms', secondShiftHint: 'Milliseconds from where the clocks put the second record',
      secondBack: 'Earlier by a period of the mains', secondBackStep: 'Earlier by one of its samples', secondOnStep: 'Later by one of its samples', secondOn: 'Later by a period of the mains',
      secondTime: 'By time', secondTimeHint: 'Where the clocks put it: shift 0', secondTriggers: 'Triggers', secondTriggersHint: 'Trigger over trigger', secondOnsets: 'Onsets', secondOnsetsHint: 'Start of the fault over start of the fault',
      secondOver: 'Of the second record over this strip', secondNone: 'nothing',
      secondOutside: 'The cursor is outside of the second record.', secondEmpty: 'It has no samples.',
      secondApart: 'It lies {0} from the first record, too far to be seen with it. Align the triggers, or shift it.',
      secondNotice: 'Second record, {0}: {1}', secondKey: 'Ctrl + drag: shift the second record',
    },
    ru: {
      second: 'Вторая запись', secondTrigger: 'Пуск {0}', secondClocks: '{0} по часам', secondShown: 'здесь {0}',
      secondClocksHint: 'От пуска первой записи до пуска второй по их датам и времени',
      secondUtcHint: 'В обеих записях есть часовой пояс: сравнение по UTC', secondLocalHint: 'Хотя бы в одной записи нет часового пояса: часы сравниваются как есть',
      secondShownHint: 'От пуска первой записи до пуска второй, как они показаны',
      secondShift: 'Сдвиг, мс', secondShiftHint: 'Миллисекунды от места второй записи по часам',
      secondBack: 'Раньше на период сети', secondBackStep: 'Раньше на её отсчёт', secondOnStep: 'Позже на её отсчёт', secondOn: 'Позже на период сети',
      secondTime: 'По времени', secondTimeHint: 'Как по часам: сдвиг 0', secondTriggers: 'По пускам', secondTriggersHint: 'Пуск над пуском', secondOnsets: 'По КЗ', secondOnsetsHint: 'Начало КЗ над началом КЗ',
      secondOver: 'Из второй записи на этой дорожке', secondNone: 'ничего',
      secondOutside: 'Курсор вне второй записи.', secondEmpty: 'В ней нет отсчётов.',
      secondApart: 'До первой записи {0} — слишком далеко, чтобы показать их вместе. Совместите пуски или сдвиньте её.',
      secondNotice: 'Вторая запись, {0}: {1}', secondKey: 'Ctrl + тянуть: сдвиг второй записи',
    },
  });

  // A span of time without a sign: 12.5 ms, 75.000 s, 3 d 04:05:06.
  view.apart = function (milliseconds) {
    const units = document.documentElement.lang === 'ru' ? ['мс', 'с', 'сут'] : ['ms', 's', 'd'];
    const size = Math.abs(milliseconds);
    if (size < 1e4) return `${view.decimal(size, 3)} ${units[0]}`;
    if (size < 864e5) return `${view.decimal(size / 1000, 3)} ${units[1]}`;
    const seconds = Math.floor(size / 1000);
    const clock = [seconds / 3600 % 24, seconds / 60 % 60, seconds % 60].map((part) => String(Math.floor(part)).padStart(2, '0'));
    return `${Math.floor(seconds / 86400)} ${units[2]} ${clock.join(':')}`;
  };

  // The same with a sign.
  view.later = (milliseconds) => (milliseconds <= -5e-4 ? '−' : '+') + view.apart(milliseconds);
})(globalThis.zuView = globalThis.zuView || {});
