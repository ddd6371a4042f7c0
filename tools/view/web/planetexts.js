// What the sheet of the plane says.
(function (view) {
  'use strict';

  view.addTexts({
    en: {
      planeR: 'R, Ω', planeX: 'X, Ω', planeKm: '{0} km', planeZone: 'Z{0}', planeGround: 'G',
      planeLoops: 'Loops', planeLoopHint: 'Loop {0}: show or hide its impedance',
      planeFit: 'Fit', planeFitHint: 'Fit to the zones, the line and the fault (Home, double click)',
      planeHint: 'Drag: pan. Ctrl + wheel: zoom. Click on a locus: the chosen cursor; right click or Alt + click: cursor 2. Points of cursors can be dragged',
      planeLoop: 'Loop', planeAngle: '∠', planeModule: '|Z|, Ω', planeDistance: 'km',
      planeDistanceHint: 'X of the loop by the reactance of the line per km: where it is on the line if it is the faulted loop',
      planeOwnVoltages: 'Voltages: the circuit’s own.', planeOtherVoltages: 'Voltages: {0}, as lines.ini says.',
      planeLine: 'Line: {0} km, Z1 = {1} + j{2} Ω, k0 = {3} ∠ {4}.',
      planeNoLine: 'lines.ini has no data of this line: k0 = 0, so the loops to ground show too much, and there are no kilometres and no zones.',
      planeNoZones: 'lines.ini has no zones for this line (zone1 = …).',
      planeDots: 'Thick: the fault, with a dot after each period. Pale: what else is in the shown span.',
      planeDiamond: 'Diamond: the fault by the analysis, {0} km.',
      planeDead: 'Left out, as no current flows (below {0} A): {1} % of the shown span.', planeBelowLimit: 'No current at this cursor: below {0} A',
      planeNoCurrent: 'The circuit carries no current, so it has no impedance.', planeWaiting: 'Computing…',
      planeNoVoltages: 'No voltages of three phases serve this circuit, so it has no impedance. The key voltages in lines.ini names the circuit whose voltages are to be taken.',
      planeNoCircuit: 'No circuit of the record has the currents of three phases, so there is no impedance.',
    },
    ru: {
      planeR: 'R, Ом', planeX: 'X, Ом', planeKm: '{0} км', planeZone: '{0} ст.', planeGround: '0',
      planeLoops: 'Петли', planeLoopHint: 'Петля {0}: показать или скрыть сопротивление',
      planeFit: 'Вписать', planeFitHint: 'Показать ступени, линию и КЗ целиком (Home, двойной щелчок)',
      planeHint: 'Тянуть: сдвиг. Ctrl + колесо: масштаб. Щелчок по годографу: выбранный курсор; правый щелчок или Alt + щелчок: курсор 2. Точки курсоров можно тянуть',
      planeLoop: 'Петля', planeAngle: '∠', planeModule: '|Z|, Ом', planeDistance: 'км',
      planeDistanceHint: 'X петли, делённое на погонное реактивное сопротивление линии: место на линии, если это петля КЗ',
      planeOwnVoltages: 'Напряжения: собственные.', planeOtherVoltages: 'Напряжения: {0}, согласно lines.ini.',
      planeLine: 'Линия: {0} км, Z1 = {1} + j{2} Ом, k0 = {3} ∠ {4}.',
      planeNoLine: 'В lines.ini нет данных этой линии: k0 = 0, поэтому сопротивления петель фаза–земля завышены, километров и ступеней нет.',
      planeNoZones: 'В lines.ini не заданы ступени для этой линии (zone1 = …).',
      planeDots: 'Толстая линия — КЗ, точка через каждый период. Бледная — остальное на показанном участке.',
      planeDiamond: 'Ромб — место КЗ по расчёту, {0} км.',
      planeDead: 'Не показано из-за отсутствия тока (меньше {0} А): {1} % участка.', planeBelowLimit: 'На этом курсоре тока нет: меньше {0} А',
      planeNoCurrent: 'Токов у присоединения нет, поэтому сопротивления нет.', planeWaiting: 'Вычисляется…',
      planeNoVoltages: 'У присоединения нет напряжений трёх фаз, поэтому сопротивления нет. Ключ voltages в lines.ini задаёт присоединение, напряжения которого следует взять.',
      planeNoCircuit: 'Ни у одного присоединения записи нет токов трёх фаз, поэтому сопротивлений нет.',
    },
  });

  // "AG" as people write it.
  view.planeLoopName = (loop) => [...loop].map((letter) => (letter === 'G' ? view.text('planeGround') : letter)).join('–');
})(globalThis.zuView = globalThis.zuView || {});
