// What the first sheet says.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      answer: 'What happened',
      factFault: 'Fault', factDistance: 'Distance', factResistance: 'Fault resistance', factCurrent: 'Fault current', factCleared: 'Cleared after',
      factTrip: 'Trip', factReclosed: 'Reclosing', earth: 'earth', noteAtFirst: 'at first {0}', noteOfLength: '{0} % of {1} km',
      noteRange: 'between {0} and {1} %', notePeriods: 'periods: {0}', noteRms: 'phase {0}, RMS', noteForward: 'ahead of the recorder', noteReverse: 'behind the recorder', noteUnknown: 'direction unknown',
      noteAfterOnset: 'after the onset', noteDead: 'after {0}', lasts: 'to the end of the record', success: 'successful', noSuccess: 'unsuccessful', 
      faultLine: 'The fault on the line', busbar: 'busbar', recorder: 'Recorder', breaker: 'breaker', opened: 'opened: {0}', kilometres: '{0} km', ohms: '{0} Ω', somewhere: 'somewhere on the line', behind: 'behind the busbar',
      lack_lineData: 'No distance: the data of the line are missing (lines.ini).', lack_voltages: 'No distance: the voltages of the circuit are missing.', lack_currents: 'No distance: currents are missing.',
        lack_tooShort: 'No distance: the fault is too short.', lack_saturated: 'No distance: the current transformers were saturated.',
      operatingTimes: 'Operating times', fromOnset: 'from the onset of the fault', fromStart: 'from the start of the protection', ofRecord: 'signals of the whole record',
      rowFault: 'Fault current', rowStart: 'Protection starts', rowTrip: 'Trip', rowBreaker: 'Breaker opens', rowDeadTime: 'Dead time', axisMilliseconds: '{0} ms',
      distances: 'Distance by method', methodReactance: 'Reactance', methodTakagi: 'Takagi', methodModifiedTakagi: 'Modified Takagi', headMethod: 'Method', headPercent: '% of the line', headKm: 'km', headResistance: 'Resistance, Ω',
      best: 'best', rangeRow: 'Range',
      parts: 'Course of the fault', headPart: 'Part', headFrom: 'From the onset', headLasted: 'Lasted', afterReclosing: 'after reclosing',
      magnitudes: 'Magnitudes before, during and after', magnitudesAtTrigger: 'Magnitudes at the trigger', headChannel: 'Channel', headUnit: 'Unit', before: 'Before', during: 'During', after: 'After', atTrigger: 'At the trigger',
      magnitudeHint: 'RMS of the fundamental, primary; angles against the positive-sequence voltage before the fault', others: 'other circuits: {0}',
      events: 'Events', headTime: 'Time', headFromTrigger: 'From trigger, ms', headSince: 'From previous, ms', headCircuit: 'Circuit', headSignal: 'Signal', headKind: 'Kind', headState: 'State',
      kindStart: 'start', kindTrip: 'trip', kindBreaker: 'breaker', kindReclosing: 'reclosing', closed: 'closed', open: 'open', bounced: 'bounce, {0} changes', pulse: 'pulse, {0} changes',
      onlyFaulted: 'only {0}', more: 'Show {0} more', listed: '{0} of {1}', leftOut: 'Further changes, not listed: {0}', toEvent: 'Show this moment in the oscillogram', notHeld: 'The page does not hold this moment.',
    },
    ru: {
      answer: 'Что произошло',
      factFault: 'Вид КЗ', factDistance: 'Расстояние', factResistance: 'Переходное сопротивление', factCurrent: 'Ток КЗ', factCleared: 'Отключено через',
      factTrip: 'Команда отключения', factReclosed: 'АПВ', earth: 'земля', noteAtFirst: 'сначала {0}', noteOfLength: '{0} % от {1} км',
      noteRange: 'от {0} до {1} %', notePeriods: 'периодов: {0}', noteRms: 'фаза {0}, действ.', noteForward: 'в сторону линии', noteReverse: 'за спиной', noteUnknown: 'направление неизвестно',
      noteAfterOnset: 'от начала КЗ', noteDead: 'через {0}', lasts: 'до конца записи', success: 'успешное', noSuccess: 'неуспешное', 
      faultLine: 'Место повреждения', busbar: 'шины', recorder: 'Регистратор', breaker: 'выключатель', opened: 'отключён: {0}', kilometres: '{0} км', ohms: '{0} Ом', somewhere: 'место на линии неизвестно', behind: 'за шинами («за спиной»)',
      lack_lineData: 'Расстояния нет: нет параметров линии (lines.ini).', lack_voltages: 'Расстояния нет: нет напряжений присоединения.', lack_currents: 'Расстояния нет: не хватает токов.',
        lack_tooShort: 'Расстояния нет: КЗ слишком короткое.', lack_saturated: 'Расстояния нет: трансформаторы тока насыщены.',
      operatingTimes: 'Времена срабатывания', fromOnset: 'от начала КЗ', fromStart: 'от пуска защиты', ofRecord: 'по сигналам всей записи',
      rowFault: 'Ток КЗ', rowStart: 'Пуск защиты', rowTrip: 'Команда отключения', rowBreaker: 'Выключатель отключён', rowDeadTime: 'Бестоковая пауза', axisMilliseconds: '{0} мс',
      distances: 'Расстояние по методам', methodReactance: 'Реактанс', methodTakagi: 'Такаги', methodModifiedTakagi: 'Уточнённый Такаги', headMethod: 'Метод', headPercent: '% линии', headKm: 'км', headResistance: 'Rп, Ом',
      best: 'лучший', rangeRow: 'Диапазон',
      parts: 'Развитие КЗ', headPart: 'Этап', headFrom: 'От начала КЗ', headLasted: 'Длилось', afterReclosing: 'после АПВ',
      magnitudes: 'Величины до КЗ, во время и после', magnitudesAtTrigger: 'Величины в момент пуска', headChannel: 'Канал', headUnit: 'Ед.', before: 'До', during: 'Во время', after: 'После', atTrigger: 'В момент пуска',
      magnitudeHint: 'Действующие значения основной гармоники, первичные; углы от напряжения прямой последовательности до КЗ', others: 'других присоединений: {0}',
      events: 'События', headTime: 'Время', headFromTrigger: 'От пуска, мс', headSince: 'От предыдущего, мс', headCircuit: 'Присоединение', headSignal: 'Сигнал', headKind: 'Вид', headState: 'Состояние',
      kindStart: 'пуск', kindTrip: 'отключение', kindBreaker: 'выключатель', kindReclosing: 'АПВ', closed: 'включён', open: 'отключён', bounced: 'дребезг, изменений: {0}', pulse: 'импульс, изменений: {0}',
      onlyFaulted: 'только {0}', more: 'Показать ещё {0}', listed: '{0} из {1}', leftOut: 'Ещё изменений, не вошедших в список: {0}', toEvent: 'Показать этот момент на осциллограмме', notHeld: 'На странице нет этого момента.',
    },
  });
})(globalThis.zuView = globalThis.zuView || {});
