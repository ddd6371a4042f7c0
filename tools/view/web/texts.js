// What the page says, in English and Russian. Texts of the record are not here: they are shown unchanged.
(function (view) {
  'use strict';

  const texts = {
    en: {
      oscillogram: 'Oscillogram', plane: 'R–X plane', spectrum: 'Spectrum', values: 'Values', report: 'Fault report', channels: 'Channels', record: 'Record',
      theme: 'Theme', print: 'Print', whole: 'Whole', toTrigger: 'Trigger',
      wholeHint: 'Show the whole record (Home)', triggerHint: 'Show the fault: from three periods before the trigger (T)',
      zoomInHint: 'Zoom in (+)', zoomOutHint: 'Zoom out (−)',
      together: 'By quantity', apart: 'By channel',
      togetherHint: 'Voltages and currents of a circuit in one strip each', apartHint: 'One strip per channel',
      fit: 'Fit to view', keys: 'Mouse and keys', wholeRecord: 'Whole record',
      value: 'value', rms: 'RMS', angle: 'angle', discrete: 'Discrete channels', noCircuit: 'Without circuit',
      unchanged: 'without changes: {0}', noChanges: 'No discrete channel changes.',
      valueHint: 'Value at the cursor', rmsHint: 'RMS of the values in the period before the cursor',
      angleHint: 'Angle of the fundamental at the cursor, or (=) the direct component where that is larger',
      why: 'Cursor {0}: no RMS and no angle. {1}', whyBeginning: 'The record starts less than a period before it.',
      whyRates: 'The sampling rate changes within the period before it.',
      whyUneven: 'The samples of the period before it are not evenly spaced in time.',
      whySlow: 'The record has fewer than three samples in a period.', whyMissing: 'Samples are missing in the period before it: {0}.',
      otherCount: 'The configuration of the record announces {0} samples, the data have {1}.',
      triggerOutside: 'The trigger time, {0}, is outside the record, which starts at {1}. Check both times and the sampling rates in the configuration.',
      missing: 'Missing analog values: {0} (channels: {1}). The traces have gaps there, and a period with a gap has no RMS and no angle.',
      assumed: 'not in the configuration, {0} assumed',
      circuit: 'Circuit', cursor: 'Cursor', method: 'Method', methodReport: 'as in the report', methodFourier: 'full-cycle Fourier',
      phasors: 'Phasors', sequences: 'Symmetrical components', trigger: 'trigger', triggered: 'Trigger {0}', started: 'started by {0}',
      noPhases: 'No circuit has phase voltages or currents.', reference: 'Angles against Ua',
      filter: 'Filter: name, circuit, unit', shown: '{0} of {1}', number: 'No.', kind: 'Kind', name: 'Name', phase: 'Phase',
      unit: 'Unit', least: 'Least', greatest: 'Greatest', ratio: 'Ratio', visible: 'Shown', analogKind: 'analog', stateKind: 'discrete',
      changesCount: 'Changes', firstChange: 'First change', noReport: 'The record has no fault report (HDR).',
      station: 'Station', device: 'Device', source: 'File', revision: 'COMTRADE revision', dataType: 'Data', start: 'First sample',
      triggerTime: 'Trigger', rates: 'Samples per second', frequency: 'Line frequency, Hz', samples: 'Samples', duration: 'Duration, s',
      counts: 'Channels, analog and discrete', timeCode: 'Time code', localCode: 'Local time code', timeQuality: 'Time quality',
      partial: 'This page holds {0} s around the trigger: {1} of {2} samples. The options --window and --full of the program change that.',
      durationSeconds: '{0} s', durationMilliseconds: '{0} ms',
      empty: 'The record has no samples.', failed: 'The page could not be drawn: {0}',
      keyList: ['Drag: pan. Shift + drag: zoom into the span. Double click: whole record', 'Ctrl + wheel, or pinch: zoom. Horizontal wheel: pan',
        'Click: cursor 1. Right click or Alt + click: cursor 2. Cursors can be dragged; they snap to events unless Shift is held', '← →: pan. + −: zoom. Home: whole record. T: the fault',
        ', and .: move the chosen cursor by one sample, with Shift by one period. [ and ]: to the event before and after. 1, 2: choose the cursor'],
    },
    ru: {
      oscillogram: 'Осциллограмма', plane: 'Плоскость R–X', spectrum: 'Спектр', values: 'Значения', report: 'Отчёт об аварии', channels: 'Каналы', record: 'Запись',
      theme: 'Тема', print: 'Печать', whole: 'Вся', toTrigger: 'Пуск',
      wholeHint: 'Показать всю запись (Home)', triggerHint: 'Показать аварию: от трёх периодов до пуска (T)',
      zoomInHint: 'Увеличить (+)', zoomOutHint: 'Уменьшить (−)',
      together: 'По величинам', apart: 'По каналам',
      togetherHint: 'Напряжения и токи присоединения на общих дорожках', apartHint: 'Каждый канал на своей дорожке',
      fit: 'По видимому', keys: 'Мышь и клавиши', wholeRecord: 'Вся запись',
      value: 'мгн.', rms: 'действ.', angle: 'угол', discrete: 'Дискретные каналы', noCircuit: 'Без присоединения',
      unchanged: 'без изменений: {0}', noChanges: 'Дискретные каналы не меняются.',
      valueHint: 'Мгновенное значение на курсоре', rmsHint: 'Действующее значение за период до курсора',
      angleHint: 'Угол основной гармоники на курсоре или (=) постоянная составляющая, если она больше',
      why: 'Курсор {0}: нет действующих значений и углов. {1}', whyBeginning: 'До курсора меньше периода записи.',
      whyRates: 'В пределах периода до курсора меняется частота дискретизации.',
      whyUneven: 'Отсчёты за период до курсора идут с неравным шагом по времени.',
      whySlow: 'В записи меньше трёх отсчётов на период.', whyMissing: 'В периоде до курсора пропущены отсчёты: {0}.',
      otherCount: 'В конфигурации записи указано отсчётов: {0}, в данных их {1}.',
      triggerOutside: 'Время пуска {0} вне записи, которая начинается в {1}. Проверьте оба времени и частоты дискретизации в конфигурации.',
      missing: 'Пропущено аналоговых значений: {0} (каналов: {1}). На осциллограммах там разрывы, а для периода с разрывом нет действующего значения и угла.',
      assumed: 'нет в конфигурации, принято {0}',
      circuit: 'Присоединение', cursor: 'Курсор', method: 'Расчёт', methodReport: 'как в отчёте', methodFourier: 'Фурье за период',
      phasors: 'Векторная диаграмма', sequences: 'Симметричные составляющие', trigger: 'пуск', triggered: 'Пуск {0}', started: 'пуск по {0}',
      noPhases: 'Нет присоединений с фазными напряжениями или токами.', reference: 'Углы от Ua',
      filter: 'Отбор: имя, присоединение, единица', shown: '{0} из {1}', number: '№', kind: 'Вид', name: 'Имя', phase: 'Фаза',
      unit: 'Единица', least: 'Наименьшее', greatest: 'Наибольшее', ratio: 'Трансформация', visible: 'Показан', analogKind: 'аналоговый', stateKind: 'дискретный',
      changesCount: 'Изменений', firstChange: 'Первое', noReport: 'В записи нет отчёта об аварии (HDR).',
      station: 'Объект', device: 'Устройство', source: 'Файл', revision: 'Редакция COMTRADE', dataType: 'Данные', start: 'Первый отсчёт',
      triggerTime: 'Пуск', rates: 'Отсчётов в секунду', frequency: 'Частота сети, Гц', samples: 'Отсчётов', duration: 'Длительность, с',
      counts: 'Каналов, аналоговых и дискретных', timeCode: 'Временной код', localCode: 'Местный временной код', timeQuality: 'Качество времени',
      partial: 'На странице {0} с вокруг пуска: {1} из {2} отсчётов. Это меняют параметры программы --window и --full.',
      durationSeconds: '{0} с', durationMilliseconds: '{0} мс',
      empty: 'В записи нет отсчётов.', failed: 'Страницу не удалось построить: {0}',
      keyList: ['Тянуть: сдвиг. Shift + тянуть: увеличить участок. Двойной щелчок: вся запись', 'Ctrl + колесо или два пальца: масштаб. Горизонтальное колесо: сдвиг',
        'Щелчок: курсор 1. Правый щелчок или Alt + щелчок: курсор 2. Курсоры можно тянуть; они привязываются к событиям, если не удерживать Shift', '← →: сдвиг. + −: масштаб. Home: вся запись. T: авария',
        ', и .: выбранный курсор на отсчёт, с Shift на период. [ и ]: к предыдущему и следующему событию. 1, 2: выбор курсора'],
    },
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
