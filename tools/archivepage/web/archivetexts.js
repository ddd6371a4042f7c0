// What the page of an archive says. Texts of the entries are not here: they are shown unchanged.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      list: 'Entries', statistics: 'Statistics', theme: 'Theme', print: 'Print',
      period: '{0} entries from {1} to {2}', entriesOnly: '{0} entries', noEntries: 'There are no entries in this archive.', stateOf: 'as of {0}',
      failed: 'The page could not be shown: {0}', pieceMissing: 'A part of the archive cannot be loaded ({0}), so that entries are missing here. Copy the whole directory of the page, or have it made again.',
      loadingEntries: 'loading: {0} of {1} entries', loadingWords: 'loading what else to search in …',
      found: 'Found: {0} of {1}', foundNone: 'Nothing found: {0} entries, and none that all filters let through.', foundAgain: 'of them {0} once more, as a recording and its record, say',
      text: 'Text', textHint: 'Names of files, stations, recorders, circuits, signals that changed, causes', station: 'Station', allStations: 'all',
      circuit: 'Circuit', allCircuits: 'all', show: 'Show', showAll: 'everything', showFault: 'faults', showNone: 'without fault', showUnread: 'unread', showGone: 'gone', showWrong: 'wrong records',
      kind: 'Kind of fault', kindOne: '1 phase–earth', kindTwo: '2 phases', kindTwoEarth: '2 phases–earth', kindThree: '3 phases', phases: 'Phases',
      lasting: 'Fault lasts, ms', current: 'Current from, A', dates: 'From – to', fromLabel: 'from', toLabel: 'to', reset: 'Clear filters', filters: 'Filters',
      timeline: 'Time line', faults: 'Faults', others: 'without fault', eachMonth: 'by month', eachDay: 'by day', eachYear: 'by year', wholeTime: 'All time', zoomTime: 'Enlarge',
      timelineHint: 'Drag over the bars, or click one, to choose a span of time. The fields "from – to" do the same from the keyboard.',
      timelineText: 'Time line {0}: {1} entries of them {2} faults, from {3} to {4}. The most in one bar: {5}.', barHint: '{0}: faults {1}, without fault {2}',
      picture: 'Waves', time: 'Time', place: 'Station, recorder', fault: 'Fault', duration: 'Lasts', greatest: 'Current', distance: 'Distance', page: 'Page',
      sortBy: 'Sort by: {0}', pictureText: 'Currents and voltages around the fault: up to {0} and {1}', noFault: 'no fault found', toTheEnd: 'to the end', notKnown: 'not known',
      gone: 'gone', goneHint: 'Its files are not there any more', unread: 'unread', unreadHint: 'It could not be read', wrong: 'wrong', wrongHint: 'The record is not what its recording has', right: 'verified', again: 'again', againHint: 'The same event is there as another entry too; statistics count it once',
      record: 'record', recording: 'recording', open: 'Open', openHint: 'Oscillograms, phasors and report (Enter)', noTime: 'time not known',
      command: 'It has no page yet. This writes one:', commandAll: 'This makes pages for all faults:', copy: 'Copy', copied: 'Copied', close: 'Close', detailOf: 'Chosen entry', loadingDetail: 'loading …',
      dtTrigger: 'Trigger', dtUtc: 'UTC {0}', dtClock: 'on its own clock', dtStation: 'Station', dtRecorder: 'Recorder', dtCircuit: 'Started by', dtCause: 'Cause', dtSetting: 'Setting', dtFaultCircuit: 'Faulted circuit',
      dtFault: 'Fault', dtDirection: 'Direction', dtDuration: 'Lasts', dtCurrent: 'Largest current', dtDistance: 'Distance', dtResistance: 'Fault resistance', dtStart: 'Protection starts', dtTrip: 'Trip', dtBreaker: 'Breaker opens', dtReclosed: 'Reclosing',
      dtLength: 'Length', dtSamples: 'Samples', dtRates: 'Samples per second', dtChannels: 'Channels', dtEvents: 'Events', dtBytes: 'Size', dtPath: 'File', dtGone: 'Gone since', dtUnread: 'Could not be read', dtVerified: 'Record', dtForgiven: 'Mistakes forgiven',
      forward: 'forward', reverse: 'reverse', unknown: 'not known', reclosedYes: 'successful', reclosedNo: 'onto the fault', channelCounts: '{0} analog, {1} discrete', after: '{0} after the onset',
      printed: 'The first {0} of {1} entries.',
      statFaults: 'Faults', statMedian: 'Half of them last up to', statSlowest: 'Slowest clearing', statCurrent: 'Largest current', statReclosed: 'Successful reclosings', statReclosedOf: '{0} of {1}', statUnread: 'Unread', statGone: 'Gone',
      statMonthly: 'Faults a month', statByLine: 'By line and kind', statSlow: 'Slowest clearings', statRecorders: 'Recorders, the silent ones first', statNone: 'There are no faults among these entries.',
      statNote: 'Of the entries that are found and whose files are there. An event that a recorder has in several entries counts once; a fault that both ends of a line have recorded counts at each.', line: 'Line', all: 'All', unnamed: 'without a name',
      recorder: 'Recorder', lastEntry: 'Last entry', silentFor: 'Silent for, days', usualGap: 'Usually, days', entriesCount: 'Entries', silent: 'silent', silentHint: 'Silent three times as long as usual and more than two weeks, counted to {0}. Of all entries, whatever the filters.',
      more: 'Show all {0}', monthText: 'Faults a month, {0} to {1}; most in a month: {2}.',
      unitYears: 'y', kilo: 'k', ampere: 'A', volt: 'V', kilometre: 'km', ohm: 'ohm', byteUnits: ['B', 'kB', 'MB', 'GB'], months: ['Jan', 'Feb', 'Mar', 'Apr', 'May', 'Jun', 'Jul', 'Aug', 'Sep', 'Oct', 'Nov', 'Dec'],
    },
    ru: {
      list: 'Записи', statistics: 'Статистика', theme: 'Тема', print: 'Печать',
      period: 'Записей: {0}, с {1} по {2}', entriesOnly: 'Записей: {0}', noEntries: 'В этом архиве нет записей.', stateOf: 'на {0}',
      failed: 'Страницу не удалось показать: {0}', pieceMissing: 'Часть архива не загружается ({0}), поэтому здесь не хватает записей. Скопируйте каталог страницы целиком или создайте её заново.',
      loadingEntries: 'загружается: {0} из {1} записей', loadingWords: 'загружается остальное для поиска …',
      found: 'Найдено: {0} из {1}', foundNone: 'Ничего не найдено: записей {0}, но ни одна не проходит все отборы.', foundAgain: 'из них повторов: {0} (например, запись регистратора и её COMTRADE)',
      text: 'Текст', textHint: 'Имена файлов, объекты, регистраторы, присоединения, сработавшие сигналы, причины', station: 'Объект', allStations: 'все',
      circuit: 'Присоединение', allCircuits: 'все', show: 'Показать', showAll: 'всё', showFault: 'КЗ', showNone: 'без КЗ', showUnread: 'непрочитанные', showGone: 'исчезнувшие', showWrong: 'неверные COMTRADE',
      kind: 'Вид КЗ', kindOne: 'однофазные', kindTwo: 'двухфазные', kindTwoEarth: 'двухфазные на землю', kindThree: 'трёхфазные', phases: 'Фазы',
      lasting: 'КЗ длится, мс', current: 'Ток от, А', dates: 'С – по', fromLabel: 'от', toLabel: 'до', reset: 'Снять отбор', filters: 'Отбор',
      timeline: 'Шкала времени', faults: 'КЗ', others: 'без КЗ', eachMonth: 'по месяцам', eachDay: 'по дням', eachYear: 'по годам', wholeTime: 'Всё время', zoomTime: 'Крупнее',
      timelineHint: 'Протяните по столбцам или щёлкните по одному, чтобы выбрать время. С клавиатуры то же делают поля «С – по».',
      timelineText: 'Шкала времени {0}: записей {1}, из них КЗ {2}, с {3} по {4}. Самый высокий столбец: {5}.', barHint: '{0}: КЗ {1}, без КЗ {2}',
      picture: 'Кривые', time: 'Время', place: 'Объект, регистратор', fault: 'КЗ', duration: 'Длится', greatest: 'Ток', distance: 'Расстояние', page: 'Страница',
      sortBy: 'Упорядочить: {0}', pictureText: 'Токи и напряжения вокруг КЗ: до {0} и {1}', noFault: 'КЗ не найдено', toTheEnd: 'до конца', notKnown: 'неизвестно',
      gone: 'исчезла', goneHint: 'Её файлов больше нет', unread: 'не прочитана', unreadHint: 'Её не удалось прочитать', wrong: 'неверна', wrongHint: 'COMTRADE расходится с записью регистратора', right: 'проверена', again: 'повтор', againHint: 'То же событие есть и в другой записи; в статистике оно считается один раз',
      record: 'COMTRADE', recording: 'запись', open: 'Открыть', openHint: 'Осциллограммы, векторы и отчёт (Enter)', noTime: 'время неизвестно',
      command: 'Страницы у неё пока нет. Её создаст:', commandAll: 'Страницы для всех КЗ создаст:', copy: 'Копировать', copied: 'Скопировано', close: 'Закрыть', detailOf: 'Выбранная запись', loadingDetail: 'загружается …',
      dtTrigger: 'Пуск', dtUtc: 'UTC {0}', dtClock: 'по часам регистратора', dtStation: 'Объект', dtRecorder: 'Регистратор', dtCircuit: 'Пуск по', dtCause: 'Условие пуска', dtSetting: 'Уставка', dtFaultCircuit: 'Повреждено',
      dtFault: 'КЗ', dtDirection: 'Направление', dtDuration: 'Длится', dtCurrent: 'Наибольший ток', dtDistance: 'Расстояние', dtResistance: 'Сопротивление в месте КЗ', dtStart: 'Пуск защиты', dtTrip: 'Команда отключения', dtBreaker: 'Отключение выключателя', dtReclosed: 'АПВ',
      dtLength: 'Длина', dtSamples: 'Отсчётов', dtRates: 'Отсчётов в секунду', dtChannels: 'Каналы', dtEvents: 'Событий', dtBytes: 'Объём', dtPath: 'Файл', dtGone: 'Исчезла', dtUnread: 'Не удалось прочитать', dtVerified: 'Проверка', dtForgiven: 'Прощённых ошибок',
      forward: 'вперёд', reverse: 'назад', unknown: 'неизвестно', reclosedYes: 'успешное', reclosedNo: 'неуспешное', channelCounts: 'аналоговых {0}, дискретных {1}', after: 'через {0} после возникновения',
      printed: 'Первые {0} из {1} записей.',
      statFaults: 'КЗ', statMedian: 'Половина из них длится до', statSlowest: 'Самое долгое отключение', statCurrent: 'Наибольший ток', statReclosed: 'Успешные АПВ', statReclosedOf: '{0} из {1}', statUnread: 'Не прочитано', statGone: 'Исчезло',
      statMonthly: 'КЗ по месяцам', statByLine: 'По присоединениям и видам', statSlow: 'Самые долгие отключения', statRecorders: 'Регистраторы, сначала молчащие', statNone: 'Среди этих записей нет КЗ.',
      statNote: 'По найденным записям, файлы которых на месте. Событие, которое у регистратора есть в нескольких записях, считается один раз; КЗ, записанное на обоих концах линии, считается на каждом.', line: 'Присоединение', all: 'Все', unnamed: 'без имени',
      recorder: 'Регистратор', lastEntry: 'Последняя запись', silentFor: 'Молчит, дней', usualGap: 'Обычно, дней', entriesCount: 'Записей', silent: 'молчит', silentHint: 'Молчит втрое дольше обычного и больше двух недель, считая до {0}. По всем записям, каков бы ни был отбор.',
      more: 'Показать все {0}', monthText: 'КЗ по месяцам, с {0} по {1}; больше всего за месяц: {2}.',
      unitYears: 'г', kilo: 'к', ampere: 'А', volt: 'В', kilometre: 'км', ohm: 'Ом', byteUnits: ['Б', 'кБ', 'МБ', 'ГБ'], months: ['янв', 'фев', 'мар', 'апр', 'май', 'июн', 'июл', 'авг', 'сен', 'окт', 'ноя', 'дек'],
    },
  });

  const thin = ' ';

  // A count with its thousands apart.
  view.count = (number) => String(number).replace(/\B(?=(\d{3})+$)/g, thin);

  // "4.32 kA"; a dash where there is none.
  view.quantity = function (value, unit) {
    if (!Number.isFinite(value)) return '—';
    const isKilo = Math.abs(value) >= 1000;
    return `${view.short(isKilo ? value / 1000 : value)} ${isKilo ? view.text('kilo') : ''}${view.text(unit)}`;
  };

  // A number with three significant digits or all before its point.
  view.short = function (value) {
    const size = Math.abs(value);
    return view.decimal(value, size >= 100 ? 0 : size >= 10 ? 1 : 2);
  };

  view.bytes = function (bytes) {
    const units = view.text('byteUnits');
    const power = Math.min(Math.floor(Math.log10(Math.max(bytes, 1)) / 3), units.length - 1);
    return `${power === 0 ? bytes : view.short(bytes / 1000 ** power)} ${units[power]}`;
  };
})(globalThis.zuView = globalThis.zuView || {});
