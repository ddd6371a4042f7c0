// What the first sheet says.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      answer: 'What happened',
      answerFactFault: 'Fault', answerFactDistance: 'Distance', answerFactResistance: 'Fault resistance', answerFactCurrent: 'Fault current', answerFactCleared: 'Cleared after',
      answerFactTrip: 'Trip', answerFactReclosed: 'Reclosing', answerNoteAtFirst: 'at first {0}', answerNoteOfLength: '{0} % of {1} km',
      answerNoteRange: 'between {0} and {1} %', answerNotePeriods: 'periods: {0}', answerNoteRms: 'phase {0}, RMS', answerNoteForward: 'ahead of the recorder', answerNoteReverse: 'behind the recorder', answerNoteUnknown: 'direction unknown',
      answerNoteAfterOnset: 'after the onset', answerNoteDead: 'after {0}', answerLasts: 'to the end of the record', answerSuccess: 'successful', answerNoSuccess: 'unsuccessful', 
      answerFaultLine: 'The fault on the line', answerBusbar: 'busbar', answerRecorder: 'Recorder', answerBreaker: 'breaker', answerOpened: 'opened: {0}', answerKilometres: '{0} km', answerOhms: '{0} Ω', answerSomewhere: 'somewhere on the line', answerBehind: 'behind the busbar',
      answerLackLineData: 'No distance: the data of the line are missing (lines.ini).', answerLackVoltages: 'No distance: the voltages of the circuit are missing.', answerLackCurrents: 'No distance: currents are missing.',
        answerLackTooShort: 'No distance: the fault is too short.', answerLackSaturated: 'No distance: the current transformers were saturated.',
      answerOperatingTimes: 'Operating times', answerFromOnset: 'from the onset of the fault', answerFromStart: 'from the start of the protection', answerOfRecord: 'signals of the whole record',
      answerRowFault: 'Fault current', answerRowStart: 'Protection starts', answerRowTrip: 'Trip', answerRowBreaker: 'Breaker opens', answerRowDeadTime: 'Dead time', answerAxisMilliseconds: '{0} ms',
      answerDistances: 'Distance by method', answerMethodReactance: 'Reactance', answerMethodTakagi: 'Takagi', answerMethodModifiedTakagi: 'Modified Takagi', answerHeadMethod: 'Method', answerHeadPercent: '% of the line', answerHeadKm: 'km', answerHeadResistance: 'Resistance, Ω',
      answerBest: 'best', answerRangeRow: 'Range',
      answerParts: 'Course of the fault', answerHeadPart: 'Part', answerHeadFrom: 'From the onset', answerHeadLasted: 'Lasted', answerAfterReclosing: 'after reclosing',
      answerMagnitudes: 'Magnitudes before, during and after', answerMagnitudesAtTrigger: 'Magnitudes at the trigger', answerHeadChannel: 'Channel', answerHeadUnit: 'Unit', answerBefore: 'Before', answerDuring: 'During', answerAfter: 'After', answerAtTrigger: 'At the trigger',
      answerMagnitudeHint: 'RMS of the fundamental, primary; angles against the positive-sequence voltage before the fault', answerOthers: 'other circuits: {0}',
      answerEvents: 'Events', answerHeadTime: 'Time', answerHeadFromTrigger: 'From trigger, ms', answerHeadSince: 'From previous, ms', answerHeadCircuit: 'Circuit', answerHeadSignal: 'Signal', answerHeadKind: 'Kind', answerHeadState: 'State',
      answerKindStart: 'start', answerKindTrip: 'trip', answerKindBreaker: 'breaker', answerKindReclosing: 'reclosing', answerClosed: 'closed', answerOpen: 'open', answerBounced: 'bounce, {0} changes', answerPulse: 'pulse, {0} changes',
      answerOnlyFaulted: 'only {0}', answerMore: 'Show {0} more', answerListed: '{0} of {1}', answerLeftOut: 'Further changes, not listed: {0}', answerToEvent: 'Show this moment in the oscillogram', answerNotHeld: 'The page does not hold this moment.',
    },
    ru: {
      answer: 'Что произошло',
      answerFactFault: 'Вид КЗ', answerFactDistance: 'Расстояние', answerFactResistance: 'Сопротивление Rп', answerFactCurrent: 'Ток КЗ', answerFactCleared: 'Отключено через',
      answerFactTrip: 'Команда отключения', answerFactReclosed: 'АПВ', answerNoteAtFirst: 'сначала {0}', answerNoteOfLength: '{0} % от {1} км',
      answerNoteRange: 'от {0} до {1} %', answerNotePeriods: 'периодов: {0}', answerNoteRms: 'фаза {0}, действ.', answerNoteForward: 'в сторону линии', answerNoteReverse: 'за спиной', answerNoteUnknown: 'направление неизвестно',
      answerNoteAfterOnset: 'от начала КЗ', answerNoteDead: 'через {0}', answerLasts: 'до конца записи', answerSuccess: 'успешное', answerNoSuccess: 'неуспешное', 
      answerFaultLine: 'Место повреждения', answerBusbar: 'шины', answerRecorder: 'Регистратор', answerBreaker: 'выключатель', answerOpened: 'отключён: {0}', answerKilometres: '{0} км', answerOhms: '{0} Ом', answerSomewhere: 'место на линии неизвестно', answerBehind: 'за шинами («за спиной»)',
      answerLackLineData: 'Расстояния нет: нет параметров линии (lines.ini).', answerLackVoltages: 'Расстояния нет: нет напряжений присоединения.', answerLackCurrents: 'Расстояния нет: не хватает токов.',
        answerLackTooShort: 'Расстояния нет: КЗ слишком короткое.', answerLackSaturated: 'Расстояния нет: трансформаторы тока насыщены.',
      answerOperatingTimes: 'Времена срабатывания', answerFromOnset: 'от начала КЗ', answerFromStart: 'от пуска защиты', answerOfRecord: 'по сигналам всей записи',
      answerRowFault: 'Ток КЗ', answerRowStart: 'Пуск защиты', answerRowTrip: 'Команда отключения', answerRowBreaker: 'Выключатель отключён', answerRowDeadTime: 'Бестоковая пауза', answerAxisMilliseconds: '{0} мс',
      answerDistances: 'Расстояние по методам', answerMethodReactance: 'Реактанс', answerMethodTakagi: 'Такаги', answerMethodModifiedTakagi: 'Уточнённый Такаги', answerHeadMethod: 'Метод', answerHeadPercent: '% линии', answerHeadKm: 'км', answerHeadResistance: 'Rп, Ом',
      answerBest: 'лучший', answerRangeRow: 'Диапазон',
      answerParts: 'Развитие КЗ', answerHeadPart: 'Этап', answerHeadFrom: 'От начала КЗ', answerHeadLasted: 'Длилось', answerAfterReclosing: 'после АПВ',
      answerMagnitudes: 'Величины до КЗ, во время и после', answerMagnitudesAtTrigger: 'Величины в момент пуска', answerHeadChannel: 'Канал', answerHeadUnit: 'Ед.', answerBefore: 'До', answerDuring: 'Во время', answerAfter: 'После', answerAtTrigger: 'В момент пуска',
      answerMagnitudeHint: 'Действующие значения основной гармоники, первичные; углы от напряжения прямой последовательности до КЗ', answerOthers: 'других присоединений: {0}',
      answerEvents: 'События', answerHeadTime: 'Время', answerHeadFromTrigger: 'От пуска, мс', answerHeadSince: 'От предыдущего, мс', answerHeadCircuit: 'Присоединение', answerHeadSignal: 'Сигнал', answerHeadKind: 'Вид', answerHeadState: 'Состояние',
      answerKindStart: 'пуск', answerKindTrip: 'отключение', answerKindBreaker: 'выключатель', answerKindReclosing: 'АПВ', answerClosed: 'включён', answerOpen: 'отключён', answerBounced: 'дребезг, изменений: {0}', answerPulse: 'импульс, изменений: {0}',
      answerOnlyFaulted: 'только {0}', answerMore: 'Показать ещё {0}', answerListed: '{0} из {1}', answerLeftOut: 'Ещё изменений, не вошедших в список: {0}', answerToEvent: 'Показать этот момент на осциллограмме', answerNotHeld: 'На странице нет этого момента.',
    },
  });
})(globalThis.zuView = globalThis.zuView || {});
