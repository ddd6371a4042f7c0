<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>archive</name>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 не читается: %2</translation>
    </message>
    <message>
        <source>Keep a catalogue of many recordings and records, and search it</source>
        <translation>Вести каталог осциллограмм и записей и искать в нём</translation>
    </message>
    <message>
        <source>Example:
  zucmtr archive update recordings
  zucmtr archive find recordings --kind single --longer-than 80ms</source>
        <translation>Пример:
  zucmtr archive update recordings
  zucmtr archive find recordings --kind single --longer-than 80ms</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no directory</source>
        <translation>«%1» — не каталог</translation>
    </message>
    <message>
        <source>Write what is new, changed, moved or gone into the catalogue</source>
        <translation>Внести в каталог новое, изменённое, перемещённое и исчезнувшее</translation>
    </message>
    <message>
        <source>Take no ini file: circuits and names as in the recordings</source>
        <translation>Без файла ini: присоединения и имена как в осциллограммах</translation>
    </message>
    <message>
        <source>One JSON object at the end, for programs</source>
        <translation>Один объект JSON в конце, для программ</translation>
    </message>
    <message>
        <source>Report failures only</source>
        <translation>Сообщать только о неудачах</translation>
    </message>
    <message>
        <source>Directories whose recordings (.ZU) and records (.cfg, .cff) are catalogued, with those below them</source>
        <translation>Каталоги, осциллограммы (.ZU) и записи (.cfg, .cff) которых вносятся, вместе с вложенными</translation>
    </message>
    <message>
        <source>Exit code: 0 the catalogue is up to date, what cannot be read included; 1 a directory could not be read; 2 wrong usage.

Example:
  zucmtr archive update recordings</source>
        <translation>Код завершения: 0 — каталог обновлён, нечитаемые файлы в нём отмечены; 1 — какой-то каталог не удалось прочитать; 2 — неверный вызов.

Пример:
  zucmtr archive update recordings</translation>
    </message>
    <message>
        <source>The catalogue: a file, or postgresql://user@host/database. Default: zucmtr-archive.db in the (first) directory</source>
        <translation>База каталога: файл или postgresql://user@host/database. По умолчанию zucmtr-archive.db в (первом) каталоге</translation>
    </message>
    <message>
        <source>there is no catalogue &apos;%1&apos;; &apos;zucmtr archive update DIR&apos; makes one</source>
        <translation>нет каталога архива «%1»; его создаёт «zucmtr archive update DIR»</translation>
    </message>
    <message>
        <source>--as-of: &apos;%1&apos; is no date; give it as 2024-01-31</source>
        <translation>--as-of: «%1» — не дата; укажите её в виде 2024-01-31</translation>
    </message>
    <message>
        <source>Show the catalogue in the browser: a directory for a disk, a share or a web server</source>
        <translation>Показать архив в браузере: каталог для диска, общей папки или веб-сервера</translation>
    </message>
    <message>
        <source>The directory; it is made, or brought up to date. Open index.html in it</source>
        <translation>Каталог; он создаётся или обновляется. Откройте в нём index.html</translation>
    </message>
    <message>
        <source>Make the page of &apos;zucmtr view&apos; for entries that have none yet: none, faults or all. Default: none</source>
        <translation>Для каких записей создать страницы «zucmtr view», если их ещё нет: none (ни для каких), faults (с КЗ) или all (для всех). По умолчанию: none</translation>
    </message>
    <message>
        <source>Heading of the page. Default: the name of the archive&apos;s directory</source>
        <translation>Заголовок страницы. По умолчанию: имя каталога с архивом</translation>
    </message>
    <message>
        <source>The day to which the silence of recorders is counted, as 2024-01-31. Default: that of the newest entry</source>
        <translation>День, до которого считается молчание регистраторов, в виде 2024-01-31. По умолчанию: день самой новой записи</translation>
    </message>
    <message>
        <source>The directory whose catalogue is shown. Default: the current one</source>
        <translation>Каталог, архив которого показывается. По умолчанию: текущий</translation>
    </message>
    <message>
        <source>Exit code: 0 the directory is up to date; 1 it cannot be written, or an entry has no page; 2 wrong usage.

Example:
  zucmtr archive page -o page --pages faults recordings</source>
        <translation>Код завершения: 0 каталог обновлён; 1 его не удалось записать, или для какой-то записи нет страницы; 2 неверный вызов.

Пример:
  zucmtr archive page -o page --pages faults recordings</translation>
    </message>
    <message>
        <source>Trigger</source>
        <translation>Пуск</translation>
    </message>
    <message>
        <source>Station</source>
        <translation>Станция</translation>
    </message>
    <message>
        <source>Circuit</source>
        <translation>Присоединение</translation>
    </message>
    <message>
        <source>Fault</source>
        <translation>КЗ</translation>
    </message>
    <message>
        <source>Cleared</source>
        <translation>Отключено за</translation>
    </message>
    <message>
        <source>Current</source>
        <translation>Ток</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>Расстояние</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Файл</translation>
    </message>
    <message>
        <source>%1 kA</source>
        <translation>%1 кА</translation>
    </message>
    <message>
        <source>%1 A</source>
        <translation>%1 А</translation>
    </message>
    <message>
        <source>unreadable</source>
        <translation>не читается</translation>
    </message>
    <message>
        <source>%1 km</source>
        <translation>%1 км</translation>
    </message>
    <message>
        <source>it changed while it was read; the next update reads it</source>
        <translation>файл изменился во время чтения; его прочитает следующее обновление</translation>
    </message>
    <message>
        <source>the process that read it was ended from outside; the next update reads it</source>
        <translation>процесс, который его читал, завершён извне; его прочитает следующее обновление</translation>
    </message>
    <message>
        <source>the program failed while reading it (signal %1); please report that, with the file</source>
        <translation>при чтении файла программа завершилась аварийно (сигнал %1); пожалуйста, сообщите об этом и приложите файл</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is wrong; give %2</source>
        <translation>«%1» не годится; дайте %2</translation>
    </message>
    <message>
        <source>a date or a time as 2024-03, 2024-03-31, 2024-03-31T12:00 or 2024-03-31T12:00+03:00, or how long ago as 12h, 30d or 1y</source>
        <translation>дату или время, как 2024-03, 2024-03-31, 2024-03-31T12:00 или 2024-03-31T12:00+03:00, или сколько времени назад, как 12ч, 30д или 1г</translation>
    </message>
    <message>
        <source>a duration with its unit, as 80ms or 0.5s</source>
        <translation>длительность с единицей, как 80мс или 0.5с</translation>
    </message>
    <message>
        <source>a time with its unit, as 12h, 30d or 4w</source>
        <translation>время с единицей, как 12ч, 30д или 4н</translation>
    </message>
    <message>
        <source>a current with its unit, as 12kA or 800A</source>
        <translation>ток с единицей, как 12кА или 800А</translation>
    </message>
    <message>
        <source>a distance from and to, as 20-30 (in km), 20- or 40-60%</source>
        <translation>расстояние от и до, как 20-30 (км), 20- или 40-60%</translation>
    </message>
    <message>
        <source>AG, BG, CG, AB, BC, CA, ABG, BCG, CAG, ABC, ABCG, single, two, two-earth, three, earth, any or none, or several with commas between</source>
        <translation>AG, BG, CG, AB, BC, CA, ABG, BCG, CAG, ABC, ABCG, single, two, two-earth, three, earth, any или none, или несколько через запятую</translation>
    </message>
    <message>
        <source>phases as A, BC or ABC</source>
        <translation>фазы, как A, BC или ABC</translation>
    </message>
    <message>
        <source>there are more than these %1; --limit 0 shows all</source>
        <translation>показаны первые %1, есть ещё; --limit 0 покажет всё</translation>
    </message>
    <message>
        <source>What comes first: newest (the default), oldest, slowest (the fault that took longest to be cleared), current (the greatest), distance (the nearest), size (the largest), station, circuit, path</source>
        <translation>Что сначала: newest — новые (по умолчанию), oldest — старые, slowest — дольше всех отключавшиеся КЗ, current — наибольший ток, distance — ближайшие, size — самые большие, station — по станции, circuit — по присоединению, path — по пути</translation>
    </message>
    <message>
        <source>The other way round</source>
        <translation>В обратном порядке</translation>
    </message>
    <message>
        <source>So many at most; 0 for all. Default: 100 in a table, else all</source>
        <translation>Не больше стольких; 0 — все. По умолчанию 100 в таблице, иначе все</translation>
    </message>
    <message>
        <source>One JSON object per entry, for programs</source>
        <translation>По объекту JSON на запись каталога, для программ</translation>
    </message>
    <message>
        <source>CSV (RFC 4180), one line per entry</source>
        <translation>CSV (RFC 4180), по строке на запись каталога</translation>
    </message>
    <message>
        <source>Paths alone, one per line</source>
        <translation>Только пути, по одному в строке</translation>
    </message>
    <message>
        <source>Paths alone, each ended by a zero byte, for xargs -0</source>
        <translation>Только пути, каждый с нулевым байтом в конце, для xargs -0</translation>
    </message>
    <message>
        <source>Find recordings and records in the catalogue</source>
        <translation>Найти осциллограммы и записи в базе каталога</translation>
    </message>
    <message>
        <source>The directory with the catalogue, or one below it: then what is below that is searched. Default: the current one</source>
        <translation>Каталог с базой или вложенный в него: тогда поиск идёт только в нём. По умолчанию текущий</translation>
    </message>
    <message>
        <source>All that is given has to be true of an entry. Without conditions all entries are shown.

Exit code: 0 something was found; 1 nothing was found; 2 wrong usage, or the catalogue cannot be read.

Examples:
  zucmtr archive find --circuit Vostochnaya --kind single --since 2024-03 --longer-than 80ms
  zucmtr archive find --kind any --sort slowest --limit 3
  zucmtr archive find --changed CBFP --since 30d -0 | xargs -0 zucmtr events</source>
        <translation>Должно выполняться всё, что указано. Без условий показывается всё.

Код завершения: 0 — что-то найдено; 1 — ничего не найдено; 2 — неверный вызов или база не читается.

Примеры:
  zucmtr archive find --circuit Восточная --kind single --since 2024-03 --longer-than 80мс
  zucmtr archive find --kind any --sort slowest --limit 3
  zucmtr archive find --changed УРОВ --since 30д -0 | xargs -0 zucmtr events</translation>
    </message>
    <message>
        <source>Recordings: %1, records: %2; unreadable: %3, gone: %4</source>
        <translation>Осциллограмм: %1, записей: %2; не читаются: %3, исчезли: %4</translation>
    </message>
    <message>
        <source>Triggered from %1 to %2</source>
        <translation>Пуски с %1 по %2</translation>
    </message>
    <message>
        <source>  and %1 more</source>
        <translation>  и ещё %1</translation>
    </message>
    <message>
        <source>Faults by month</source>
        <translation>КЗ по месяцам</translation>
    </message>
    <message>
        <source>Faults by kind</source>
        <translation>КЗ по видам</translation>
    </message>
    <message>
        <source>Faults by circuit</source>
        <translation>КЗ по присоединениям</translation>
    </message>
    <message>
        <source>Slowest clearings</source>
        <translation>Самые медленные отключения</translation>
    </message>
    <message>
        <source>Recorders without a recording since %1</source>
        <translation>Регистраторы без осциллограмм с %1</translation>
    </message>
    <message>
        <source>none</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>Count what is in the catalogue: faults, slow clearings, silent recorders</source>
        <translation>Сводка по базе: КЗ, медленные отключения, молчащие регистраторы</translation>
    </message>
    <message>
        <source>List recorders without a recording for so long: 12h, 30d (the default), 4w, 1y; the time and the circuit do not matter for that</source>
        <translation>Перечислить регистраторы, от которых столько времени нет осциллограмм: 12ч, 30д (по умолчанию), 4н, 1г; время и присоединение для этого не важны</translation>
    </message>
    <message>
        <source>Only this part: overview, months, kinds, circuits, slowest, silent, duplicates; may be repeated</source>
        <translation>Только эта часть: overview — общее, months — по месяцам, kinds — по видам, circuits — по присоединениям, slowest — медленные, silent — молчащие, duplicates — копии; можно повторять</translation>
    </message>
    <message>
        <source>One JSON object, for programs</source>
        <translation>Один объект JSON, для программ</translation>
    </message>
    <message>
        <source>The directory with the catalogue, or one below it: then what is below that is counted. Default: the current one</source>
        <translation>Каталог с базой или вложенный в него: тогда считается только он. По умолчанию текущий</translation>
    </message>
    <message>
        <source>A fault is counted once, if its recording and its record are both there.

Exit code: 0 done; 1 the catalogue cannot be read; 2 wrong usage.

Examples:
  zucmtr archive stats --since 2024 --until 2024
  zucmtr archive stats --only silent --silent 90d</source>
        <translation>Если есть и осциллограмма, и её запись, КЗ считается один раз.

Код завершения: 0 — готово; 1 — база не читается; 2 — неверный вызов.

Примеры:
  zucmtr archive stats --since 2024 --until 2024
  zucmtr archive stats --only silent --silent 90д</translation>
    </message>
    <message>
        <source>Recordings that are read at the same time; 0: one per processor (the default)</source>
        <translation>Сколько осциллограмм читать одновременно; 0 — по одной на процессор (по умолчанию)</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not there any more</source>
        <translation>«%1» больше нет на месте</translation>
    </message>
    <message>
        <source>the process that looked at it has ended (signal %1)</source>
        <translation>процесс, который её читал, завершился (сигнал %1)</translation>
    </message>
    <message>
        <source>the process that writes the catalogue has ended</source>
        <translation>процесс, который ведёт каталог, завершился</translation>
    </message>
    <message>
        <source>there is no catalogue (zucmtr-archive.db) in &apos;%1&apos; or above; make one with: zucmtr archive update %2</source>
        <translation>ни в «%1», ни выше нет каталога (zucmtr-archive.db); создайте его: zucmtr archive update %2</translation>
    </message>
    <message>
        <source>Triggered at this time or later: 2024, 2024-03, 2024-03-31 or 2024-03-31T12:00, on the recorder&apos;s clock or with Z or +03:00; or 12h, 30d, 4w or 1y ago; or today</source>
        <translation>Пуск в это время или позже: 2024, 2024-03, 2024-03-31 или 2024-03-31T12:00 по часам регистратора или с Z либо +03:00; или 12ч, 30д, 4н, 1г назад; или today — сегодня</translation>
    </message>
    <message>
        <source>Triggered at this time or earlier; of a date, the whole day, month or year</source>
        <translation>Пуск в это время или раньше; дата — это весь день, месяц или год</translation>
    </message>
    <message>
        <source>Of a recorder with this in its name</source>
        <translation>Регистратор, в имени которого это есть</translation>
    </message>
    <message>
        <source>With a fault on a circuit with this in its name, or started by it without a fault</source>
        <translation>КЗ на присоединении, в имени которого это есть, или пуск от него без КЗ</translation>
    </message>
    <message>
        <source>Recordings (.ZU) only</source>
        <translation>Только осциллограммы (.ZU)</translation>
    </message>
    <message>
        <source>Records (.cfg, .cff) only</source>
        <translation>Только записи (.cfg, .cff)</translation>
    </message>
    <message>
        <source>A digital channel with this in its name changed its state</source>
        <translation>Изменился дискретный сигнал, в имени которого это есть</translation>
    </message>
    <message>
        <source>Kinds of fault: AG to ABCG, single, two, two-earth, three, earth, any or none; several with commas between</source>
        <translation>Виды КЗ: от AG до ABCG, single — однофазное, two — двухфазное, two-earth — двухфазное на землю, three — трёхфазное, earth — любое на землю, any — любое, none — без КЗ; можно несколько через запятую</translation>
    </message>
    <message>
        <source>A fault in which all these phases are: A, BC, ABC</source>
        <translation>КЗ, в котором участвуют все эти фазы: A, BC, ABC</translation>
    </message>
    <message>
        <source>A fault whose greatest RMS current is at least this: 12kA, 800A</source>
        <translation>КЗ с наибольшим действующим током не меньше этого: 12кА, 800А</translation>
    </message>
    <message>
        <source>A fault that took longer to be cleared: 80ms, 0.5s</source>
        <translation>КЗ, которое отключалось дольше: 80мс, 0.5с</translation>
    </message>
    <message>
        <source>A fault that lasts to the end of the recording</source>
        <translation>КЗ, которое длится до конца осциллограммы</translation>
    </message>
    <message>
        <source>A fault so far away: 20-30 (in km), 20-, 40-60%</source>
        <translation>КЗ на таком расстоянии: 20-30 (км), 20-, 40-60%</translation>
    </message>
    <message>
        <source>Words that are all among the names, the cause and the channels that changed; vost* for all that begin so</source>
        <translation>Слова, которые все есть среди имён, причины пуска и изменившихся сигналов; вост* — всё, что так начинается</translation>
    </message>
    <message>
        <source>What could not be read</source>
        <translation>То, что не читается</translation>
    </message>
    <message>
        <source>What was there once, instead of what is</source>
        <translation>То, чего уже нет, вместо того, что есть</translation>
    </message>
    <message>
        <source>--catalogue: there is no file &apos;%1&apos;</source>
        <translation>--catalogue: файла «%1» нет</translation>
    </message>
    <message>
        <source>Of a station with this in its name, in capital or small letters; =NAME for the whole name. May be repeated, as --recorder, --circuit and --changed</source>
        <translation>Станция, в имени которой это есть, буквы любые; =ИМЯ — имя целиком. Можно повторять, как и --recorder, --circuit, --changed</translation>
    </message>
    <message>
        <source>nothing was found</source>
        <translation>ничего не найдено</translation>
    </message>
    <message>
        <source>%1 read (%2 unreadable), %3 moved, %4 gone, %5 unchanged</source>
        <translation>прочитано: %1 (не удалось прочитать: %2), перемещено: %3, исчезло: %4, без изменений: %5</translation>
    </message>
    <message>
        <source>In all %1</source>
        <translation>Всего %1</translation>
    </message>
    <message>
        <source>Superfluous copies: %1, %2</source>
        <translation>Лишних копий: %1, %2</translation>
    </message>
    <message>
        <source>until that is put right, the recordings beside it are catalogued without it; the next update reads them again. With --device, update that directory alone</source>
        <translation>пока это не исправлено, осциллограммы рядом с ним вносятся в каталог без него; следующее обновление прочитает их снова. С ключом --device обновляйте только эту папку</translation>
    </message>
</context>
<context>
    <name>archive check</name>
    <message>
        <source>its SHA-256 in the catalogue is not that of its files there</source>
        <translation>SHA-256 в каталоге не тот, который следует из её файлов там же</translation>
    </message>
    <message>
        <source>it is marked as gone, but is there</source>
        <translation>отмечено как отсутствующее, но есть на месте</translation>
    </message>
    <message>
        <source>it is not there</source>
        <translation>файла нет на месте</translation>
    </message>
    <message>
        <source>it has %1 bytes, in the catalogue %2</source>
        <translation>размер %1 байт, в каталоге %2</translation>
    </message>
    <message>
        <source>it was written at another time than the catalogue says</source>
        <translation>время изменения не то, что в каталоге</translation>
    </message>
    <message>
        <source>it belongs to &apos;%1&apos;, but is not in the catalogue</source>
        <translation>относится к «%1», но в каталоге его нет</translation>
    </message>
    <message>
        <source>its size and time are those in the catalogue, but not its SHA-256: it has changed or is damaged</source>
        <translation>размер и время те же, что в каталоге, а SHA-256 другой: файл изменён или повреждён</translation>
    </message>
    <message>
        <source>it is not in the catalogue; &apos;zucmtr archive update&apos; reads it</source>
        <translation>в каталоге его нет; его прочитает «zucmtr archive update»</translation>
    </message>
    <message>
        <source>the catalogue is damaged: %1</source>
        <translation>каталог повреждён: %1</translation>
    </message>
    <message>
        <source>%1 entries with %2 files, %3 gone</source>
        <translation>в каталоге: %1, файлов: %2, отсутствует: %3</translation>
    </message>
    <message>
        <source>%1: all is as the catalogue says</source>
        <translation>%1: всё соответствует каталогу</translation>
    </message>
    <message>
        <source>Hold the catalogue against the files, and against itself</source>
        <translation>Сверить каталог с файлами и проверить его самого</translation>
    </message>
    <message>
        <source>Compare names, sizes and times of the files alone, without reading them for their SHA-256</source>
        <translation>Сверять только имена, размеры и время файлов, не читая их для SHA-256</translation>
    </message>
    <message>
        <source>One JSON object per finding, and one with the totals at the end, for programs</source>
        <translation>По объекту JSON на каждое расхождение и один с итогами в конце, для программ</translation>
    </message>
    <message>
        <source>Report findings only</source>
        <translation>Сообщать только о расхождениях</translation>
    </message>
    <message>
        <source>The directory with the catalogue, or one below it: then only what is below that is checked. Default: all of the catalogue in the current one or above</source>
        <translation>Каталог с базой или вложенный в него: тогда проверяется только то, что в нём. По умолчанию — всё из базы в текущем каталоге или выше</translation>
    </message>
    <message>
        <source>Checked are the pieces of each entry: they are there, with size, time and SHA-256; what is marked as gone
is gone; each recording and record has an entry; and the database agrees with itself. Nothing is changed.
&apos;zucmtr archive update&apos; brings the catalogue up to date with what is new, changed, moved or gone.

Exit code: 0 all is as the catalogue says; 1 something is not, or the catalogue cannot be read; 2 wrong usage.

Example:
  zucmtr archive check --fast recordings</source>
        <translation>Проверяется: файлы каждой осциллограммы и записи на месте, их размер, время и SHA-256 те же; отмеченного как
отсутствующее нет; каждая осциллограмма и запись есть в каталоге; база данных не противоречит сама себе. Ничего не меняется.
«zucmtr archive update» вносит в каталог новое, изменённое, перемещённое и пропавшее.

Код завершения: 0 — всё соответствует каталогу; 1 — не всё, или каталог не читается; 2 — неверная команда.

Пример:
  zucmtr archive check --fast recordings</translation>
    </message>
    <message>
        <source>it continues a recording, but a file before it is missing</source>
        <translation>это продолжение осциллограммы, но файла перед ним нет</translation>
    </message>
    <message>
        <source>%1; findings: %2</source>
        <translation>%1; расхождений: %2</translation>
    </message>
</context>
<context>
    <name>archive page</name>
    <message>
        <source>&apos;%1&apos; cannot be written: %2</source>
        <translation>не удаётся записать «%1»: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a link to another place; remove it, or give another directory</source>
        <translation>«%1» — ссылка на другое место; удалите её или укажите другой каталог</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no page of an archive; give another directory</source>
        <translation>«%1» — не страница архива; укажите другой каталог</translation>
    </message>
    <message>
        <source>&apos;%1&apos;: another program is at work there</source>
        <translation>«%1»: там уже работает другая программа</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be made a directory</source>
        <translation>«%1» не удаётся сделать каталогом</translation>
    </message>
</context>
<context>
    <name>batch</name>
    <message>
        <source>; it was there already</source>
        <translation>; она уже была на месте</translation>
    </message>
    <message>
        <source>%1: its record replaced that of %2, which has the same name; convert them into different directories</source>
        <translation>%1: запись COMTRADE заменила запись %2 с тем же именем; преобразуйте их в разные каталоги</translation>
    </message>
    <message>
        <source>%1 converted and verified</source>
        <translation>преобразовано и проверено: %1</translation>
    </message>
    <message>
        <source>%1 converted</source>
        <translation>преобразовано: %1</translation>
    </message>
    <message>
        <source>%1 to convert</source>
        <translation>к преобразованию: %1</translation>
    </message>
    <message>
        <source>%1 failed</source>
        <translation>с ошибкой: %1</translation>
    </message>
    <message>
        <source>%1 not started</source>
        <translation>не начато: %1</translation>
    </message>
    <message>
        <source>%1 recordings: %2; %3 s</source>
        <translation>осциллограмм: %1; %2; %3 с</translation>
    </message>
    <message>
        <source>%1: its record would have the name of that of %2; unless both are the same recording, convert them into different directories</source>
        <translation>%1: имя записи COMTRADE было бы то же, что у %2; если это не одна и та же осциллограмма, преобразуйте их в разные каталоги</translation>
    </message>
    <message>
        <source>%1 there already</source>
        <translation>уже были: %1</translation>
    </message>
    <message>
        <source>salvaged: %1</source>
        <translation>спасено: %1</translation>
    </message>
    <message>
        <source>%1 of them salvaged in part</source>
        <translation>из них спасено частично: %1</translation>
    </message>
</context>
<context>
    <name>catalogue</name>
    <message>
        <source>the catalogue &apos;%1&apos;: %2</source>
        <translation>база каталога «%1»: %2</translation>
    </message>
    <message>
        <source>it is no catalogue</source>
        <translation>это не база каталога</translation>
    </message>
    <message>
        <source>it was made by a newer version of the program; install that</source>
        <translation>она создана более новой версией программы; установите её</translation>
    </message>
    <message>
        <source>it is damaged (%1); put a copy in its place, or move it away: &apos;zucmtr archive update&apos; makes a new one</source>
        <translation>база повреждена (%1); поставьте на её место копию или уберите её: «zucmtr archive update» создаст новую</translation>
    </message>
    <message>
        <source>it is no catalogue, or a damaged one (%1)</source>
        <translation>это не база каталога, или она повреждена (%1)</translation>
    </message>
    <message>
        <source>it was made by an older version of the program; &apos;zucmtr archive update&apos; brings it up to date</source>
        <translation>она создана более старой версией программы; «zucmtr archive update» обновит её</translation>
    </message>
    <message>
        <source>the catalogue has no file of it</source>
        <translation>в каталоге нет ни одного её файла</translation>
    </message>
    <message>
        <source>its size in the catalogue is not the sum of those of its files</source>
        <translation>её размер в каталоге не равен сумме размеров её файлов</translation>
    </message>
    <message>
        <source>the catalogue does not have as many of its events as it says</source>
        <translation>число её событий в каталоге не то, что указано</translation>
    </message>
    <message>
        <source>the catalogue does not have as many of its channels as it says</source>
        <translation>число её каналов в каталоге не то, что указано</translation>
    </message>
    <message>
        <source>it could be read, but the catalogue has no time of it</source>
        <translation>она прочитана, но её времени в каталоге нет</translation>
    </message>
    <message>
        <source>the search does not find it: its words are missing</source>
        <translation>поиск её не находит: её слов нет в указателе</translation>
    </message>
    <message>
        <source>it is no record, but the catalogue says that it was compared</source>
        <translation>это не запись COMTRADE, а в каталоге указан результат её сверки</translation>
    </message>
    <message>
        <source>its state of verification is neither right nor wrong, or has no time</source>
        <translation>результат сверки не «верно» и не «неверно» или без времени</translation>
    </message>
    <message>
        <source>the catalogue has no entry of the recording that it was compared with</source>
        <translation>в каталоге нет осциллограммы, с которой она сверялась</translation>
    </message>
    <message>
        <source>a row of the table &apos;%1&apos; belongs to none of &apos;%2&apos;</source>
        <translation>строка таблицы «%1» не относится ни к одной строке «%2»</translation>
    </message>
    <message>
        <source>it is empty; &apos;zucmtr archive update&apos; fills it</source>
        <translation>он пуст; его заполнит «zucmtr archive update»</translation>
    </message>
</context>
<context>
    <name>check</name>
    <message>
        <source>ignored: the numbers are written 01, 02 ... 99, 100</source>
        <translation>не действует: номера пишутся 01, 02 ... 99, 100</translation>
    </message>
    <message>
        <source>ignored: &apos;%1&apos; is %2; raise it to %3</source>
        <translation>не действует: «%1» равен %2; увеличьте до %3</translation>
    </message>
    <message>
        <source>ignored: it has no value</source>
        <translation>не действует: нет значения</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no whole number: the section does not load</source>
        <translation>«%1» — не целое число: секция не загружается</translation>
    </message>
    <message>
        <source>it has no signal before the first comma: the section does not load</source>
        <translation>нет сигнала до первой запятой: секция не загружается</translation>
    </message>
    <message>
        <source>dropped: it has no signal before the first comma</source>
        <translation>отброшен: нет сигнала до первой запятой</translation>
    </message>
    <message>
        <source>what follows the second comma is ignored</source>
        <translation>то, что за второй запятой, не действует</translation>
    </message>
    <message>
        <source>it has no parameters, so its channel stays unsorted; add &apos;%1&apos;</source>
        <translation>нет параметров, поэтому канал не сортируется; добавьте «%1»</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not &apos;equipment:signal&apos;; write the channel&apos;s name as the recorder does</source>
        <translation>«%1» — не «оборудование:сигнал»; напишите имя канала как в регистраторе</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in line %2 too: a record would have the channel twice; take one out</source>
        <translation>«%1» есть и в строке %2: канал был бы в записи дважды; уберите один</translation>
    </message>
    <message>
        <source>&apos;%1=&apos; is missing, so its channel stays unsorted; give one of %2</source>
        <translation>нет «%1=», поэтому канал не сортируется; дайте одно из: %2</translation>
    </message>
    <message>
        <source>&apos;%1=%2&apos; is not known, so its channel stays unsorted; give one of %3</source>
        <translation>«%1=%2» не известно, поэтому канал не сортируется; дайте одно из: %3</translation>
    </message>
    <message>
        <source>; is &apos;%1&apos; meant?</source>
        <translation>; может быть, «%1»?</translation>
    </message>
    <message>
        <source>&apos;%1=&apos; is ignored</source>
        <translation>«%1=» не действует</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is V_L=%2 E_G=%3 here and V_L=%4 E_G=%5 in line %6; one equipment has one of each</source>
        <translation>«%1» здесь V_L=%2 E_G=%3, а в строке %6 V_L=%4 E_G=%5; у одного оборудования они одни</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has voltages and currents (line %2), which share one record of the INF file with the key of the first; where both are needed, give the currents another name in the recorder</source>
        <translation>у «%1» и напряжения, и токи (строка %2), в файле INF у них одна запись с ключом первого; если нужны оба, назовите токи в регистраторе иначе</translation>
    </message>
    <message>
        <source>ignored: it has neither a text to show nor a second circuit</source>
        <translation>не действует: нет ни показываемого текста, ни второго имени</translation>
    </message>
    <message>
        <source>ignored: the bay &apos;%1&apos; is in line %2 already</source>
        <translation>не действует: присоединение «%1» уже есть в строке %2</translation>
    </message>
    <message>
        <source>what follows the third comma is ignored</source>
        <translation>то, что за третьей запятой, не действует</translation>
    </message>
    <message>
        <source>ignored: &apos;%1&apos; belongs in the section of a device</source>
        <translation>не действует: «%1» должен быть в секции регистратора</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be read: %2</source>
        <translation>«%1» не читается: %2</translation>
    </message>
    <message>
        <source>the blanks belong to the section&apos;s name &apos;%1&apos;; take them out</source>
        <translation>пробелы входят в имя секции «%1»; уберите их</translation>
    </message>
    <message>
        <source>section [%1] starts in line %2 already; both are one, and of equal keys the last counts: put them together</source>
        <translation>секция [%1] начинается уже в строке %2; обе — одна секция, из одинаковых ключей действует последний: объедините их</translation>
    </message>
    <message>
        <source>ignored: &apos;%1&apos; is in line %2 again, and the last one counts; take one of them out</source>
        <translation>не действует: «%1» есть ещё в строке %2, а действует последний; уберите один из них</translation>
    </message>
    <message>
        <source>the quotation marks belong to the value of &apos;%1&apos;; take them out</source>
        <translation>кавычки входят в значение «%1»; уберите их</translation>
    </message>
    <message>
        <source>ignored: it comes before the first section; move it into one</source>
        <translation>не действует: стоит до первой секции; перенесите в секцию</translation>
    </message>
    <message>
        <source>ignored: it is neither a section nor &apos;key = value&apos;; start it with &apos;;&apos; if it is a comment</source>
        <translation>не действует: это ни секция, ни «ключ = значение»; если это комментарий, начните его с «;»</translation>
    </message>
    <message>
        <source>it is not UTF-8, its letters are lost; save the file in UTF-8</source>
        <translation>строка не в UTF-8, буквы потеряны; сохраните файл в UTF-8</translation>
    </message>
    <message>
        <source>it opens no section, as &apos;]&apos; is not its last character: what follows belongs to [%1]</source>
        <translation>секция не открывается, так как «]» не последний знак: следующее относится к [%1]</translation>
    </message>
    <message>
        <source>%1 &apos;%2&apos; holds a comma or a line end: no program opens a record with it; take it out</source>
        <translation>%1 «%2» содержит запятую или конец строки: запись с ним не откроет ни одна программа; уберите</translation>
    </message>
    <message>
        <source>%1 &apos;%2&apos; holds a &apos;%&apos; with a digit, which is replaced by another value when the record is written; take it out</source>
        <translation>%1 «%2» содержит «%» с цифрой, который при записи заменяется другим значением; уберите</translation>
    </message>
    <message>
        <source>taken from [%1]: %2</source>
        <translation>взято из [%1]: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not read while &apos;%2&apos; is 0</source>
        <translation>«%1» не спрашивается, пока «%2» равен 0</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is &apos;%2&apos;, which is no whole number from %3 to %4: the section does not load</source>
        <translation>«%1» равен «%2», а это не целое число от %3 до %4: секция не загружается</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is missing: the section does not load; add it</source>
        <translation>нет ключа «%1»: секция не загружается; добавьте его</translation>
    </message>
    <message>
        <source>&apos;%1&apos; counts as absent: it is taken from [%2]</source>
        <translation>«%1» считается отсутствующим: берётся из [%2]</translation>
    </message>
    <message>
        <source>ignored: there is no key &apos;%1&apos;</source>
        <translation>не действует: ключа «%1» не бывает</translation>
    </message>
    <message>
        <source>the characters &quot; \ / : * ? &lt; &gt; | of &apos;%1&apos; are left out of the names of files</source>
        <translation>знаки &quot; \ / : * ? &lt; &gt; | из «%1» не входят в имена файлов</translation>
    </message>
    <message>
        <source>&apos;%1&apos; holds letters that CP1251 lacks, which become &apos;?&apos; in the record; take others, or set &apos;%2&apos; to 1</source>
        <translation>в «%1» есть буквы, которых нет в CP1251, в записи они станут «?»; возьмите другие или установите «%2» в 1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is ignored beside &apos;%2&apos;: the record has separate files</source>
        <translation>«%1» не действует вместе с «%2»: запись из отдельных файлов</translation>
    </message>
    <message>
        <source>the recordings are deleted before anybody can compare their records; &apos;zucmtr convert --remove-source&apos; deletes each one after its record is verified</source>
        <translation>осциллограммы удаляются раньше, чем можно сравнить записи; «zucmtr convert --remove-source» удаляет каждую после проверки её записи</translation>
    </message>
    <message>
        <source>%1: the channel</source>
        <translation>%1: канал</translation>
    </message>
    <message>
        <source>%1 has no channel &apos;%2&apos;</source>
        <translation>в %1 нет канала «%2»</translation>
    </message>
    <message>
        <source>%1: the dictionary does not know %2 channels, which come after the others: %3</source>
        <translation>%1: словарь не знает каналов: %2; они идут после остальных: %3</translation>
    </message>
    <message>
        <source>note</source>
        <translation>замечание</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>предупреждение</translation>
    </message>
    <message>
        <source>error</source>
        <translation>ошибка</translation>
    </message>
    <message>
        <source>%1: nothing is wrong with [%2]</source>
        <translation>%1: с [%2] всё в порядке</translation>
    </message>
    <message>
        <source>Explain what is wrong with an ini file</source>
        <translation>Объяснить, что не так в ini-файле</translation>
    </message>
    <message>
        <source>The recorders&apos; ini file. Default: ZuDrv.ini beside the recordings, else in the current directory</source>
        <translation>Ini-файл регистраторов. По умолчанию ZuDrv.ini рядом с осциллограммами, иначе в текущем каталоге</translation>
    </message>
    <message>
        <source>One JSON object per finding, for programs</source>
        <translation>Объект JSON на каждое сообщение, для программ</translation>
    </message>
    <message>
        <source>&apos;%1&apos; counts as 0; give the highest number that is there</source>
        <translation>«%1» считается нулём; дайте наибольший имеющийся номер</translation>
    </message>
    <message>
        <source>it has no text to show, so the INF file shows none for &apos;%1&apos;; give one after the first comma</source>
        <translation>нет показываемого текста, поэтому в файле INF у «%1» он пуст; дайте его за первой запятой</translation>
    </message>
    <message>
        <source>the file starts with a byte order mark, which is skipped; save it without one for other programs</source>
        <translation>файл начинается с метки порядка байтов, она пропускается; для других программ сохраните без неё</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is too large and is taken as %2; give the number that is meant</source>
        <translation>«%1» слишком велико и принимается за %2; дайте нужное число</translation>
    </message>
    <message>
        <source>there are two ini files, &apos;%1&apos; and &apos;%2&apos;; check one after the other</source>
        <translation>даны два ini-файла, «%1» и «%2»; проверьте их по одному</translation>
    </message>
    <message>
        <source>The ini file, and first files of recordings to compare with its sorting dictionary</source>
        <translation>Ini-файл и первые файлы осциллограмм для сравнения с его словарём сортировки</translation>
    </message>
    <message>
        <source>Lists by line what the converter ignores, takes from the defaults, drops or refuses, and what makes
records that no program opens. An error is a section that does not load or a record that no program
opens; a warning, something that is not what it looks like; a note, what may well be meant.

Exit code: 0 nothing but notes, 1 errors or warnings, 2 wrong usage.

Example, with the sample station:
  zucmtr sample --out station --force
  zucmtr check station/ZuDrv.ini station/*.ZU</source>
        <translation>Рассказывает по строкам, что преобразователь не замечает, берёт из умолчаний, отбрасывает или отвергает и из-за
чего запись не откроет ни одна программа. Ошибка — секция не загружается или запись не открыть;
предупреждение — что-то не то, чем кажется; замечание — что, возможно, так и задумано.

Код завершения: 0 только замечания, 1 ошибки или предупреждения, 2 неверный вызов.

Пример с учебной станцией:
  zucmtr sample --out station --force
  zucmtr check station/ZuDrv.ini station/*.ZU</translation>
    </message>
    <message>
        <source>it is in %1, not in UTF-8; the converter reads it correctly because of its byte order mark, but other programs may not; rewrite it: iconv -f %1 -t UTF-8 old.ini &gt; new.ini</source>
        <translation>файл в кодировке %1, а не UTF-8; преобразователь читает его верно благодаря метке порядка байтов, но другие программы могут не прочитать; перекодируйте: iconv -f %1 -t UTF-8 old.ini &gt; new.ini</translation>
    </message>
    <message>
        <source>it is in %1, not in UTF-8; the converter takes it as UTF-8 and finds none of its keys, so that no section loads; rewrite it: iconv -f %1 -t UTF-8 old.ini &gt; new.ini</source>
        <translation>файл в кодировке %1, а не UTF-8; преобразователь принимает его за UTF-8 и не находит ни одного ключа, поэтому ни одна секция не загружается; перекодируйте: iconv -f %1 -t UTF-8 old.ini &gt; new.ini</translation>
    </message>
    <message>
        <source>Section of the ini file for a recorder. Default: all of them</source>
        <translation>Секция ini-файла одного регистратора. По умолчанию все</translation>
    </message>
    <message>
        <source>%1 km</source>
        <translation>%1 км</translation>
    </message>
    <message>
        <source>equipment of [%1]</source>
        <translation>оборудование секции [%1]</translation>
    </message>
    <message>
        <source>&apos;%1&apos; in records</source>
        <translation>в записях «%1»</translation>
    </message>
    <message>
        <source>voltages of &apos;%1&apos;</source>
        <translation>напряжения присоединения «%1»</translation>
    </message>
    <message>
        <source>no voltages of its own: &apos;voltages&apos; names the circuit that has them</source>
        <translation>своих напряжений нет: присоединение, у которого они есть, называет ключ voltages</translation>
    </message>
    <message>
        <source>zones: %1</source>
        <translation>зоны: %1</translation>
    </message>
    <message>
        <source>[%1] %2: the ini file has no equipment and no bay &apos;%3&apos;</source>
        <translation>[%1] %2: в ini-файле нет ни оборудования, ни присоединения «%3»</translation>
    </message>
    <message>
        <source>[%1] is no equipment of the dictionary and no bay; it serves records that have a circuit of this name, and nothing else</source>
        <translation>[%1] не оборудование словаря и не присоединение; годится только для записей, в которых есть присоединение с таким именем</translation>
    </message>
    <message>
        <source>[%1] is yet to be filled in: %2</source>
        <translation>[%1] ещё не заполнена: %2</translation>
    </message>
    <message>
        <source>lines of the dictionary without a section: %1</source>
        <translation>линии словаря, для которых нет секции: %1</translation>
    </message>
</context>
<context>
    <name>checks</name>
    <message>
        <source>%1: the directory &apos;%2&apos; does not exist; make it first: mkdir -p %3</source>
        <translation>%1: каталога «%2» нет; создайте его: mkdir -p %3</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is a file; give a directory to write into</source>
        <translation>%1: «%2» — файл; укажите каталог</translation>
    </message>
    <message>
        <source>%1: no permission to write into &apos;%2&apos;; choose another directory</source>
        <translation>%1: нет права записи в «%2»; выберите другой каталог</translation>
    </message>
    <message>
        <source>--ini: &apos;%1&apos; is not a file; give the path of the recorders&apos; ini file</source>
        <translation>--ini: «%1» не файл; укажите путь к ini-файлу регистраторов</translation>
    </message>
    <message>
        <source>--log: cannot write the file &apos;%1&apos;; give a file in a directory that exists and can be written to</source>
        <translation>--log: файл «%1» не записывается; укажите файл в существующем каталоге, доступном для записи</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no section at all; is it the recorders&apos; ini file?</source>
        <translation>в «%1» нет ни одной секции; это ini-файл регистраторов?</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no section [%2]; it has [%3]</source>
        <translation>в «%1» нет секции [%2]; есть [%3]</translation>
    </message>
    <message>
        <source>%1: the directory &apos;%2&apos; cannot be made, since &apos;%3&apos; is a file; choose another one</source>
        <translation>%1: каталог «%2» не создаётся: «%3» — файл; выберите другой</translation>
    </message>
    <message>
        <source>%1: the directory &apos;%2&apos; cannot be made: %3; choose another one</source>
        <translation>%1: каталог «%2» не создаётся: %3; выберите другой</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is what is to be read; choose another name</source>
        <translation>%1: «%2» — то, что надо прочитать; выберите другое имя</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is the file of %3, too; choose another name</source>
        <translation>%1: «%2» — уже файл ключа %3; выберите другое имя</translation>
    </message>
</context>
<context>
    <name>choice</name>
    <message>
        <source>&apos;%1&apos; has no section [Default]; name the section with the defaults by --defaults: it has %2</source>
        <translation>в «%1» нет секции [Default]; укажите секцию умолчаний ключом --defaults: есть %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; describes %2 recorders; name the section of the one by --device: it has %3</source>
        <translation>в «%1» описано регистраторов: %2; укажите секцию нужного ключом --device: есть %3</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no section at all; is it the recorders&apos; ini file?</source>
        <translation>в «%1» нет ни одной секции; это ini-файл регистраторов?</translation>
    </message>
    <message>
        <source>  &apos;%1&apos; for &apos;%2&apos;</source>
        <translation>  «%1» для «%2»</translation>
    </message>
    <message>
        <source>name the recorders&apos; ini file by --ini, or have &apos;zucmtr dictionary --complete&apos; make one</source>
        <translation>укажите ini-файл регистраторов ключом --ini или составьте его: «zucmtr dictionary --complete»</translation>
    </message>
    <message>
        <source>there is no %1 in the current directory; %2</source>
        <translation>в текущем каталоге нет %1; %2</translation>
    </message>
    <message>
        <source>there is no %1 in &apos;%2&apos; or in the current directory; %3</source>
        <translation>в «%2» и в текущем каталоге нет %1; %3</translation>
    </message>
    <message>
        <source>the recordings have different ini files; convert them one directory after the other, or name one file by --ini:</source>
        <translation>у осциллограмм разные ini-файлы; преобразуйте каталоги по одному или укажите один файл ключом --ini:</translation>
    </message>
</context>
<context>
    <name>comtrade</name>
    <message>
        <source>%1: ends after line %2, where %3 should follow</source>
        <translation>%1: кончается после строки %2, где должно следовать: %3</translation>
    </message>
    <message>
        <source>%1 needs %2 fields, there are %3</source>
        <translation>%1: нужно полей %2, есть %3</translation>
    </message>
    <message>
        <source>%1 has %2 fields, there are %3; does a name hold a comma?</source>
        <translation>%1: полей должно быть %2, есть %3; нет ли запятой в наименовании?</translation>
    </message>
    <message>
        <source>%1, line %2: %3</source>
        <translation>%1, строка %2: %3</translation>
    </message>
    <message>
        <source>%1 is &apos;%2&apos;, which is no number</source>
        <translation>%1: «%2» — не число</translation>
    </message>
    <message>
        <source>&apos;%1&apos; should be a number and %2</source>
        <translation>вместо «%1» должны быть число и буква %2</translation>
    </message>
    <message>
        <source>%1 channels, but only %2 lines follow</source>
        <translation>каналов %1, а строк следует только %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; should be P or S</source>
        <translation>вместо «%1» должно быть P или S</translation>
    </message>
    <message>
        <source>%1 channels in all are not %2 and %3</source>
        <translation>всего каналов %1, а это не %2 и %3</translation>
    </message>
    <message>
        <source>%1 rates, but only %2 lines follow</source>
        <translation>частот дискретизации %1, а строк следует только %2</translation>
    </message>
    <message>
        <source>the rate or its last sample is out of range</source>
        <translation>частота дискретизации или номер её последнего отсчёта вне допустимых пределов</translation>
    </message>
    <message>
        <source>&apos;%1,%2&apos; should be dd/mm/yyyy,hh:mm:ss.ssssss</source>
        <translation>вместо «%1,%2» должно быть dd/mm/yyyy,hh:mm:ss.ssssss</translation>
    </message>
    <message>
        <source>&apos;%1,%2&apos; is no date and time</source>
        <translation>«%1,%2» — не дата и время</translation>
    </message>
    <message>
        <source>data file type &apos;%1&apos; is not known</source>
        <translation>тип файла данных «%1» не известен</translation>
    </message>
    <message>
        <source>%1: cannot be read: %2</source>
        <translation>%1: не читается: %2</translation>
    </message>
    <message>
        <source>%1, record %2: %3</source>
        <translation>%1, отсчёт %2: %3</translation>
    </message>
    <message>
        <source>reading fails: %1</source>
        <translation>ошибка чтения: %1</translation>
    </message>
    <message>
        <source>is cut off: %1 of %2 bytes</source>
        <translation>обрывается: байтов %1 из %2</translation>
    </message>
    <message>
        <source>has no end within %1 bytes</source>
        <translation>не кончается за %1 байтов</translation>
    </message>
    <message>
        <source>ends before %1</source>
        <translation>кончается, где должно быть: %1</translation>
    </message>
    <message>
        <source>ends before analog channel %1</source>
        <translation>кончается перед аналоговым каналом %1</translation>
    </message>
    <message>
        <source>analog channel %1</source>
        <translation>аналоговый канал %1</translation>
    </message>
    <message>
        <source>ends before status channel %1</source>
        <translation>кончается перед дискретным каналом %1</translation>
    </message>
    <message>
        <source>status channel %1</source>
        <translation>дискретный канал %1</translation>
    </message>
    <message>
        <source>has more fields than channels</source>
        <translation>полей больше, чем каналов</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>does not exist</source>
        <translation>нет такого файла</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>не читается: %1</translation>
    </message>
    <message>
        <source>is too large for a text of a record</source>
        <translation>слишком велик для текста записи</translation>
    </message>
    <message>
        <source>is not the .cfg or .cff file of a record</source>
        <translation>не файл .cfg или .cff записи</translation>
    </message>
    <message>
        <source>there is no .dat file beside it</source>
        <translation>рядом с ним нет файла .dat</translation>
    </message>
    <message>
        <source>has texts that are too large for a record</source>
        <translation>тексты слишком велики для записи</translation>
    </message>
    <message>
        <source>holds %1 bytes of data where its mark says %2</source>
        <translation>байтов данных %1, а в метке указано %2</translation>
    </message>
    <message>
        <source>has no CFG section</source>
        <translation>нет раздела CFG</translation>
    </message>
    <message>
        <source>has no DAT section</source>
        <translation>нет раздела DAT</translation>
    </message>
    <message>
        <source>station, device, revision</source>
        <translation>объект, регистратор, редакция</translation>
    </message>
    <message>
        <source>channel counts</source>
        <translation>число каналов</translation>
    </message>
    <message>
        <source>channel count</source>
        <translation>число каналов</translation>
    </message>
    <message>
        <source>an analog channel</source>
        <translation>аналоговый канал</translation>
    </message>
    <message>
        <source>a status channel</source>
        <translation>дискретный канал</translation>
    </message>
    <message>
        <source>channel number</source>
        <translation>номер канала</translation>
    </message>
    <message>
        <source>multiplier a</source>
        <translation>множитель a</translation>
    </message>
    <message>
        <source>offset b</source>
        <translation>смещение b</translation>
    </message>
    <message>
        <source>skew</source>
        <translation>сдвиг времени</translation>
    </message>
    <message>
        <source>minimum</source>
        <translation>минимум</translation>
    </message>
    <message>
        <source>maximum</source>
        <translation>максимум</translation>
    </message>
    <message>
        <source>primary factor</source>
        <translation>первичный коэффициент</translation>
    </message>
    <message>
        <source>secondary factor</source>
        <translation>вторичный коэффициент</translation>
    </message>
    <message>
        <source>normal state</source>
        <translation>нормальное состояние</translation>
    </message>
    <message>
        <source>line frequency</source>
        <translation>частота сети</translation>
    </message>
    <message>
        <source>number of rates</source>
        <translation>число частот дискретизации</translation>
    </message>
    <message>
        <source>a sampling rate</source>
        <translation>частота дискретизации</translation>
    </message>
    <message>
        <source>rate</source>
        <translation>частота дискретизации</translation>
    </message>
    <message>
        <source>last sample</source>
        <translation>номер последнего отсчёта</translation>
    </message>
    <message>
        <source>start time</source>
        <translation>время первого отсчёта</translation>
    </message>
    <message>
        <source>trigger time</source>
        <translation>время пуска</translation>
    </message>
    <message>
        <source>hour</source>
        <translation>час</translation>
    </message>
    <message>
        <source>minute</source>
        <translation>минута</translation>
    </message>
    <message>
        <source>second</source>
        <translation>секунда</translation>
    </message>
    <message>
        <source>decimals of a second</source>
        <translation>доли секунды</translation>
    </message>
    <message>
        <source>data file type</source>
        <translation>тип файла данных</translation>
    </message>
    <message>
        <source>time multiplier</source>
        <translation>множитель времени</translation>
    </message>
    <message>
        <source>time codes</source>
        <translation>коды времени</translation>
    </message>
    <message>
        <source>time quality</source>
        <translation>качество времени</translation>
    </message>
    <message>
        <source>semicolons separate the fields, not commas</source>
        <translation>поля разделены точками с запятой, а не запятыми</translation>
    </message>
    <message>
        <source>tabs separate the fields, not commas</source>
        <translation>поля разделены табуляцией, а не запятыми</translation>
    </message>
    <message>
        <source>read as if they were commas</source>
        <translation>прочитано как запятые</translation>
    </message>
    <message>
        <source>%1 is &apos;%2&apos;, which is no plain number</source>
        <translation>%1 — «%2», число записано не по правилам</translation>
    </message>
    <message>
        <source>read as %1</source>
        <translation>прочитано как %1</translation>
    </message>
    <message>
        <source>the sample has no number</source>
        <translation>у отсчёта нет номера</translation>
    </message>
    <message>
        <source>the sample has no field for analog channel %1</source>
        <translation>в отсчёте нет поля аналогового канала %1</translation>
    </message>
    <message>
        <source>the value counts as missing</source>
        <translation>значение считается отсутствующим</translation>
    </message>
    <message>
        <source>the sample has %1 more fields than there are channels</source>
        <translation>в отсчёте полей больше, чем каналов, на %1</translation>
    </message>
    <message>
        <source>they are left out</source>
        <translation>они пропущены</translation>
    </message>
    <message>
        <source>lines should end with CR LF, this one ends with %1</source>
        <translation>строки должны заканчиваться CR LF, эта заканчивается %1</translation>
    </message>
    <message>
        <source>read as the end of a line</source>
        <translation>прочитано как конец строки</translation>
    </message>
    <message>
        <source>a blank line</source>
        <translation>пустая строка</translation>
    </message>
    <message>
        <source>passed over</source>
        <translation>пропущена</translation>
    </message>
    <message>
        <source>is preceded by bytes 0</source>
        <translation>перед отсчётом нулевые байты</translation>
    </message>
    <message>
        <source>the data start with a byte order mark</source>
        <translation>данные начинаются с метки порядка байтов</translation>
    </message>
    <message>
        <source>the line after the last sample is no sample</source>
        <translation>строка после последнего отсчёта — не отсчёт</translation>
    </message>
    <message>
        <source>left out</source>
        <translation>пропущено</translation>
    </message>
    <message>
        <source>the last sample is cut off</source>
        <translation>последний отсчёт обрезан</translation>
    </message>
    <message>
        <source>there are bytes after the mark of the end, 1A</source>
        <translation>после знака конца файла (1A) есть байты</translation>
    </message>
    <message>
        <source>there are bytes 0 after the last sample</source>
        <translation>после последнего отсчёта есть нулевые байты</translation>
    </message>
    <message>
        <source>there are %1 bytes after the last sample</source>
        <translation>после последнего отсчёта лишние байты: %1</translation>
    </message>
    <message>
        <source>the configuration says %1 samples, the data hold %2</source>
        <translation>по конфигурации отсчётов %1, в данных %2</translation>
    </message>
    <message>
        <source>all that are there are read</source>
        <translation>прочитаны все имеющиеся</translation>
    </message>
    <message>
        <source>read as that</source>
        <translation>прочитано в ней</translation>
    </message>
    <message>
        <source>the configuration says %1, but the data are %2</source>
        <translation>по конфигурации данные %1, а на деле %2</translation>
    </message>
    <message>
        <source>read as these</source>
        <translation>прочитано по их действительному типу</translation>
    </message>
    <message>
        <source>the data are UTF-16</source>
        <translation>данные в UTF-16</translation>
    </message>
    <message>
        <source>the configuration says %1, but the data are no text, and no binary type fits their size</source>
        <translation>по конфигурации данные %1, но это не текст, а размер не подходит ни одному двоичному типу</translation>
    </message>
    <message>
        <source>the configuration says %1, but the data are as large as those of several other types</source>
        <translation>по конфигурации данные %1, но размер подходит нескольким другим типам</translation>
    </message>
    <message>
        <source>the letter of &apos;%1&apos; is not the Latin %2</source>
        <translation>буква в &apos;%1&apos; — не латинская %2</translation>
    </message>
    <message>
        <source>the count of status channels comes before that of analog channels</source>
        <translation>число дискретных каналов стоит перед числом аналоговых</translation>
    </message>
    <message>
        <source>each is known by its letter</source>
        <translation>определены по буквам</translation>
    </message>
    <message>
        <source>a text holds a comma, which separates fields</source>
        <translation>в тексте есть запятая, а она разделяет поля</translation>
    </message>
    <message>
        <source>read as &apos;%1&apos;</source>
        <translation>прочитано как &apos;%1&apos;</translation>
    </message>
    <message>
        <source>quotation marks do not keep a comma inside of a field</source>
        <translation>кавычки не удерживают запятую внутри поля</translation>
    </message>
    <message>
        <source>read as if they did</source>
        <translation>прочитано так, как если бы удерживали</translation>
    </message>
    <message>
        <source>%1 has %2 fields, there are %3; does a name or a number hold a comma? Decimals need a point</source>
        <translation>%1: полей должно быть %2, а их %3; нет ли запятой в имени или числе? Дробная часть отделяется точкой</translation>
    </message>
    <message>
        <source>the ratio is not known, the values are taken as primary</source>
        <translation>коэффициент трансформации неизвестен, значения приняты как первичные</translation>
    </message>
    <message>
        <source>what is missing is taken as not known</source>
        <translation>недостающее считается неизвестным</translation>
    </message>
    <message>
        <source>%1 has %2 fields, there are %3</source>
        <translation>%1: полей должно быть %2, а их %3</translation>
    </message>
    <message>
        <source>the others are read as in revision 1999</source>
        <translation>остальные прочитаны как в редакции 1999 года</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1: поле пустое</translation>
    </message>
    <message>
        <source>the minimum %1 is above the maximum %2</source>
        <translation>минимум %1 больше максимума %2</translation>
    </message>
    <message>
        <source>the samples count, not the limits</source>
        <translation>верны отсчёты, а не пределы</translation>
    </message>
    <message>
        <source>the side, P or S,</source>
        <translation>признак P или S</translation>
    </message>
    <message>
        <source>%1 is &apos;%2&apos;, which is neither 0 nor 1</source>
        <translation>%1: &apos;%2&apos; — не 0 и не 1</translation>
    </message>
    <message>
        <source>the total is taken as their sum</source>
        <translation>общее число принято равным их сумме</translation>
    </message>
    <message>
        <source>the counts of each kind are taken</source>
        <translation>приняты числа каналов каждого вида</translation>
    </message>
    <message>
        <source>the last one is taken as the normal state</source>
        <translation>последнее принято как нормальное состояние</translation>
    </message>
    <message>
        <source>the normal state is taken as 0</source>
        <translation>нормальное состояние принято равным 0</translation>
    </message>
    <message>
        <source>the text is UTF-16</source>
        <translation>текст в кодировке UTF-16</translation>
    </message>
    <message>
        <source>a byte order mark precedes the text</source>
        <translation>перед текстом стоит метка порядка байтов</translation>
    </message>
    <message>
        <source>it is left out</source>
        <translation>пропущено</translation>
    </message>
    <message>
        <source>the text ends with the byte 1A</source>
        <translation>текст кончается байтом 1A</translation>
    </message>
    <message>
        <source>what follows it is left out</source>
        <translation>всё, что после него, пропущено</translation>
    </message>
    <message>
        <source>the text ends with bytes 0</source>
        <translation>текст кончается нулевыми байтами</translation>
    </message>
    <message>
        <source>the line ends with a comma</source>
        <translation>строка кончается запятой</translation>
    </message>
    <message>
        <source>%1 is &apos;%2&apos;, which is not written as an integer</source>
        <translation>%1: &apos;%2&apos; записано не как целое число</translation>
    </message>
    <message>
        <source>%1 lines follow the last one of a configuration</source>
        <translation>после последней строки конфигурации есть ещё строки, их %1</translation>
    </message>
    <message>
        <source>no comma separates date and time in &apos;%1&apos;</source>
        <translation>дата и время в &apos;%1&apos; не разделены запятой</translation>
    </message>
    <message>
        <source>the blank is taken for it</source>
        <translation>за неё принят пробел</translation>
    </message>
    <message>
        <source>a comma separates the decimals of the seconds</source>
        <translation>дробная часть секунд отделена запятой</translation>
    </message>
    <message>
        <source>read as a point</source>
        <translation>прочитано как точка</translation>
    </message>
    <message>
        <source>the line with %1 is missing</source>
        <translation>нет строки: %1</translation>
    </message>
    <message>
        <source>the other of the two times is taken</source>
        <translation>принято второе из двух времён</translation>
    </message>
    <message>
        <source>the year in &apos;%1&apos; should have %2 digits</source>
        <translation>число цифр года в &apos;%1&apos; должно быть %2</translation>
    </message>
    <message>
        <source>the day should come before the month, &apos;%1&apos; is no such date</source>
        <translation>день должен стоять перед месяцем, &apos;%1&apos; — не такая дата</translation>
    </message>
    <message>
        <source>the month should come before the day, &apos;%1&apos; is no such date</source>
        <translation>месяц должен стоять перед днём, &apos;%1&apos; — не такая дата</translation>
    </message>
    <message>
        <source>a colon separates the decimals of the seconds</source>
        <translation>дробная часть секунд отделена двоеточием</translation>
    </message>
    <message>
        <source>the seconds have %1 decimals</source>
        <translation>знаков дробной части секунд: %1</translation>
    </message>
    <message>
        <source>the first %1 are taken</source>
        <translation>взяты первые %1</translation>
    </message>
    <message>
        <source>read as they are; the times of the samples are in microseconds</source>
        <translation>прочитано как есть; время отсчётов — в микросекундах</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has 60 seconds</source>
        <translation>в &apos;%1&apos; 60 секунд</translation>
    </message>
    <message>
        <source>read as the start of the next minute</source>
        <translation>прочитано как начало следующей минуты</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has 24 hours</source>
        <translation>в &apos;%1&apos; 24 часа</translation>
    </message>
    <message>
        <source>read as the start of the next day</source>
        <translation>прочитано как начало следующих суток</translation>
    </message>
    <message>
        <source>%1 is &apos;%2&apos;, which is no date</source>
        <translation>%1: &apos;%2&apos; — не дата</translation>
    </message>
    <message>
        <source>not known; 1970-01-01 stands for it</source>
        <translation>неизвестно; вместо него 1970-01-01</translation>
    </message>
    <message>
        <source>the first line</source>
        <translation>первая строка</translation>
    </message>
    <message>
        <source>the others are left out</source>
        <translation>остальные пропущены</translation>
    </message>
    <message>
        <source>read as the station &apos;%1&apos; and the device &apos;%2&apos;</source>
        <translation>прочитано как подстанция &apos;%1&apos; и устройство &apos;%2&apos;</translation>
    </message>
    <message>
        <source>read as revision %1, whose fields the lines have</source>
        <translation>прочитано как редакция %1, поля которой есть в строках</translation>
    </message>
    <message>
        <source>the first line has no revision year, which stands for 1991</source>
        <translation>в первой строке нет года редакции, что означает 1991</translation>
    </message>
    <message>
        <source>revision &apos;%1&apos; is none of 1991, 1999 and 2013</source>
        <translation>редакция &apos;%1&apos; — не 1991, 1999 или 2013</translation>
    </message>
    <message>
        <source>the lines do not have the fields of revision 1991</source>
        <translation>поля строк — не редакции 1991 года</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>неизвестно</translation>
    </message>
    <message>
        <source>%1 sampling rates are announced, there are %2</source>
        <translation>частот дискретизации объявлено %1, а строк с ними %2</translation>
    </message>
    <message>
        <source>the samples are counted in the data</source>
        <translation>отсчёты сосчитаны в данных</translation>
    </message>
    <message>
        <source>the lines that are there are taken</source>
        <translation>взяты имеющиеся строки</translation>
    </message>
    <message>
        <source>data file type &apos;%1&apos; is none of ASCII, BINARY, BINARY32 and FLOAT32</source>
        <translation>тип файла данных &apos;%1&apos; — не ASCII, BINARY, BINARY32 или FLOAT32</translation>
    </message>
    <message>
        <source>%1 is &apos;%2&apos;, but should be above 0</source>
        <translation>%1: &apos;%2&apos;, а должно быть больше 0</translation>
    </message>
    <message>
        <source>lines with time codes are of revision 2013</source>
        <translation>строки с кодами времени — из редакции 2013 года</translation>
    </message>
    <message>
        <source>read all the same</source>
        <translation>тем не менее прочитаны</translation>
    </message>
    <message>
        <source>the file does not start with a section mark</source>
        <translation>файл начинается не с метки раздела</translation>
    </message>
    <message>
        <source>what precedes the first mark is left out</source>
        <translation>всё, что до первой метки, пропущено</translation>
    </message>
    <message>
        <source>the section mark &apos;%1&apos; is not written as &apos;--- file type: %2 ---&apos;</source>
        <translation>метка раздела &apos;%1&apos; записана не так: &apos;--- file type: %2 ---&apos;</translation>
    </message>
    <message>
        <source>read as one</source>
        <translation>прочитана как метка</translation>
    </message>
    <message>
        <source>there is more than one %1 section</source>
        <translation>разделов %1 больше одного</translation>
    </message>
    <message>
        <source>the first one is taken</source>
        <translation>взят первый</translation>
    </message>
    <message>
        <source>there is no %1 section</source>
        <translation>нет раздела %1</translation>
    </message>
    <message>
        <source>read as an empty one</source>
        <translation>считается пустым</translation>
    </message>
    <message>
        <source>the section mark does not say how many bytes of binary data follow</source>
        <translation>в метке раздела нет числа байтов двоичных данных</translation>
    </message>
    <message>
        <source>the section mark says %1 bytes of data, but they do not end there</source>
        <translation>в метке раздела %1 байтов данных, но там они не кончаются</translation>
    </message>
    <message>
        <source>%1 bytes are taken</source>
        <translation>взято байтов: %1</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>there is no encoding &apos;%1&apos;</source>
        <translation>нет кодировки &apos;%1&apos;</translation>
    </message>
    <message>
        <source>the last sample is 0, but there are data</source>
        <translation>номер последнего отсчёта 0, но данные есть</translation>
    </message>
    <message>
        <source>%1 samples, as many as the data hold</source>
        <translation>отсчётов %1, сколько их в данных</translation>
    </message>
    <message>
        <source>there are several files of this name in other cases: &apos;%1&apos; and &apos;%2&apos;</source>
        <translation>есть несколько файлов с таким именем, отличающихся регистром: &apos;%1&apos; и &apos;%2&apos;</translation>
    </message>
    <message>
        <source>the name differs from that of &apos;%1&apos; in its case</source>
        <translation>имя отличается от имени &apos;%1&apos; регистром букв</translation>
    </message>
    <message>
        <source>taken as a file of the same record</source>
        <translation>принят за файл той же записи</translation>
    </message>
    <message>
        <source>is a part of a record; give its configuration &apos;%1&apos;</source>
        <translation>часть записи; укажите её конфигурацию &apos;%1&apos;</translation>
    </message>
    <message>
        <source>&apos;%1&apos; separates day, month and year with something other than slashes</source>
        <translation>день, месяц и год в &apos;%1&apos; разделены не косой чертой</translation>
    </message>
    <message>
        <source>read as if they were slashes</source>
        <translation>прочитано как косая черта</translation>
    </message>
    <message>
        <source>blanks separate the fields, not commas</source>
        <translation>поля разделены пробелами, а не запятыми</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a time of a clock with twelve hours</source>
        <translation>«%1» — время по двенадцатичасовым часам</translation>
    </message>
    <message>
        <source>hour %1</source>
        <translation>час %1</translation>
    </message>
    <message>
        <source>%1: the samples lack so many values that they are not read</source>
        <translation>%1: в отсчётах не хватает столь многих значений, что они не читаются</translation>
    </message>
</context>
<context>
    <name>conf</name>
    <message>
        <source>&apos;%1&apos; is here already, in line %2; leave one out</source>
        <translation>«%1» уже есть в строке %2; оставьте что-то одно</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is wrong for &apos;%2&apos;; give yes or no</source>
        <translation>«%1» не годится для «%2»; укажите yes или no</translation>
    </message>
    <message>
        <source>&apos;%1&apos; belongs to the whole service; give it on the command line, as --%1</source>
        <translation>«%1» относится ко всей службе; укажите его в командной строке как --%1</translation>
    </message>
    <message>
        <source>there is no key &apos;%1&apos;</source>
        <translation>ключа «%1» нет</translation>
    </message>
    <message>
        <source>&apos;%1&apos; and &apos;%2&apos; exclude each other; leave one out</source>
        <translation>«%1» и «%2» исключают друг друга; уберите что-то одно</translation>
    </message>
    <message>
        <source>&apos;%1 = ...&apos; is missing</source>
        <translation>нет строки «%1 = ...»</translation>
    </message>
    <message>
        <source>there are no sections here; the file is one recorder&apos;s, so leave the line out</source>
        <translation>разделов здесь нет: файл описывает один регистратор; уберите эту строку</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no setting; write it as &apos;key = value&apos;, or put &apos;#&apos; before a comment</source>
        <translation>«%1» — не настройка; пишите «ключ = значение», а комментарий начинайте с «#»</translation>
    </message>
    <message>
        <source>there is no key before the &apos;=&apos;</source>
        <translation>перед «=» нет ключа</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no value; give one, or leave the line out</source>
        <translation>у «%1» нет значения; укажите его или уберите строку</translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation>это не обычный файл</translation>
    </message>
    <message>
        <source>it cannot be read: %1</source>
        <translation>не читается: %1</translation>
    </message>
    <message>
        <source>it is too long for a file of settings</source>
        <translation>слишком длинный для файла настроек</translation>
    </message>
    <message>
        <source>the line is not UTF-8</source>
        <translation>строка не в кодировке UTF-8</translation>
    </message>
    <message>
        <source>--config: there is no directory &apos;%1&apos;; check the path</source>
        <translation>--config: каталога «%1» нет; проверьте путь</translation>
    </message>
    <message>
        <source>--config: &apos;%1&apos; is no directory; give the one with the recorders&apos; .conf files</source>
        <translation>--config: «%1» — не каталог; укажите каталог с файлами .conf регистраторов</translation>
    </message>
    <message>
        <source>--config: there is no .conf file in &apos;%1&apos;; write one for each recorder</source>
        <translation>--config: в «%1» нет файлов .conf; напишите по одному для каждого регистратора</translation>
    </message>
</context>
<context>
    <name>convert</name>
    <message>
        <source>&apos;%1&apos; has &apos;Удалять исходные = 1&apos; in force for [%2]: the recordings would be deleted before their records are verified. Set the key to 0 and give --remove-source, which deletes each recording after its record is verified; or give --trust-writer to delete them unseen</source>
        <translation>в «%1» для [%2] действует «Удалять исходные = 1»: осциллограммы были бы удалены до проверки записей. Установите ключ в 0 и дайте --remove-source, чтобы удалять каждую осциллограмму после проверки её записи; или дайте --trust-writer, чтобы удалять без проверки</translation>
    </message>
    <message>
        <source>Existing directory for the COMTRADE files. Default: the current directory</source>
        <translation>Существующий каталог для файлов COMTRADE. По умолчанию текущий</translation>
    </message>
    <message>
        <source>Make the directory of --out if it is not there</source>
        <translation>Создать каталог --out, если его нет</translation>
    </message>
    <message>
        <source>Recordings to convert at once; 0: as many as there are processors. Default: 1</source>
        <translation>Сколько осциллограмм преобразовывать одновременно; 0: по числу процессоров. По умолчанию 1</translation>
    </message>
    <message>
        <source>Go on with the other recordings after one that failed (the default)</source>
        <translation>После ошибки продолжать с остальными осциллограммами (по умолчанию)</translation>
    </message>
    <message>
        <source>Start no recording after one that failed</source>
        <translation>После ошибки не начинать новых осциллограмм</translation>
    </message>
    <message>
        <source>Read the recordings and report what would be converted into which records; write nothing</source>
        <translation>Прочитать осциллограммы и сообщить, во что они были бы преобразованы; ничего не записывать</translation>
    </message>
    <message>
        <source>Let the ini file have the library delete the recordings; their records are read back, but cannot be compared any more</source>
        <translation>Позволить библиотеке удалять осциллограммы по ini-файлу; записи читаются, но сравнить их уже не с чем</translation>
    </message>
    <message>
        <source>Report only failures and warnings</source>
        <translation>Сообщать только об ошибках и предупреждениях</translation>
    </message>
    <message>
        <source>Report each recording as one JSON object on standard output</source>
        <translation>Сообщать о каждой осциллограмме объектом JSON в стандартный вывод</translation>
    </message>
    <message>
        <source>Convert recordings into COMTRADE records</source>
        <translation>Преобразовать осциллограммы в записи COMTRADE</translation>
    </message>
    <message>
        <source>First files of the recordings, or directories with recordings</source>
        <translation>Первые файлы осциллограмм или каталоги с осциллограммами</translation>
    </message>
    <message>
        <source>--remove-source and --archive need a verified record; leave --trust-writer out</source>
        <translation>для --remove-source и --archive нужна проверенная запись; уберите --trust-writer</translation>
    </message>
    <message>
        <source>not converted: %1</source>
        <translation>не преобразована: %1</translation>
    </message>
    <message>
        <source>warnings and notes on section [%1] of &apos;%2&apos;:</source>
        <translation>предупреждения и замечания к секции [%1] файла «%2»:</translation>
    </message>
    <message>
        <source>--remove-source and --archive need a record that is on the disk; leave --no-sync out</source>
        <translation>для --remove-source и --archive нужна запись, сохранённая на диске; уберите --no-sync</translation>
    </message>
    <message>
        <source>the run ends here, since there is no room left on the disk: recordings not started: %1; make room, then give the same command again</source>
        <translation>работа прекращена, так как на диске нет места; не начато осциллограмм: %1; освободите место и повторите ту же команду</translation>
    </message>
    <message>
        <source>Search for recordings in the directories below the given ones, too; their records go to directories of the same names below --out</source>
        <translation>Искать осциллограммы и во вложенных каталогах; их записи попадают в одноимённые каталоги внутри --out</translation>
    </message>
    <message>
        <source>Put all records into the directory of --out itself</source>
        <translation>Складывать все записи в сам каталог --out</translation>
    </message>
    <message>
        <source>Convert even if the right record is there already</source>
        <translation>Преобразовывать и тогда, когда верная запись уже есть</translation>
    </message>
    <message>
        <source>Replace the record of another recording that has the same name</source>
        <translation>Заменять запись другой осциллограммы с тем же именем</translation>
    </message>
    <message>
        <source>Report a record only when it is on the disk, so that a power failure leaves it whole; the default with --remove-source and --archive</source>
        <translation>Сообщать о записи, лишь когда она сохранена на диске, чтобы сбой питания её не испортил; по умолчанию при --remove-source и --archive</translation>
    </message>
    <message>
        <source>Leave it to the system when records reach the disk (the default)</source>
        <translation>Оставить системе, когда сохранять записи на диск (по умолчанию)</translation>
    </message>
    <message>
        <source>nothing is converted: with [%1] of &apos;%2&apos; as it is no record would be right; correct the line above</source>
        <translation>ничего не преобразовано: с секцией [%1] файла «%2» в таком виде ни одна запись не будет верной; исправьте указанную выше строку</translation>
    </message>
    <message>
        <source>--salvage needs a verified record; leave --trust-writer out</source>
        <translation>для --salvage запись должна быть проверена; уберите --trust-writer</translation>
    </message>
    <message>
        <source>Of a recording that is cut off or damaged, convert the channels that are whole and report the others; without it, it fails</source>
        <translation>Из обрезанной или повреждённой осциллограммы преобразовать уцелевшие каналы и сообщить об остальных; без этого она считается непреобразованной</translation>
    </message>
    <message>
        <source>Directories below --out and names of the records, as {station}/{year}-{month}/{name}; the placeholders are listed below</source>
        <translation>Каталоги внутри --out и имена записей, например {station}/{year}-{month}/{name}; подстановки перечислены ниже</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has &apos;Удалять исходные = 1&apos; in force for [%2], where --layout cannot be; set the key to 0 and give --remove-source</source>
        <translation>в «%1» для [%2] действует «Удалять исходные = 1», с ним --layout невозможен; установите ключ в 0 и задайте --remove-source</translation>
    </message>
    <message>
        <source>A recording is a first file (.ZU or .zu) with its continuation files (.Z01 ... .Z0f) beside it; give the
first file or the directory, the others are found. For each recording one line on standard output has
the record&apos;s name and the notes on it; failures and the summary go to standard error.
Ctrl-C ends after the current recordings, a second Ctrl-C at once.

--form, --data, --revision and --encoding have precedence over the ini file. A CFF file is of revision 2013:
one of --form and --revision decides the other unless both are given.

--layout: what stands before a &apos;/&apos; are directories. {name} is the name that records have without it,
{source} that of the recording&apos;s file, {folder} its directory below the given one; {station}, {device},
{subject} are texts of the ini file; {year}, {month}, {day}, {hour}, {minute}, {second}, {date} and {time}
are of the trigger.

Exit code: 0 all recordings converted, 1 at least one failed, 2 wrong usage or configuration, 3 none
failed, but at least one was salvaged in part (--salvage), 130 ended by Ctrl-C (143 by SIGTERM).

Example, with the sample station:
  zucmtr sample --out station
  zucmtr convert --out station/comtrade --make-out station/*.ZU
  zucmtr convert --out station/comtrade --layout &apos;{station}/{date}/{time} {source}&apos; station/*.ZU</source>
        <translation>Осциллограмма — это первый файл (.ZU или .zu) и файлы продолжения (.Z01 ... .Z0f) рядом с ним; укажите
первый файл или каталог, остальные находятся сами. Для каждой осциллограммы в стандартный вывод пишется
строка с именем записи и замечаниями; ошибки и итог идут в стандартный вывод ошибок.
Ctrl-C завершает работу после начатых осциллограмм, второй Ctrl-C — сразу.

Параметры --form, --data, --revision и --encoding важнее настроек из ini-файла. Файл CFF бывает только в
редакции 2013: --form и --revision определяют друг друга, если не заданы оба.

--layout: до «/» стоят каталоги. {name} — имя, которое было бы у записи без него, {source} — имя файла
осциллограммы, {folder} — её каталог внутри указанного; {station}, {device}, {subject} — объект, источник и
субъект из ini-файла; {year}, {month}, {day}, {hour}, {minute}, {second}, {date} и {time} — дата и время пуска.

Код завершения: 0 все преобразованы, 1 хотя бы одна с ошибкой, 2 неверный вызов или настройка, 3 ошибок нет,
но хотя бы одна спасена частично (--salvage), 130 прервано по Ctrl-C (143 по SIGTERM).

Пример с учебной станцией:
  zucmtr sample --out station
  zucmtr convert --out station/comtrade --make-out station/*.ZU
  zucmtr convert --out station/comtrade --layout &apos;{station}/{date}/{time} {source}&apos; station/*.ZU</translation>
    </message>
    <message>
        <source>nothing is converted: %1</source>
        <translation>ничего не преобразовано: %1</translation>
    </message>
</context>
<context>
    <name>crew</name>
    <message>
        <source>no further process can be started: %1</source>
        <translation>не удаётся запустить ещё один процесс: %1</translation>
    </message>
</context>
<context>
    <name>device</name>
    <message>
        <source>The recorders&apos; ini file. Default: ZuDrv.ini beside the recordings or above them, else in the current directory</source>
        <translation>Ini-файл регистраторов. По умолчанию ZuDrv.ini рядом с осциллограммами или выше, иначе в текущем каталоге</translation>
    </message>
    <message>
        <source>Section of the ini file with the defaults. Default: the section [Default]</source>
        <translation>Секция ini-файла с умолчаниями. По умолчанию [Default]</translation>
    </message>
    <message>
        <source>Section of the ini file for this recorder. Default: the only other section</source>
        <translation>Секция ini-файла этого регистратора. По умолчанию единственная другая секция</translation>
    </message>
    <message>
        <source>File to which loading the ini file appends its log</source>
        <translation>Файл, в который дописывается журнал загрузки ini-файла</translation>
    </message>
    <message>
        <source>Data of the lines, for the distance to a fault. Default: lines.ini beside the ini file, else beside the recording or record</source>
        <translation>Параметры линий для расстояния до места КЗ. По умолчанию lines.ini рядом с ini-файлом, иначе рядом с осциллограммой или записью</translation>
    </message>
    <message>
        <source>The recorders&apos; ini file. Default: ZuDrv.ini beside the recording or in the current directory, if there is one</source>
        <translation>Ini-файл регистраторов. По умолчанию ZuDrv.ini рядом с осциллограммой или в текущем каталоге, если он есть</translation>
    </message>
    <message>
        <source>Encoding of a COMTRADE record&apos;s texts, such as CP866, KOI8-R or GBK. Default: found out</source>
        <translation>Кодировка текстов записи COMTRADE, например CP866, KOI8-R или GBK. По умолчанию определяется</translation>
    </message>
</context>
<context>
    <name>dictionary</name>
    <message>
        <source>it is empty</source>
        <translation>оно пустое</translation>
    </message>
    <message>
        <source>it starts or ends with a blank</source>
        <translation>оно начинается или кончается пробелом</translation>
    </message>
    <message>
        <source>it holds a comma</source>
        <translation>в нём запятая</translation>
    </message>
    <message>
        <source>it holds a semicolon</source>
        <translation>в нём точка с запятой</translation>
    </message>
    <message>
        <source>it holds a control character</source>
        <translation>в нём управляющий символ</translation>
    </message>
    <message>
        <source>no voltage level in the name</source>
        <translation>в имени нет класса напряжения</translation>
    </message>
    <message>
        <source>not all groups could be guessed: add V_L, E_G and the others</source>
        <translation>не все группы удалось угадать: допишите V_L, E_G и остальные</translation>
    </message>
    <message>
        <source>guess</source>
        <translation>догадка</translation>
    </message>
    <message>
        <source>[%1] cannot be in the dictionary: %2</source>
        <translation>[%1] не может стоять в словаре: %2</translation>
    </message>
    <message>
        <source>[%1] is there already: another channel has the same name</source>
        <translation>[%1] уже есть: у другого канала такое же имя</translation>
    </message>
    <message>
        <source>guess: the text to show, and after a comma the circuit of its voltages</source>
        <translation>догадка: показываемый текст, после запятой — присоединение с его напряжениями</translation>
    </message>
    <message>
        <source>to be filled in</source>
        <translation>заполнить</translation>
    </message>
    <message>
        <source>--section: &apos;%1&apos; is no name of a section</source>
        <translation>--section: «%1» — не имя секции</translation>
    </message>
    <message>
        <source>Write a first sorting dictionary for the channels of a recording</source>
        <translation>Составить начальный словарь сортировки для каналов осциллограммы</translation>
    </message>
    <message>
        <source>A whole ini file, with which the recording can be converted at once</source>
        <translation>Целый ini-файл, с которым осциллограмму сразу можно преобразовать</translation>
    </message>
    <message>
        <source>Name of the device&apos;s section in a whole ini file. Default: Device</source>
        <translation>Имя секции регистратора в целом ini-файле. По умолчанию Device</translation>
    </message>
    <message>
        <source>First file of a recording (.ZU)</source>
        <translation>Первый файл осциллограммы (.ZU)</translation>
    </message>
    <message>
        <source>File to write; it must not be there. Default: standard output, as for -</source>
        <translation>Файл для записи; его не должно быть. По умолчанию и для «-» — стандартный вывод</translation>
    </message>
    <message>
        <source>Voltage level, equipment and groups are guessed from names and units; every guess has a comment. What
could not be guessed stays unsorted until somebody adds its parameters. Names that an ini file cannot
hold become comments.

Exit code: 0 written, 1 the recording cannot be read, 2 wrong usage.

Example, with the sample station:
  mkdir -p new
  zucmtr sample --out station
  zucmtr dictionary --complete --output new/ZuDrv.ini --force station/Vostochnaya_000123.ZU
  zucmtr convert --ini new/ZuDrv.ini --out new station/Vostochnaya_000123.ZU</source>
        <translation>Класс напряжения, оборудование и группы угадываются по именам и единицам; у каждой догадки есть комментарий.
Неугаданное остаётся без сортировки, пока кто-нибудь не допишет параметры. Имена, которые нельзя записать
в ini-файл, становятся комментариями.

Код завершения: 0 записано, 1 осциллограмма не читается, 2 неверный вызов.

Пример с учебной станцией:
  mkdir -p new
  zucmtr sample --out station
  zucmtr dictionary --complete --output new/ZuDrv.ini --force station/Vostochnaya_000123.ZU
  zucmtr convert --ini new/ZuDrv.ini --out new station/Vostochnaya_000123.ZU</translation>
    </message>
    <message>
        <source>length in km, r1 x1 r0 x0 in primary ohms per km, with a decimal point</source>
        <translation>length в км, r1 x1 r0 x0 в первичных омах на км, с десятичной точкой</translation>
    </message>
    <message>
        <source>the circuit whose voltages serve this line</source>
        <translation>присоединение, напряжения которого относятся к этой линии</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is there already; choose another name, or replace it by --force</source>
        <translation>%1: «%2» уже существует; выберите другое имя или замените файл ключом --force</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; cannot be written: %3</source>
        <translation>%1: не удалось записать «%2»: %3</translation>
    </message>
    <message>
        <source>Write a first lines.ini as well: the data of the lines, which the distance to a fault needs, to be filled in</source>
        <translation>Записать и заготовку lines.ini: параметры линий, нужные для расстояния до места КЗ; значения заполняет пользователь</translation>
    </message>
    <message>
        <source>Replace the files of --output and --line-data</source>
        <translation>Заменить файлы, названные в --output и --line-data</translation>
    </message>
</context>
<context>
    <name>events</name>
    <message>
        <source>One JSON object a file, for programs</source>
        <translation>Объект JSON на каждый файл, для программ</translation>
    </message>
    <message>
        <source>The events of all files as one CSV table (RFC 4180), for spreadsheets</source>
        <translation>События всех файлов одной таблицей CSV (RFC 4180), для электронных таблиц</translation>
    </message>
    <message>
        <source>Take no ini file: circuits and names as in the recording</source>
        <translation>Не использовать ini-файл: присоединения и имена как в осциллограмме</translation>
    </message>
    <message>
        <source>Say what happened: the fault, the events, what the protection did</source>
        <translation>Сообщает, что произошло: КЗ, события, работа защиты</translation>
    </message>
    <message>
        <source>First files of recordings (.ZU), or the .cfg or .cff files of records</source>
        <translation>Первые файлы осциллограмм (.ZU) или файлы .cfg или .cff записей</translation>
    </message>
    <message>
        <source>In a few sentences: which circuit and phases failed and when, how far away, what protection and
breaker did. Below them each change of a discrete signal: its time of day, from the trigger and since
the one before, its circuit and what it is. The distance needs the data of the line in lines.ini.

Exit code: 0 done, 1 at least one file cannot be read, 2 wrong usage, or a mistake in lines.ini.

Example, with the sample station:
  zucmtr sample --out station --force
  zucmtr events station/Vostochnaya_000123.ZU</source>
        <translation>Несколько предложений: на каком присоединении, на каких фазах и когда произошло КЗ, на каком расстоянии,
как сработали защита и выключатель. Ниже каждое переключение дискретного сигнала: время суток, время от
пуска и от предыдущего, присоединение и вид. Для расстояния нужны параметры линии в lines.ini.

Код завершения: 0 выполнено, 1 хотя бы один файл не читается, 2 неверный вызов или ошибка в lines.ini.

Пример с учебной станцией:
  zucmtr sample --out station --force
  zucmtr events station/Vostochnaya_000123.ZU</translation>
    </message>
</context>
<context>
    <name>exec</name>
    <message>
        <source>&apos;%1&apos; could not be started: %2</source>
        <translation>«%1» не запускается: %2</translation>
    </message>
    <message>
        <source>the command took longer than %1 s and was ended; see --exec-timeout</source>
        <translation>команда работала дольше %1 с и была завершена; см. --exec-timeout</translation>
    </message>
    <message>
        <source>the command was ended by signal %1</source>
        <translation>команда завершена сигналом %1</translation>
    </message>
    <message>
        <source>the command ended with exit code %1</source>
        <translation>команда завершилась с кодом %1</translation>
    </message>
    <message>
        <source>--exec: &apos;%1&apos; has a quotation mark (%2) without its second one</source>
        <translation>--exec: в «%1» есть кавычка (%2) без пары</translation>
    </message>
    <message>
        <source>--exec: &apos;%1&apos; names no program</source>
        <translation>--exec: в «%1» не названа программа</translation>
    </message>
    <message>
        <source>--exec: &apos;%1&apos; ends in a backslash; double it if it is meant</source>
        <translation>--exec: «%1» кончается обратной косой чертой; удвойте её, если она нужна</translation>
    </message>
    <message>
        <source>--exec: there is no program &apos;%1&apos; in the directories of PATH; give its path</source>
        <translation>--exec: программы «%1» нет в каталогах PATH; укажите путь к ней</translation>
    </message>
    <message>
        <source>--exec: there is no program &apos;%1&apos;; check the path</source>
        <translation>--exec: программы «%1» нет; проверьте путь</translation>
    </message>
    <message>
        <source>--exec: &apos;%1&apos; cannot be run; give an executable file, or make it one: chmod +x</source>
        <translation>--exec: «%1» не запускается; укажите исполняемый файл или сделайте его таким: chmod +x</translation>
    </message>
    <message>
        <source>the process that watched over the command was ended from outside</source>
        <translation>процесс, который следил за командой, завершён извне</translation>
    </message>
</context>
<context>
    <name>export</name>
    <message>
        <source>no channel has the name, circuit or number &apos;%1&apos;</source>
        <translation>нет канала с именем, присоединением или номером «%1»</translation>
    </message>
    <message>
        <source>sample %1, %2: %3 was read back where %4 was written</source>
        <translation>отсчёт %1, %2: прочитано %3, а записано %4</translation>
    </message>
    <message>
        <source>its number</source>
        <translation>номер</translation>
    </message>
    <message>
        <source>its time</source>
        <translation>время</translation>
    </message>
    <message>
        <source>configuration, line %1: &apos;%2&apos; was read back where &apos;%3&apos; was written</source>
        <translation>конфигурация, строка %1: прочитано «%2», а записано «%3»</translation>
    </message>
    <message>
        <source>%1: another text was read back than was written</source>
        <translation>%1: прочитан не тот текст, что записан</translation>
    </message>
    <message>
        <source>HDR</source>
        <translation>HDR</translation>
    </message>
    <message>
        <source>INF</source>
        <translation>INF</translation>
    </message>
    <message>
        <source>a difference that is not there any more: the file changed meanwhile</source>
        <translation>различие, которого уже нет: файл тем временем изменился</translation>
    </message>
    <message>
        <source>%1 samples were read back, which is not what was written</source>
        <translation>прочитано отсчётов: %1, а записано другое число</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; holds a comma or a line end, which COMTRADE has no way to write; CSV and MAT have</source>
        <translation>%1: в «%2» есть запятая или конец строки, их в COMTRADE записать нельзя; в CSV и MAT можно</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; has %3 characters, revision %4 allows %5; CSV and MAT hold it</source>
        <translation>%1: в «%2» символов: %3, редакция %4 допускает %5; CSV и MAT вмещают</translation>
    </message>
    <message>
        <source>%1 (%2), phase</source>
        <translation>%1 (%2), фаза</translation>
    </message>
    <message>
        <source>%1 (%2), circuit</source>
        <translation>%1 (%2), присоединение</translation>
    </message>
    <message>
        <source>%1 (%2), unit</source>
        <translation>%1 (%2), единица измерения</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2; check the directory and the free space</source>
        <translation>%1 не записать: %2; проверьте каталог и свободное место</translation>
    </message>
    <message>
        <source>A%1 (%2), sample %3</source>
        <translation>A%1 (%2), отсчёт %3</translation>
    </message>
    <message>
        <source>%1: %2 has whole codes, and %3 is none</source>
        <translation>%1: коды в %2 целые, а %3 — нет</translation>
    </message>
    <message>
        <source>%1: the code %2 is beyond the %3 of %4; %5 holds it</source>
        <translation>%1: код %2 больше по модулю, чем %3, предел %4; его вмещает %5</translation>
    </message>
    <message>
        <source>%1: %2 would be read as a missing value in %3; %4 holds it</source>
        <translation>%1: %2 в %3 читается как отсутствующее значение; его вмещает %4</translation>
    </message>
    <message>
        <source>%1: %2 has more digits than %3 can hold; %4 holds it</source>
        <translation>%1: у %2 больше знаков, чем вмещает %3; его вмещает %4</translation>
    </message>
    <message>
        <source>sample %1: the time stamp %2 has more digits than ASCII data of revision %3 can hold; --form csv holds it</source>
        <translation>отсчёт %1: у метки времени %2 больше цифр, чем вмещают данные ASCII редакции %3; её вмещает --form csv</translation>
    </message>
    <message>
        <source>sample %1: the time stamp %2 does not fit the 32 bits of binary data; --data ascii holds it</source>
        <translation>отсчёт %1: метка времени %2 не помещается в 32 бита двоичных данных; её вмещает --data ascii</translation>
    </message>
    <message>
        <source>the time %1 has nanoseconds, revision 1999 only microseconds; --revision 2013 holds it</source>
        <translation>во времени %1 есть наносекунды, в редакции 1999 года — только микросекунды; его вмещает --revision 2013</translation>
    </message>
    <message>
        <source>A%1 (%2): its factors, primary %3 and secondary %4, do not lead to %5 values</source>
        <translation>A%1 (%2): коэффициенты, первичный %3 и вторичный %4, не дают %5 значений</translation>
    </message>
    <message>
        <source>primary</source>
        <translation>первичных</translation>
    </message>
    <message>
        <source>secondary</source>
        <translation>вторичных</translation>
    </message>
    <message>
        <source>revision 1999 has ASCII and BINARY data only, and no CFF file; %1 needs revision 2013, or give --data</source>
        <translation>в редакции 1999 года есть только данные ASCII и BINARY и нет файла CFF; для %1 нужна редакция 2013 года, или укажите --data</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has an offset from UTC, but that of the record is not known; give the time of the record&apos;s own clock, without an offset</source>
        <translation>в «%1» указано смещение от UTC, а у записи оно неизвестно; укажите время по часам записи, без смещения</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no moment; give seconds from the trigger, as -0.2 or 200ms, or a time as 2024-01-31T12:00:00.25</source>
        <translation>«%1» — не момент времени; укажите секунды от пуска, например -0.2 или 200ms, или время, например 2024-01-31T12:00:00.25</translation>
    </message>
    <message>
        <source>sample %1 has no time stamp, and the record no sampling rate: a part of it cannot be chosen by time</source>
        <translation>у отсчёта %1 нет метки времени, а у записи — частоты дискретизации: часть её по времени не выбрать</translation>
    </message>
    <message>
        <source>no sample of the record is in the time asked for</source>
        <translation>в указанное время нет ни одного отсчёта записи</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 и ещё %2</translation>
    </message>
    <message>
        <source>the configuration announces %1 samples, the data have %2; the configuration that was written says %2</source>
        <translation>по конфигурации отсчётов %1, в данных их %2; в записанной конфигурации указано %2</translation>
    </message>
    <message>
        <source>the form has whole codes, the source has not; channels with new codes, a and b (greatest error): %1</source>
        <translation>коды этой формы целые, а в исходной записи — нет; каналы с новыми кодами, a и b (наибольшая погрешность): %1</translation>
    </message>
    <message>
        <source>values rounded to single precision: %1</source>
        <translation>значения, округлённые до одинарной точности: %1</translation>
    </message>
    <message>
        <source>left out, as revision 1999 has no place for it: %1</source>
        <translation>опущено, так как в редакции 1999 года для этого нет места: %1</translation>
    </message>
    <message>
        <source>discrete channels left out, since they never change: %1</source>
        <translation>дискретные каналы, опущенные, так как они не меняются: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is there already; --replace replaces it</source>
        <translation>«%1» уже есть; --replace его заменит</translation>
    </message>
    <message>
        <source>%1 -&gt; %2 (%3): samples: %4, channels: %5 + %6; read back and compared</source>
        <translation>%1 -&gt; %2 (%3): отсчётов: %4, каналов: %5 + %6; прочитано и сверено</translation>
    </message>
    <message>
        <source>what was written is wrong and was removed: %1</source>
        <translation>записанное неверно и удалено: %1</translation>
    </message>
    <message>
        <source>The file, or the directory for several; - is standard output. Default: beside FILE, under its name</source>
        <translation>Файл или каталог для нескольких; - — стандартный вывод. По умолчанию: рядом с FILE, под его именем</translation>
    </message>
    <message>
        <source>Make the directory of --out</source>
        <translation>Создать каталог --out</translation>
    </message>
    <message>
        <source>Replace files that are there</source>
        <translation>Заменять имеющиеся файлы</translation>
    </message>
    <message>
        <source>Write recordings and COMTRADE records in another form</source>
        <translation>Записать осциллограммы и записи COMTRADE в другой форме</translation>
    </message>
    <message>
        <source>COMTRADE of both revisions and all data types, CSV tables and MAT files, of the whole or of a part: some
time, some channels, fewer samples. Codes, coefficients, times and texts stay as they are where the form
holds them. Each file is read back and compared, every value of every sample; what a form cannot hold
is an error that names the place.

Exit code: 0 done, 1 at least one file was not exported, 2 wrong usage.

Example, with the sample station:
  zucmtr sample --out station --force
  zucmtr export station/Vostochnaya_000123.ZU -o station/fault.csv --window fault --channels &apos;U*&apos;</source>
        <translation>COMTRADE обеих редакций и всех видов данных, таблицы CSV и файлы MAT — целиком или частью: часть времени,
часть каналов, меньше отсчётов. Коды, коэффициенты, времена и тексты остаются как есть, если форма их
вмещает. Каждый файл читается и сверяется, каждое значение каждого отсчёта; то, чего форма не вмещает, —
ошибка с указанием места.

Код завершения: 0 — сделано, 1 — хотя бы один файл не записан, 2 — неверный вызов.

Пример, с образцом станции:
  zucmtr sample --out station --force
  zucmtr export station/Vostochnaya_000123.ZU -o station/fault.csv --window fault --channels &apos;U*&apos;</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is no moment; give seconds from the trigger, as -0.2 or 200ms, or a time as 2024-01-31T12:00:00.25</source>
        <translation>%1: «%2» — не момент времени; укажите секунды от пуска, например -0.2 или 200ms, или время, например 2024-01-31T12:00:00.25</translation>
    </message>
    <message>
        <source>cfg, a COMTRADE record of several files; cff, one of a single file; csv, a table; mat, variables of MATLAB. Default: by the ending of --out, else cfg</source>
        <translation>cfg — запись COMTRADE из нескольких файлов; cff — из одного; csv — таблица; mat — переменные MATLAB. По умолчанию: по расширению --out, иначе cfg</translation>
    </message>
    <message>
        <source>Samples of a COMTRADE record. Default: as in the record</source>
        <translation>Отсчёты записи COMTRADE. По умолчанию: как в записи</translation>
    </message>
    <message>
        <source>Revision of COMTRADE. Default: as in the record, if it allows the form</source>
        <translation>Редакция COMTRADE. По умолчанию: как в записи, если она допускает эту форму</translation>
    </message>
    <message>
        <source>Encoding of the texts of a COMTRADE record. Default: utf8</source>
        <translation>Кодировка текстов записи COMTRADE. По умолчанию: utf8</translation>
    </message>
    <message>
        <source>Values of the primary or the secondary circuit. Default: as in the record</source>
        <translation>Значения первичной или вторичной цепи. По умолчанию: как в записи</translation>
    </message>
    <message>
        <source>Times of a table: seconds from the trigger (the default), or date and time (ISO 8601)</source>
        <translation>Время в таблице: секунды от пуска (по умолчанию) или дата и время (ISO 8601)</translation>
    </message>
    <message>
        <source>Numbers of a table with a decimal comma, columns separated by semicolons</source>
        <translation>Числа в таблице с десятичной запятой, столбцы через точку с запятой</translation>
    </message>
    <message>
        <source>Start with this moment: seconds from the trigger (-0.2, 200ms), or a date and time (2024-01-31T12:00:00.25)</source>
        <translation>Начать с этого момента: секунды от пуска (-0.2, 200ms) или дата и время (2024-01-31T12:00:00.25)</translation>
    </message>
    <message>
        <source>End with this moment</source>
        <translation>Закончить этим моментом</translation>
    </message>
    <message>
        <source>Keep this many seconds around the trigger, a third of them before it; or, with &apos;fault&apos;, from 0.1 s before the fault to 0.1 s after it</source>
        <translation>Оставить столько секунд вокруг пуска, треть из них до него; с fault — от 0,1 с до КЗ до 0,1 с после него</translation>
    </message>
    <message>
        <source>Keep these channels, and no others: by name, circuit or number (A3,D5); * and ? stand for any letters</source>
        <translation>Оставить только эти каналы: по имени, присоединению или номеру (A3,D5); * и ? заменяют любые буквы</translation>
    </message>
    <message>
        <source>Leave out discrete channels that never change</source>
        <translation>Опустить дискретные каналы, которые не меняются</translation>
    </message>
    <message>
        <source>Keep one sample of N, as it is: without a filter</source>
        <translation>Оставить каждый N-й отсчёт как есть, без фильтра</translation>
    </message>
    <message>
        <source>Compute samples of this rate, with a filter against aliasing</source>
        <translation>Пересчитать на эту частоту дискретизации, с фильтром от наложения спектров</translation>
    </message>
    <message>
        <source>&apos;%1&apos; and &apos;%2&apos; would both become &apos;%3&apos;; export them into different directories</source>
        <translation>«%1» и «%2» стали бы одним файлом «%3»; запишите их в разные каталоги</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>station</source>
        <translation>объект</translation>
    </message>
    <message>
        <source>recorder</source>
        <translation>регистратор</translation>
    </message>
    <message>
        <source>time code</source>
        <translation>код времени</translation>
    </message>
    <message>
        <source>local code</source>
        <translation>местный код</translation>
    </message>
    <message>
        <source>time quality</source>
        <translation>качество времени</translation>
    </message>
    <message>
        <source>leap second</source>
        <translation>секунда координации</translation>
    </message>
    <message>
        <source>Take no ini file: circuits and names as in the recording</source>
        <translation>Не использовать ini-файл: присоединения и имена как в осциллограмме</translation>
    </message>
    <message>
        <source>One JSON object a file, for programs</source>
        <translation>Объект JSON на каждый файл, для программ</translation>
    </message>
    <message>
        <source>First files of recordings (.ZU), or the .cfg or .cff files of records</source>
        <translation>Первые файлы осциллограмм (.ZU) или файлы .cfg или .cff записей</translation>
    </message>
    <message>
        <source>%1: the encoding %2 has no letter &apos;%3&apos;; --out-encoding utf8 has</source>
        <translation>%1: в кодировке %2 нет буквы «%3»; с --out-encoding utf8 она есть</translation>
    </message>
    <message>
        <source>left out of the INF file: sections on equipment, which count channels that are not there</source>
        <translation>из файла INF убраны секции оборудования: в них по номерам указаны каналы, которых в записи нет</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is wrong; give one of %3</source>
        <translation>%1: «%2» неверно; укажите одно из: %3</translation>
    </message>
    <message>
        <source>%1 %2 and &apos;%3&apos;: the ending of the file is that of another form; leave one of the two out</source>
        <translation>%1 %2 и «%3»: расширение файла — другой формы; уберите одно из двух</translation>
    </message>
    <message>
        <source>%1 is for COMTRADE, that is %2 cfg or %2 cff; leave it out</source>
        <translation>%1 — для COMTRADE, то есть для %2 cfg или %2 cff; уберите</translation>
    </message>
    <message>
        <source>%1 is for %2 csv; leave it out</source>
        <translation>%1 — для %2 csv; уберите</translation>
    </message>
    <message>
        <source>%1 %2 and %3 1999: revision 1999 has ASCII and BINARY only; leave one of the two out</source>
        <translation>%1 %2 и %3 1999: в редакции 1999 года есть только ASCII и BINARY; уберите одно из двух</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is wrong; give a number of seconds, or &apos;fault&apos;</source>
        <translation>%1: «%2» неверно; укажите число секунд или fault</translation>
    </message>
    <message>
        <source>%1 excludes %2; leave one of the two out</source>
        <translation>%1 нельзя задать вместе с %2; уберите одно из двух</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is wrong; give a whole number from %3 to %4</source>
        <translation>%1: «%2» неверно; укажите целое число от %3 до %4</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is wrong; give a number from %3 to %4</source>
        <translation>%1: «%2» неверно; укажите число от %3 до %4</translation>
    </message>
    <message>
        <source>%1 fault: no fault was found; give %2 and %3</source>
        <translation>%1 fault: КЗ не найдено; укажите %2 и %3</translation>
    </message>
    <message>
        <source>%1 &apos;%2&apos; is before %3 &apos;%4&apos;</source>
        <translation>%1 «%2» раньше, чем %3 «%4»</translation>
    </message>
    <message>
        <source>%1 cff and %2 1999: a CFF file is of revision 2013; leave one of the two out</source>
        <translation>%1 cff и %2 1999: файл CFF бывает только в редакции 2013; уберите один из двух параметров</translation>
    </message>
    <message>
        <source>%1 %2: a record of several files needs a name or a directory; %3 csv or %3 cff makes one file</source>
        <translation>%1 %2: записи из нескольких файлов нужны имя или каталог; %3 csv или %3 cff даёт один файл</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; would take the place of what is read; give another name or directory</source>
        <translation>%1: «%2» занял бы место того, что читается; укажите другое имя или каталог</translation>
    </message>
    <message>
        <source>%1 &apos;%2&apos; is one name for %3 files; give a directory, with / at its end</source>
        <translation>%1 «%2» — одно имя на %3 файла(ов); укажите каталог, с / в конце</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; names no channel</source>
        <translation>%1: «%2» не называет ни одного канала</translation>
    </message>
</context>
<context>
    <name>file</name>
    <message>
        <source>the path is too long; shorten the names</source>
        <translation>слишком длинный путь; сократите имена</translation>
    </message>
    <message>
        <source>no permission to look into its directory; check the permissions</source>
        <translation>нет права доступа к каталогу файла; проверьте права</translation>
    </message>
    <message>
        <source>it is a link that leads back to itself; remove it</source>
        <translation>это ссылка, ведущая на саму себя; удалите её</translation>
    </message>
    <message>
        <source>it is a link to &apos;%1&apos;, which is not there</source>
        <translation>это ссылка на «%1», а такого файла нет</translation>
    </message>
    <message>
        <source>there is no such file; check the path</source>
        <translation>такого файла нет; проверьте путь</translation>
    </message>
    <message>
        <source>it is a directory; give a file</source>
        <translation>это каталог; укажите файл</translation>
    </message>
    <message>
        <source>it is a directory; give a file in it, such as &apos;%1&apos;</source>
        <translation>это каталог; укажите файл в нём, например «%1»</translation>
    </message>
    <message>
        <source>it is a COMTRADE record, not a recording; &apos;zucmtr info&apos; and &apos;zucmtr view&apos; take it</source>
        <translation>это запись COMTRADE, а не осциллограмма; её принимают «zucmtr info» и «zucmtr view»</translation>
    </message>
    <message>
        <source>it is an ini file, not a recording; name it by --ini, or look at it with &apos;zucmtr check&apos;</source>
        <translation>это ini-файл, а не осциллограмма; укажите его ключом --ini или проверьте командой «zucmtr check»</translation>
    </message>
    <message>
        <source>the file is empty; was the copy interrupted?</source>
        <translation>файл пуст; не прервано ли копирование?</translation>
    </message>
    <message>
        <source>it is no recording: its content is a COMTRADE record&apos;s; give it the extension %1</source>
        <translation>это не осциллограмма: по содержимому это запись COMTRADE; дайте файлу расширение %1</translation>
    </message>
    <message>
        <source>it is no recording: it does not start like a recorder&apos;s file; give a recording&apos;s first file (.ZU)</source>
        <translation>это не осциллограмма: начало не такое, как у файлов регистратора; укажите первый файл осциллограммы (.ZU)</translation>
    </message>
    <message>
        <source>the path is empty; give a file</source>
        <translation>путь пуст; укажите файл</translation>
    </message>
    <message>
        <source>it is a pipe; save what comes out of it in a file, and give that</source>
        <translation>это канал; сохраните данные из него в файл и укажите этот файл</translation>
    </message>
    <message>
        <source>it is a device or a socket; give a file</source>
        <translation>это устройство или сокет; укажите файл</translation>
    </message>
    <message>
        <source>no permission to read the file; check its permissions</source>
        <translation>нет права чтения файла; проверьте права доступа</translation>
    </message>
    <message>
        <source>the name of a recording ends in .ZU or .zu; rename the file</source>
        <translation>имя осциллограммы должно кончаться на .ZU или .zu; переименуйте файл</translation>
    </message>
    <message>
        <source>it is no COMTRADE record: its content is a recording&apos;s; give it the extension .ZU</source>
        <translation>это не запись COMTRADE: по содержимому это осциллограмма; дайте файлу расширение .ZU</translation>
    </message>
    <message>
        <source>cut off: %1 of at least %2 bytes, in its header</source>
        <translation>файл обрезан: %1 байт из не менее чем %2, в заголовке</translation>
    </message>
    <message>
        <source>cut off: %1 of at least %2 bytes, after %3 of its %4 channels</source>
        <translation>файл обрезан: %1 байт из не менее чем %2, каналов в нём: %3 из %4</translation>
    </message>
    <message>
        <source>cut off: %1 of %2 bytes, in channel &apos;%3&apos;</source>
        <translation>файл обрезан: %1 байт из %2, в канале «%3»</translation>
    </message>
    <message>
        <source>cut off: %1 of at least %2 bytes, in channel &apos;%3&apos;</source>
        <translation>файл обрезан: %1 байт из не менее чем %2, в канале «%3»</translation>
    </message>
    <message>
        <source>,</source>
        <translation>&#xa0;</translation>
    </message>
    <message>
        <source>it is a part of a COMTRADE record, not a recording (.ZU); &apos;zucmtr info&apos; and &apos;zucmtr view&apos; take the record&apos;s .cfg file, which is not beside it</source>
        <translation>это часть записи COMTRADE, а не осциллограмма (.ZU); «zucmtr info» и «zucmtr view» принимают файл .cfg этой записи, а рядом его нет</translation>
    </message>
    <message>
        <source>it is a part of a COMTRADE record, not a recording (.ZU); &apos;zucmtr info&apos; and &apos;zucmtr view&apos; take its configuration &apos;%1&apos;</source>
        <translation>это часть записи COMTRADE, а не осциллограмма (.ZU); «zucmtr info» и «zucmtr view» принимают её конфигурацию «%1»</translation>
    </message>
    <message>
        <source>the file cannot be read: %1</source>
        <translation>файл не читается: %1</translation>
    </message>
</context>
<context>
    <name>form</name>
    <message>
        <source>Files of a record: cfg, several with .cfg as the first; cff, a single one</source>
        <translation>Файлы записи: cfg — несколько, первый из них .cfg; cff — один</translation>
    </message>
    <message>
        <source>Samples as text or binary</source>
        <translation>Отсчёты текстом или двоичные</translation>
    </message>
    <message>
        <source>Revision of COMTRADE</source>
        <translation>Редакция COMTRADE</translation>
    </message>
    <message>
        <source>Encoding of the texts</source>
        <translation>Кодировка текстов</translation>
    </message>
</context>
<context>
    <name>forms</name>
    <message>
        <source>&apos;%1&apos; cannot be written: %2</source>
        <translation>«%1» не записывается: %2</translation>
    </message>
    <message>
        <source>the titles are not those of the record</source>
        <translation>заголовки столбцов не те, что у записи</translation>
    </message>
    <message>
        <source>%1, line %2: %3</source>
        <translation>%1, строка %2: %3</translation>
    </message>
    <message>
        <source>the line has no end</source>
        <translation>у строки нет конца</translation>
    </message>
    <message>
        <source>the time is malformed</source>
        <translation>время записано неправильно</translation>
    </message>
    <message>
        <source>the value of analog channel %1 is malformed</source>
        <translation>значение аналогового канала %1 записано неправильно</translation>
    </message>
    <message>
        <source>the state of discrete channel %1 is malformed</source>
        <translation>состояние дискретного канала %1 записано неправильно</translation>
    </message>
    <message>
        <source>the line has more fields than there are channels</source>
        <translation>в строке больше полей, чем каналов</translation>
    </message>
    <message>
        <source>this is no MAT file that can be read, or it is cut off</source>
        <translation>это не читаемый файл MAT, или он обрезан</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>the variable &apos;%1&apos; is missing</source>
        <translation>нет переменной «%1»</translation>
    </message>
    <message>
        <source>the variable &apos;%1&apos; has another type or size</source>
        <translation>у переменной «%1» другой тип или размер</translation>
    </message>
    <message>
        <source>the variable &apos;%1&apos; differs from what it should be</source>
        <translation>переменная «%1» не такая, какой должна быть</translation>
    </message>
    <message>
        <source>the variable &apos;%1&apos; cannot be read</source>
        <translation>не удаётся прочитать переменную «%1»</translation>
    </message>
    <message>
        <source>a MAT file holds 2 GB in a variable at most, and %1 analog and %2 discrete channels have more after %3 samples: export fewer channels, a part of the time, fewer samples per second, or to CSV</source>
        <translation>переменная в файле MAT вмещает не более 2 ГБ, а %1 аналоговых и %2 дискретных каналов занимают больше уже после %3 отсчётов: выгрузите меньше каналов, часть записи, меньше отсчётов в секунду или таблицу CSV</translation>
    </message>
    <message>
        <source>sample %1 is so far from the trigger that a MAT file does not hold its time to the nanosecond: export a part of the time, or to CSV</source>
        <translation>отсчёт %1 так далёк от пуска, что его время не хранится в файле MAT с точностью до наносекунды: выгрузите часть записи или таблицу CSV</translation>
    </message>
    <message>
        <source>the record gives no sampling rate, only the time of each sample: it cannot be sampled again at another rate; --every keeps one sample of several</source>
        <translation>в записи нет частоты дискретизации, есть только время каждого отсчёта: пересчитать её на другую частоту нельзя; --every оставляет один отсчёт из нескольких</translation>
    </message>
    <message>
        <source>%1 Hz is too low for a record of %2 Hz</source>
        <translation>%1 Гц — слишком низкая частота для записи с %2 Гц</translation>
    </message>
    <message>
        <source>%1 Hz: the record would have too many samples</source>
        <translation>%1 Гц: в записи стало бы слишком много отсчётов</translation>
    </message>
    <message>
        <source>One sample of %1 was kept, without a filter.</source>
        <translation>Оставлен каждый %1-й отсчёт, без фильтра.</translation>
    </message>
    <message>
        <source>One sample of %1 was kept of those taken at %2 Hz, without a filter.</source>
        <translation>Оставлен каждый %1-й из отсчётов, снятых с частотой %2 Гц, без фильтра.</translation>
    </message>
    <message>
        <source>the trigger has no date, so that there is none for the samples either; use --time seconds</source>
        <translation>у момента пуска нет даты, поэтому её нет и у отсчётов; задайте --time seconds</translation>
    </message>
    <message>
        <source>The samples were computed for a rate of %1 Hz from those taken at %2 Hz, by a low-pass filter (FIR, linear phase, Kaiser window) that passes up to %3 Hz and attenuates by %4 dB from %5 Hz on.</source>
        <translation>Отсчёты пересчитаны на частоту %1 Гц из снятых с частотой %2 Гц фильтром нижних частот (КИХ, линейная фаза, окно Кайзера): полоса пропускания до %3 Гц, подавление %4 дБ начиная с %5 Гц.</translation>
    </message>
    <message>
        <source>MAT files need the library %1, which cannot be loaded: %2</source>
        <translation>Для файлов MAT нужна библиотека %1, загрузить её не удалось: %2</translation>
    </message>
</context>
<context>
    <name>help</name>
    <message>
        <source>Print the help of the program or of a command</source>
        <translation>Показать справку программы или команды</translation>
    </message>
    <message>
        <source>The command, and the one below it: %1</source>
        <translation>Команда и её подкоманда: %1</translation>
    </message>
    <message>
        <source>Examples:
  zucmtr help convert
  zucmtr help archive find</source>
        <translation>Примеры:
  zucmtr help convert
  zucmtr help archive find</translation>
    </message>
</context>
<context>
    <name>host</name>
    <message>
        <source>the record could not be put in place, &apos;%1&apos; is left; free the final name and the disk, then convert again</source>
        <translation>запись не удалось поставить на место, остался «%1»; освободите конечное имя и диск и преобразуйте снова</translation>
    </message>
    <message>
        <source>--device: section [%1] of &apos;%2&apos; does not load</source>
        <translation>--device: секция [%1] файла «%2» не загружается</translation>
    </message>
    <message>
        <source>exception in the library: %1</source>
        <translation>исключение в библиотеке: %1</translation>
    </message>
    <message>
        <source>--defaults: section [%1] of &apos;%2&apos; does not load</source>
        <translation>--defaults: секция [%1] файла «%2» не загружается</translation>
    </message>
    <message>
        <source>The log says:</source>
        <translation>В журнале:</translation>
    </message>
    <message>
        <source>&apos;zucmtr check --ini %1&apos; explains it line by line.</source>
        <translation>Построчное объяснение: «zucmtr check --ini %1».</translation>
    </message>
    <message>
        <source>the start comment has too few values, or the segments have analog but no discrete channels; the library gives up such a recording</source>
        <translation>в комментарии пуска не хватает значений, или в сегментах есть аналоговые каналы и нет дискретных; библиотека отказывается от такой осциллограммы</translation>
    </message>
</context>
<context>
    <name>info</name>
    <message>
        <source>  note: %1</source>
        <translation>  замечание: %1</translation>
    </message>
    <message>
        <source>Station</source>
        <translation>Объект</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Регистратор</translation>
    </message>
    <message>
        <source>Revision</source>
        <translation>Редакция</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Данные</translation>
    </message>
    <message>
        <source>First sample</source>
        <translation>Первый отсчёт</translation>
    </message>
    <message>
        <source>Trigger</source>
        <translation>Пуск</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>Часовой пояс</translation>
    </message>
    <message>
        <source>Sampling rate</source>
        <translation>Частота дискретизации</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Гц</translation>
    </message>
    <message>
        <source>Samples</source>
        <translation>Отсчётов</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Каналы</translation>
    </message>
    <message>
        <source>%1 analog, %2 discrete</source>
        <translation>аналоговых %1, дискретных %2</translation>
    </message>
    <message>
        <source>Analog channels</source>
        <translation>Аналоговые каналы</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>№</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Наименование</translation>
    </message>
    <message>
        <source>Phase</source>
        <translation>Фаза</translation>
    </message>
    <message>
        <source>Circuit</source>
        <translation>Присоединение</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Единица</translation>
    </message>
    <message>
        <source>Primary</source>
        <translation>Первичное</translation>
    </message>
    <message>
        <source>Secondary</source>
        <translation>Вторичное</translation>
    </message>
    <message>
        <source>P/S</source>
        <translation>P/S</translation>
    </message>
    <message>
        <source>Discrete channels</source>
        <translation>Дискретные каналы</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Нормальное</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Длительность</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>Further pieces</source>
        <translation>Прочие части</translation>
    </message>
    <message>
        <source>it has all the files that a recording can have</source>
        <translation>есть все файлы, какие могут быть у осциллограммы</translation>
    </message>
    <message>
        <source>there is no %1</source>
        <translation>нет %1</translation>
    </message>
    <message>
        <source>Chain ends because</source>
        <translation>Конец цепочки</translation>
    </message>
    <message>
        <source>not part of the recording: %1</source>
        <translation>не входит в осциллограмму: %1</translation>
    </message>
    <message>
        <source>Segments</source>
        <translation>Сегменты</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Файл</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Точек</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Размер</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Гц</translation>
    </message>
    <message>
        <source>Compressed</source>
        <translation>Сжат</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Изменений</translation>
    </message>
    <message>
        <source>Inverted</source>
        <translation>Инверсия</translation>
    </message>
    <message>
        <source>Start comment</source>
        <translation>Комментарий пуска</translation>
    </message>
    <message>
        <source>the start comment has two values instead of three: the library gives up such a recording with an exception</source>
        <translation>в комментарии пуска два значения вместо трёх: библиотека отказывается от такой осциллограммы исключением</translation>
    </message>
    <message>
        <source>Condition</source>
        <translation>Условие</translation>
    </message>
    <message>
        <source>Setting</source>
        <translation>Уставка</translation>
    </message>
    <message>
        <source>Recorder</source>
        <translation>Регистратор</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Заголовок</translation>
    </message>
    <message>
        <source>Code page</source>
        <translation>Кодировка</translation>
    </message>
    <message>
        <source>a recording starts with a header of %1 bytes; was the copy interrupted?</source>
        <translation>осциллограмма начинается с заголовка в %1 байтов; копирование было прервано?</translation>
    </message>
    <message>
        <source>%1 in the header</source>
        <translation>в заголовке %1</translation>
    </message>
    <message>
        <source>its files have analog channels and no discrete one, so that they cannot be compared; the library gives up such a recording with an exception</source>
        <translation>в файлах есть аналоговые каналы и нет дискретных, поэтому их нельзя сравнить; библиотека отказывается от такой осциллограммы исключением</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>да</translation>
    </message>
    <message>
        <source>no</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>байтов: %1</translation>
    </message>
    <message>
        <source>needs more memory than --max-memory allows</source>
        <translation>нужно больше памяти, чем позволяет --max-memory</translation>
    </message>
    <message>
        <source>this file continues a recording; its first file is %1</source>
        <translation>этот файл продолжает осциллограмму; её первый файл %1</translation>
    </message>
    <message>
        <source>Show what is in recordings and COMTRADE records</source>
        <translation>Рассказать, что в осциллограммах и записях COMTRADE</translation>
    </message>
    <message>
        <source>One JSON object a file, for programs</source>
        <translation>Объект JSON на каждый файл, для программ</translation>
    </message>
    <message>
        <source>Leave out the lists of channels</source>
        <translation>Без списков каналов</translation>
    </message>
    <message>
        <source>First files of recordings (.ZU), or the .cfg or .cff files of records</source>
        <translation>Первые файлы осциллограмм (.ZU) или файлы .cfg или .cff записей</translation>
    </message>
    <message>
        <source>not constant, the samples have time stamps</source>
        <translation>непостоянная, у отсчётов есть метки времени</translation>
    </message>
    <message>
        <source>%1 Hz up to sample %2</source>
        <translation>%1 Гц до отсчёта %2</translation>
    </message>
    <message>
        <source>not constant up to sample %1</source>
        <translation>непостоянная до отсчёта %1</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Пропущено</translation>
    </message>
    <message>
        <source>header %1 bytes</source>
        <translation>HDR байтов %1</translation>
    </message>
    <message>
        <source>information %1 bytes</source>
        <translation>INF байтов %1</translation>
    </message>
    <message>
        <source>none</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>Missing values</source>
        <translation>Пропущено значений</translation>
    </message>
    <message>
        <source>%1 differs from the first file</source>
        <translation>%1 отличается от первого файла</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>%1 не читается</translation>
    </message>
    <message>
        <source>by the durations in the headers of its files, its record will hold %1 of the %2 samples</source>
        <translation>по длительностям в заголовках файлов в запись войдёт отсчётов %1 из %2</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>неизвестна</translation>
    </message>
    <message>
        <source>kB</source>
        <translation>кБ</translation>
    </message>
    <message>
        <source>MB</source>
        <translation>МБ</translation>
    </message>
    <message>
        <source>GB</source>
        <translation>ГБ</translation>
    </message>
    <message>
        <source>What happened</source>
        <translation>Что произошло</translation>
    </message>
    <message>
        <source>Of a recording: its times with zone, duration, rate, the segments found and why the chain
ends, the start comment as stored and as understood, the channels. Of a record: what its
configuration says, and whether all its data are there. Of both: what happened, as &apos;zucmtr events&apos; says it.

Exit code: 0 all files are good, 1 something is wrong with at least one, 2 wrong usage.

Example, with the sample station:
  zucmtr sample --out station
  zucmtr info --no-channels station/*.ZU</source>
        <translation>Об осциллограмме: время с часовым поясом, длительность, частота, найденные сегменты и почему цепочка
кончается, комментарий пуска как записан и как понят, каналы. О записи: что говорит конфигурация и все ли
данные на месте. О тех и других: что
произошло, как в &apos;zucmtr events&apos;.

Код завершения: 0 все файлы исправны, 1 хотя бы с одним что-то не так, 2 неверный вызов.

Пример с учебной станцией:
  zucmtr sample --out station
  zucmtr info --no-channels station/*.ZU</translation>
    </message>
    <message>
        <source>whole: %1; &apos;zucmtr convert --salvage&apos; converts them</source>
        <translation>уцелело: %1; их преобразует &apos;zucmtr convert --salvage&apos;</translation>
    </message>
    <message>
        <source>Encoding</source>
        <translation>Кодировка</translation>
    </message>
</context>
<context>
    <name>layout</name>
    <message>
        <source>--layout &apos;%1&apos;: %2</source>
        <translation>--layout «%1»: %2</translation>
    </message>
    <message>
        <source>there is no {%1}; there are {%2}</source>
        <translation>нет подстановки {%1}; есть {%2}</translation>
    </message>
    <message>
        <source>a brace has no other one; placeholders are written as {station}</source>
        <translation>у фигурной скобки нет парной; подстановки пишутся так: {station}</translation>
    </message>
    <message>
        <source>names of files cannot have a &apos;%1&apos;</source>
        <translation>в именах файлов не может быть «%1»</translation>
    </message>
    <message>
        <source>it is a place below the directory of --out; leave out the &apos;/&apos; in front</source>
        <translation>это место внутри каталога --out; уберите «/» в начале</translation>
    </message>
    <message>
        <source>the name of the record is missing after the last &apos;/&apos;; {name} is its own</source>
        <translation>после последнего «/» нет имени записи; {name} — её собственное</translation>
    </message>
    <message>
        <source>there is nothing between two &apos;/&apos;</source>
        <translation>между двумя «/» ничего нет</translation>
    </message>
    <message>
        <source>no name may start with a &apos;.&apos;</source>
        <translation>имя не может начинаться с точки</translation>
    </message>
    <message>
        <source>{folder} is a directory; write it before a &apos;/&apos;</source>
        <translation>{folder} — это каталог; напишите его перед «/»</translation>
    </message>
</context>
<context>
    <name>leftovers</name>
    <message>
        <source>%1: is back under its name; a run that was ended had moved it aside</source>
        <translation>%1: файлу возвращено имя; его отложил прерванный запуск</translation>
    </message>
    <message>
        <source>%1: removed, as its recording was put away by a run that was ended before it could</source>
        <translation>%1: удалён: осциллограмму убрал запуск, прерванный прежде, чем он это сделал</translation>
    </message>
    <message>
        <source>%1: continues a recording whose first file is not there; bring that back, or put this file to the rest of its recording</source>
        <translation>%1: продолжает осциллограмму, первого файла которой нет; верните его или положите этот файл к остальным файлам осциллограммы</translation>
    </message>
</context>
<context>
    <name>library</name>
    <message>
        <source>there is no such file; check the path</source>
        <translation>такого файла нет; проверьте путь</translation>
    </message>
    <message>
        <source>the directory for the record is gone; make it again</source>
        <translation>каталог для записи исчез; создайте его снова</translation>
    </message>
    <message>
        <source>the name of a recording ends in .ZU or .zu; rename the file</source>
        <translation>имя осциллограммы должно кончаться на .ZU или .zu; переименуйте файл</translation>
    </message>
    <message>
        <source>the file cannot be opened; check its permissions</source>
        <translation>файл не открывается; проверьте права доступа</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be written; check the free space and the permissions</source>
        <translation>«%1» не записывается; проверьте свободное место и права доступа</translation>
    </message>
    <message>
        <source>there is not enough memory; give more by --max-memory, or convert fewer recordings at once</source>
        <translation>не хватает памяти; дайте больше ключом --max-memory или преобразуйте меньше осциллограмм одновременно</translation>
    </message>
    <message>
        <source>the file ends within its header; was the copy interrupted?</source>
        <translation>файл обрывается в своём заголовке; не прервано ли копирование?</translation>
    </message>
    <message>
        <source>the file ends before all the channels that its header promises; was the copy interrupted?</source>
        <translation>файл обрывается раньше, чем кончаются каналы, указанные в заголовке; не прервано ли копирование?</translation>
    </message>
    <message>
        <source>it is no recording: it does not start like a recorder&apos;s file; give a recording&apos;s first file (.ZU)</source>
        <translation>это не осциллограмма: начало не такое, как у файлов регистратора; укажите первый файл осциллограммы (.ZU)</translation>
    </message>
    <message>
        <source>it is no recording: its title is not a recorder&apos;s in either code page</source>
        <translation>это не осциллограмма: название не такое, как у регистратора, ни в одной из кодировок</translation>
    </message>
    <message>
        <source>the header is damaged: its time zone is out of range</source>
        <translation>заголовок повреждён: часовой пояс вне допустимых пределов</translation>
    </message>
    <message>
        <source>the file is damaged: the header of a channel has a wrong length</source>
        <translation>файл повреждён: неверная длина заголовка канала</translation>
    </message>
    <message>
        <source>the header is damaged: the time of the first sample is out of range</source>
        <translation>заголовок повреждён: время первого отсчёта вне допустимых пределов</translation>
    </message>
    <message>
        <source>the header is damaged: the time of the trigger is out of range</source>
        <translation>заголовок повреждён: время пуска вне допустимых пределов</translation>
    </message>
    <message>
        <source>the header is damaged: the duration is out of range</source>
        <translation>заголовок повреждён: длительность вне допустимых пределов</translation>
    </message>
    <message>
        <source>the header is damaged: it promises too many channels</source>
        <translation>заголовок повреждён: в нём указано слишком много каналов</translation>
    </message>
    <message>
        <source>the header is damaged: it gives a wrong size for itself</source>
        <translation>заголовок повреждён: в нём указан неверный размер самого заголовка</translation>
    </message>
    <message>
        <source>the file is damaged: it has a channel of an unknown kind</source>
        <translation>файл повреждён: в нём канал неизвестного вида</translation>
    </message>
    <message>
        <source>an analog channel cannot be read: %1</source>
        <translation>аналоговый канал не читается: %1</translation>
    </message>
    <message>
        <source>a discrete channel cannot be read: %1</source>
        <translation>дискретный канал не читается: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no data</source>
        <translation>у «%1» нет данных</translation>
    </message>
    <message>
        <source>the file ends within its header</source>
        <translation>файл обрывается в заголовке канала</translation>
    </message>
    <message>
        <source>the file ends within its data; was the copy interrupted?</source>
        <translation>файл обрывается в данных канала; не прервано ли копирование?</translation>
    </message>
    <message>
        <source>the number of its changes does not fit the size of its data</source>
        <translation>число изменений не соответствует размеру данных</translation>
    </message>
    <message>
        <source>the number of its samples does not fit the size of its data</source>
        <translation>число отсчётов не соответствует размеру данных</translation>
    </message>
    <message>
        <source>its compressed data are damaged</source>
        <translation>сжатые данные повреждены</translation>
    </message>
    <message>
        <source>the analog channels of &apos;%1&apos; have different sampling rates</source>
        <translation>у аналоговых каналов в «%1» разные частоты дискретизации</translation>
    </message>
    <message>
        <source>the analog channels of &apos;%1&apos; have different numbers of samples</source>
        <translation>у аналоговых каналов в «%1» разное число отсчётов</translation>
    </message>
    <message>
        <source>its files have different sampling rates</source>
        <translation>в файлах осциллограммы разные частоты дискретизации</translation>
    </message>
    <message>
        <source>its sampling rate is 0, so it cannot be converted</source>
        <translation>частота дискретизации равна 0, преобразовать нельзя</translation>
    </message>
    <message>
        <source>its duration is 0, so it cannot be converted</source>
        <translation>длительность равна 0, преобразовать нельзя</translation>
    </message>
    <message>
        <source>the recording of &apos;%1&apos; ends early, a continuation file cannot be read: %2</source>
        <translation>осциллограмма «%1» кончается раньше, файл продолжения не читается: %2</translation>
    </message>
    <message>
        <source>the recording ends early, &apos;%1&apos; does not continue &apos;%2&apos;: they differ</source>
        <translation>осциллограмма кончается раньше, «%1» не продолжает «%2»: параметры различны</translation>
    </message>
</context>
<context>
    <name>lines</name>
    <message>
        <source>ignored: &apos;%1&apos; is before the first section; put it under the [circuit] it is of</source>
        <translation>пропускается: «%1» стоит до первой секции; перенесите под [присоединение], к которому относится</translation>
    </message>
    <message>
        <source>ignored: &apos;%1&apos; is neither a [circuit] nor key=value</source>
        <translation>пропускается: «%1» не [присоединение] и не ключ=значение</translation>
    </message>
    <message>
        <source>[%1] is there already in line %2; put both into one section</source>
        <translation>[%1] уже есть в строке %2; объедините обе секции</translation>
    </message>
    <message>
        <source>[%1] has &apos;%2&apos; twice; the last one counts</source>
        <translation>[%1]: ключ «%2» задан дважды; действует последний</translation>
    </message>
    <message>
        <source>ignored: [%1] has the unknown key &apos;%2&apos;; known are %3</source>
        <translation>пропускается: [%1]: неизвестный ключ «%2»; известны %3</translation>
    </message>
    <message>
        <source>it cannot be below 0</source>
        <translation>не может быть меньше 0</translation>
    </message>
    <message>
        <source>it has to be above 0</source>
        <translation>должно быть больше 0</translation>
    </message>
    <message>
        <source>[%1] lacks %2; without it there is no distance to a fault on it</source>
        <translation>[%1]: не задано %2; без этого расстояние до места КЗ на линии не определяется</translation>
    </message>
    <message>
        <source>[%1] %2 = &apos;%3&apos;: </source>
        <translation>[%1] %2 = «%3»: </translation>
    </message>
    <message>
        <source>the line is not UTF-8; convert the file, for example by: iconv -f WINDOWS-1251 -t UTF-8</source>
        <translation>строка не в UTF-8; перекодируйте файл, например: iconv -f WINDOWS-1251 -t UTF-8</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be read: %2</source>
        <translation>«%1» не читается: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is too large for the data of lines</source>
        <translation>«%1» слишком велик для параметров линий</translation>
    </message>
    <message>
        <source>a mho circle is written as: mho R X radius</source>
        <translation>окружность задаётся так: mho R X радиус</translation>
    </message>
    <message>
        <source>the radius has to be above 0</source>
        <translation>радиус должен быть больше 0</translation>
    </message>
    <message>
        <source>the corner &apos;%1&apos; is not R,X; write corners with blanks between them and decimal points: 0,0 10,0 8.5,20</source>
        <translation>вершина «%1» не в виде R,X; пишите вершины через пробел, дробную часть через точку: 0,0 10,0 8.5,20</translation>
    </message>
    <message>
        <source>a polygon has at least three corners: polygon R,X R,X R,X</source>
        <translation>у многоугольника не меньше трёх вершин: polygon R,X R,X R,X</translation>
    </message>
    <message>
        <source>the corners enclose nothing</source>
        <translation>вершины не охватывают никакой области</translation>
    </message>
    <message>
        <source>write a decimal point: %1</source>
        <translation>пишите десятичную точку: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a number</source>
        <translation>«%1» не число</translation>
    </message>
    <message>
        <source>a zone is &apos;mho R X radius&apos; or &apos;polygon R,X R,X R,X ...&apos;, in primary ohms</source>
        <translation>зона задаётся как mho R X радиус или polygon R,X R,X R,X ..., в первичных омах</translation>
    </message>
</context>
<context>
    <name>log</name>
    <message>
        <source>cannot make a temporary log file in &apos;%1&apos;; set TMPDIR to a directory that can be written to, or name a log file by --log</source>
        <translation>временный файл журнала в «%1» не создаётся; укажите в TMPDIR каталог, доступный для записи, или файл журнала ключом --log</translation>
    </message>
    <message>
        <source>... (%1 lines before)</source>
        <translation>... (строк до этого: %1)</translation>
    </message>
    <message>
        <source>--log: &apos;%1&apos; cannot be written: %2</source>
        <translation>--log: «%1» не записывается: %2</translation>
    </message>
    <message>
        <source>the log cannot be written any more: %1</source>
        <translation>журнал больше не записывается: %1</translation>
    </message>
    <message>
        <source>%1; a recording is complete when unchanged for %2 s</source>
        <translation>%1; осциллограмма считается полной, если не меняется %2 с</translation>
    </message>
    <message>
        <source>; attempt %1, the last one</source>
        <translation>; попытка %1, последняя</translation>
    </message>
    <message>
        <source>; attempt %1, the next one in %2 s</source>
        <translation>; попытка %1, следующая через %2 с</translation>
    </message>
    <message>
        <source>; it said: %1</source>
        <translation>; её вывод: %1</translation>
    </message>
    <message>
        <source>%1: the command is done (%2 s)</source>
        <translation>%1: команда выполнена (%2 с)</translation>
    </message>
    <message>
        <source>; %1 of this kind</source>
        <translation>; таких %1</translation>
    </message>
    <message>
        <source>names given back: %1</source>
        <translation>возвращены имена: %1</translation>
    </message>
    <message>
        <source>removed: %1</source>
        <translation>удалены: %1</translation>
    </message>
    <message>
        <source>%1 is over after %2 s</source>
        <translation>%1 устранено через %2 с</translation>
    </message>
    <message>
        <source>; %1 converted, %2 given up, %3 waiting</source>
        <translation>; преобразовано %1, оставлено без новых попыток %2, ожидают %3</translation>
    </message>
    <message>
        <source>; started again in %1 s</source>
        <translation>; новый запуск через %1 с</translation>
    </message>
    <message>
        <source>started: %1; ended: %2</source>
        <translation>запущены: %1; завершены: %2</translation>
    </message>
    <message>
        <source>the journal&apos;s copy is complete after %1 s</source>
        <translation>копия состояния дополнена через %1 с</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>argument %1 (&apos;%2&apos;) is not UTF-8; rename the file, or run the program from a UTF-8 terminal</source>
        <translation>аргумент %1 («%2») не в UTF-8; переименуйте файл или запустите программу из терминала с UTF-8</translation>
    </message>
    <message>
        <source>Converts the recordings of digital fault recorders (.ZU) into COMTRADE records (IEEE C37.111).</source>
        <translation>Преобразует осциллограммы цифровых регистраторов аварийных событий (.ZU) в записи COMTRADE (IEEE C37.111).</translation>
    </message>
    <message>
        <source>Print this help and exit</source>
        <translation>Показать эту справку и завершить работу</translation>
    </message>
    <message>
        <source>Print the version and exit</source>
        <translation>Показать версию и завершить работу</translation>
    </message>
    <message>
        <source>out of memory; work on fewer or shorter recordings</source>
        <translation>не хватает памяти; возьмите меньше осциллограмм или более короткие</translation>
    </message>
    <message>
        <source>stopped by an unexpected error: %1</source>
        <translation>остановлено неожиданной ошибкой: %1</translation>
    </message>
    <message>
        <source>standard output could not be written; check the disk or the pipe</source>
        <translation>стандартный вывод не записывается; проверьте диск или канал</translation>
    </message>
    <message>
        <source>&apos;zucmtr help COMMAND&apos; says more about a command. To try the program:

  zucmtr sample --out station
  zucmtr convert --out station/comtrade --make-out station</source>
        <translation>Подробнее о команде: «zucmtr help КОМАНДА». Чтобы попробовать программу:

  zucmtr sample --out station
  zucmtr convert --out station/comtrade --make-out station</translation>
    </message>
    <message>
        <source>Run &apos;%1 --help&apos; for the options and an example.</source>
        <translation>Ключи и пример: «%1 --help».</translation>
    </message>
</context>
<context>
    <name>memory</name>
    <message>
        <source>Memory that the program may take, as 800M or 2G; 0: no limit. A recording that needs more fails. Default: three quarters of the machine&apos;s memory</source>
        <translation>Память, которую может занять программа, как 800M или 2G; 0: без предела. Осциллограмма, которой нужно больше, не преобразуется. По умолчанию три четверти памяти машины</translation>
    </message>
    <message>
        <source>--max-memory: %1 bytes are too few; give 128M or more, or 0 for no limit</source>
        <translation>--max-memory: %1 байтов мало; дайте 128M или больше или 0 — без предела</translation>
    </message>
    <message>
        <source>--max-memory: the system does not take a limit of %1 bytes; give less</source>
        <translation>--max-memory: система не принимает предел в %1 байтов; дайте меньше</translation>
    </message>
</context>
<context>
    <name>output</name>
    <message>
        <source>%1; check the directory, its permissions and the free space</source>
        <translation>%1; проверьте каталог, права доступа и свободное место</translation>
    </message>
    <message>
        <source>nobody reads this pipe; start its reader first</source>
        <translation>этот канал никто не читает; сначала запустите читающую программу</translation>
    </message>
</context>
<context>
    <name>parser</name>
    <message>
        <source>%1 is required</source>
        <translation>не указано: %1</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Ключи</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>Команды</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Вызов</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>КЛЮЧИ</translation>
    </message>
    <message>
        <source>SUBCOMMAND</source>
        <translation>КОМАНДА</translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>Аргументы</translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation>ОБЯЗАТЕЛЬНО</translation>
    </message>
    <message>
        <source>Excludes</source>
        <translation>Несовместимо с</translation>
    </message>
    <message>
        <source>Needs</source>
        <translation>Требует</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>ФАЙЛ</translation>
    </message>
    <message>
        <source>DIR</source>
        <translation>КАТАЛОГ</translation>
    </message>
    <message>
        <source>SECTION</source>
        <translation>СЕКЦИЯ</translation>
    </message>
    <message>
        <source>COMMAND</source>
        <translation>КОМАНДА</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>ИМЯ</translation>
    </message>
    <message>
        <source>KIND</source>
        <translation>ВИД</translation>
    </message>
    <message>
        <source>SIZE</source>
        <translation>РАЗМЕР</translation>
    </message>
    <message>
        <source>SECONDS</source>
        <translation>СЕКУНДЫ</translation>
    </message>
    <message>
        <source>N</source>
        <translation>ЧИСЛО</translation>
    </message>
    <message>
        <source>HZ</source>
        <translation>ГЦ</translation>
    </message>
    <message>
        <source>S</source>
        <translation>СЕКУНДЫ</translation>
    </message>
    <message>
        <source>%1 is given without %2; give both</source>
        <translation>%1 указан без %2; укажите оба</translation>
    </message>
    <message>
        <source>%1 and %2 exclude each other; leave one out</source>
        <translation>%1 и %2 вместе нельзя; уберите один из них</translation>
    </message>
    <message>
        <source>%1: the value is missing (%2)</source>
        <translation>%1: нет значения (%2)</translation>
    </message>
    <message>
        <source>%1 is given %2 times; give it once</source>
        <translation>%1: указано раз: %2; укажите один раз</translation>
    </message>
    <message>
        <source>%1 takes no value; leave &apos;%2&apos; out</source>
        <translation>%1 — ключ без значения; уберите «%2»</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no option %2</source>
        <translation>у «%1» нет ключа %2</translation>
    </message>
    <message>
        <source>%1 is before the command; put it after</source>
        <translation>%1 стоит перед командой; поставьте его после неё</translation>
    </message>
    <message>
        <source>; it is one of %1</source>
        <translation>; он есть у %1</translation>
    </message>
    <message>
        <source>; did you mean %1?</source>
        <translation>; может быть, %1?</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is too much: &apos;%2&apos; takes nothing but options</source>
        <translation>«%1» — лишнее: у «%2» есть только ключи</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is too much: &apos;%2&apos; takes one %3</source>
        <translation>«%1» — лишнее: у «%2» только один аргумент (%3)</translation>
    </message>
    <message>
        <source>there is no command &apos;%1&apos;</source>
        <translation>нет команды «%1»</translation>
    </message>
    <message>
        <source>; did you mean &apos;%1&apos;?</source>
        <translation>; может быть, «%1»?</translation>
    </message>
    <message>
        <source>; there are %1</source>
        <translation>; есть %1</translation>
    </message>
    <message>
        <source>%1 has no value after the &apos;=&apos;</source>
        <translation>%1: после «=» нет значения</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has one dash only; did you mean -%1?</source>
        <translation>в «%1» только один дефис; может быть, -%1?</translation>
    </message>
    <message>
        <source>&apos;%1&apos;</source>
        <translation>«%1»</translation>
    </message>
    <message>
        <source>PERCENT</source>
        <translation>ПРОЦЕНТ</translation>
    </message>
    <message>
        <source>OHM</source>
        <translation>ОМ</translation>
    </message>
    <message>
        <source>DEGREES</source>
        <translation>ГРАДУСЫ</translation>
    </message>
    <message>
        <source>FRACTION</source>
        <translation>ДОЛЯ</translation>
    </message>
    <message>
        <source>KM</source>
        <translation>КМ</translation>
    </message>
    <message>
        <source>RESULT</source>
        <translation>ИТОГ</translation>
    </message>
    <message>
        <source>SEEDS</source>
        <translation>ЧИСЛА</translation>
    </message>
    <message>
        <source>SECOND</source>
        <translation>ВТОРОЙ</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is too much: &apos;%2&apos; takes one %3 and one %4</source>
        <translation>«%1» — лишнее: у «%2» только два аргумента (%3 и %4)</translation>
    </message>
    <message>
        <source>PATTERN</source>
        <translation>ШАБЛОН</translation>
    </message>
    <message>
        <source>no command is given</source>
        <translation>не указана команда</translation>
    </message>
    <message>
        <source>say what &apos;%1&apos; is to do: %2</source>
        <translation>укажите, что делать команде «%1»: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no command; say first what to do with it, as in: %2 %3</source>
        <translation>«%1» — не команда; укажите сначала, что делать, например: %2 %3</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no command &apos;%2&apos;</source>
        <translation>у «%1» нет команды «%2»</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is too much: &apos;%2&apos; has no commands</source>
        <translation>«%1» — лишнее: у «%2» нет подкоманд</translation>
    </message>
    <message>
        <source>ADDRESS</source>
        <translation>АДРЕС</translation>
    </message>
    <message>
        <source>MOMENT</source>
        <translation>МОМЕНТ</translation>
    </message>
    <message>
        <source>CURRENT</source>
        <translation>ТОК</translation>
    </message>
    <message>
        <source>DURATION</source>
        <translation>ДЛИТЕЛЬНОСТЬ</translation>
    </message>
    <message>
        <source>PHASES</source>
        <translation>ФАЗЫ</translation>
    </message>
    <message>
        <source>WORDS</source>
        <translation>СЛОВА</translation>
    </message>
    <message>
        <source>COLUMN</source>
        <translation>СТОЛБЕЦ</translation>
    </message>
    <message>
        <source>DISTANCE</source>
        <translation>РАССТОЯНИЕ</translation>
    </message>
    <message>
        <source>WHICH</source>
        <translation>КАКИЕ</translation>
    </message>
    <message>
        <source>TEXT</source>
        <translation>ТЕКСТ</translation>
    </message>
    <message>
        <source>DATE</source>
        <translation>ДАТА</translation>
    </message>
</context>
<context>
    <name>picture</name>
    <message>
        <source>the part of the program that draws pictures cannot be loaded: %1; install the program again</source>
        <translation>часть программы, которая рисует, не загружается: %1; установите программу заново</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not there</source>
        <translation>файла «%1» нет</translation>
    </message>
    <message>
        <source>it is of another version</source>
        <translation>она от другой версии</translation>
    </message>
</context>
<context>
    <name>progress</name>
    <message>
        <source>%1 a second, %2 left</source>
        <translation>%1 в секунду, осталось %2</translation>
    </message>
</context>
<context>
    <name>record form</name>
    <message>
        <source>--ini: &apos;%1&apos; cannot be read: %2</source>
        <translation>--ini: «%1» не читается: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be written: %2; free space in the directory for temporary files</source>
        <translation>«%1» не записывается: %2; освободите место в каталоге временных файлов</translation>
    </message>
</context>
<context>
    <name>record source</name>
    <message>
        <source>&apos;%1&apos; cannot be written: %2; free space in the directory for temporary files</source>
        <translation>«%1» не записывается: %2; освободите место в каталоге временных файлов</translation>
    </message>
    <message>
        <source>no temporary directory: %1</source>
        <translation>нет временного каталога: %1</translation>
    </message>
    <message>
        <source>%1: its record was not found after the conversion</source>
        <translation>%1: запись после преобразования не найдена</translation>
    </message>
</context>
<context>
    <name>recordings</name>
    <message>
        <source>passed over, it is converted with its first file %1</source>
        <translation>пропущен, преобразуется вместе с первым файлом %1</translation>
    </message>
    <message>
        <source>not converted: no permission to read this directory; check its permissions</source>
        <translation>не преобразован: нет права чтения каталога; проверьте права доступа</translation>
    </message>
    <message>
        <source>there is no recording (.ZU) in this directory</source>
        <translation>в этом каталоге нет осциллограмм (.ZU)</translation>
    </message>
    <message>
        <source>there is no recording (.ZU) in this directory; --recursive searches the directories below it, too</source>
        <translation>в этом каталоге нет осциллограмм (.ZU); --recursive ищет и во вложенных каталогах</translation>
    </message>
    <message>
        <source>not converted: the name is not UTF-8; rename the file</source>
        <translation>не преобразована: имя не в UTF-8; переименуйте файл</translation>
    </message>
    <message>
        <source>not converted: the name is not UTF-8; rename the directory</source>
        <translation>не преобразована: имя не в UTF-8; переименуйте каталог</translation>
    </message>
    <message>
        <source>not converted: %1</source>
        <translation>не преобразована: %1</translation>
    </message>
    <message>
        <source>it continues a recording; give the first file %1 instead</source>
        <translation>файл продолжает осциллограмму; укажите вместо него первый файл %1</translation>
    </message>
    <message>
        <source>it continues a recording whose first file %1 is not there; bring that back</source>
        <translation>файл продолжает осциллограмму, первого файла которой (%1) нет; верните его</translation>
    </message>
</context>
<context>
    <name>salvage</name>
    <message>
        <source>channels lost with their names: %1</source>
        <translation>потеряно каналов вместе с именами: %1</translation>
    </message>
    <message>
        <source>lost channels: %1</source>
        <translation>потерянные каналы: %1</translation>
    </message>
    <message>
        <source>lost channels: %1 and %2 others</source>
        <translation>потерянные каналы: %1 и ещё %2</translation>
    </message>
    <message>
        <source>%1 of %2 analog, %3 of %4 discrete channels</source>
        <translation>аналоговых каналов %1 из %2, дискретных %3 из %4</translation>
    </message>
    <message>
        <source>%1 analog and %2 discrete of %3 channels</source>
        <translation>аналоговых каналов %1 и дискретных %2 из общего числа %3</translation>
    </message>
    <message>
        <source>, %1 of %2 files</source>
        <translation>, файлов %1 из %2</translation>
    </message>
    <message>
        <source>no analog channel is whole: the states are sampled 2400 times a second</source>
        <translation>ни один аналоговый канал не уцелел: дискретные сигналы записаны с частотой 2400 отсчётов в секунду</translation>
    </message>
    <message>
        <source>not in the record: %1</source>
        <translation>не вошли в запись: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be read: %2</source>
        <translation>файл &apos;%1&apos; не удалось прочитать: %2</translation>
    </message>
    <message>
        <source>what is whole of the recording could not be written to &apos;%1&apos;: %2; free space in the directory for temporary files</source>
        <translation>уцелевшую часть осциллограммы не удалось записать в &apos;%1&apos;: %2; освободите место в каталоге временных файлов</translation>
    </message>
</context>
<context>
    <name>sample</name>
    <message>
        <source>--out: &apos;%1&apos; already has &apos;%2&apos;; choose another directory, or replace the sample and its ini file by --force</source>
        <translation>--out: в «%1» уже есть «%2»; выберите другой каталог или замените учебную станцию и её ini-файл ключом --force</translation>
    </message>
    <message>
        <source>Write a sample station: recordings and their ini file</source>
        <translation>Записать учебную станцию: осциллограммы и их ini-файл</translation>
    </message>
    <message>
        <source>Replace an older sample in the directory</source>
        <translation>Заменить прежнюю учебную станцию в каталоге</translation>
    </message>
    <message>
        <source>--analog %1 and --discrete %2 make %3 channels; a recording has fewer than %4</source>
        <translation>--analog %1 и --discrete %2 дают каналов %3; в осциллограмме их меньше %4</translation>
    </message>
    <message>
        <source>--rate %1 and --seconds %2 make a segment of %3 s; it lasts less than %4 s: raise the rate</source>
        <translation>--rate %1 и --seconds %2 дают сегмент в %3 с; он короче %4 с: увеличьте частоту</translation>
    </message>
    <message>
        <source>the recordings would have %1 samples per channel and segment, %2 in all; at most %3 and %4 are made: lower --rate, --seconds, --segments or --analog</source>
        <translation>в осциллограммах было бы отсчётов на канал и сегмент %1, всего %2; создаётся не больше %3 и %4: уменьшите --rate, --seconds, --segments или --analog</translation>
    </message>
    <message>
        <source>Analog channels, 0 to 4095 (32)</source>
        <translation>Аналоговых каналов, от 0 до 4095 (32)</translation>
    </message>
    <message>
        <source>Discrete channels, 0 to 4095 (64)</source>
        <translation>Дискретных каналов, от 0 до 4095 (64)</translation>
    </message>
    <message>
        <source>Samples per second, below 10000000 (2400)</source>
        <translation>Отсчётов в секунду, меньше 10000000 (2400)</translation>
    </message>
    <message>
        <source>Length of a segment, below 268 (2)</source>
        <translation>Длина сегмента, меньше 268 (2)</translation>
    </message>
    <message>
        <source>Files of a recording, 1 to 16 (1)</source>
        <translation>Файлов в осциллограмме, от 1 до 16 (1)</translation>
    </message>
    <message>
        <source>Compress the samples (the default)</source>
        <translation>Сжимать отсчёты (по умолчанию)</translation>
    </message>
    <message>
        <source>Store the samples as they are</source>
        <translation>Хранить отсчёты как есть</translation>
    </message>
    <message>
        <source>Code page of the texts: cp866, cp1251 (cp866)</source>
        <translation>Кодировка текстов: cp866, cp1251 (cp866)</translation>
    </message>
    <message>
        <source>Seed of noise and operating times, 0 to 4294967295 (1)</source>
        <translation>Начальное число шума и времён срабатывания, от 0 до 4294967295 (1)</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be written: %2</source>
        <translation>«%1» не записывается: %2</translation>
    </message>
    <message>
        <source>Directory for the files; it is made if it is not there</source>
        <translation>Каталог для файлов; создаётся, если его нет</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is wrong; give a seed or a range of at most %2, as 17 or 1-1000</source>
        <translation>«%1» не годится; дайте начальное число или диапазон не более чем из %2 чисел, например 17 или 1-1000</translation>
    </message>
    <message>
        <source>Resistance of the fault (1)</source>
        <translation>Переходное сопротивление (1)</translation>
    </message>
    <message>
        <source>Angle of the faulted phase&apos;s voltage at the onset (60)</source>
        <translation>Угол напряжения повреждённой фазы в момент замыкания (60)</translation>
    </message>
    <message>
        <source>Frequency, 45 to 55 (50)</source>
        <translation>Частота сети, от 45 до 55 (50)</translation>
    </message>
    <message>
        <source>Noise, standard deviation in percent of the rated peak (0.05)</source>
        <translation>Шум, среднеквадратичное отклонение в процентах номинальной амплитуды (0.05)</translation>
    </message>
    <message>
        <source>Length of the line (60)</source>
        <translation>Длина линии (60)</translation>
    </message>
    <message>
        <source>%1 and --fault %2 exclude each other; leave one out</source>
        <translation>%1 и --fault %2 вместе нельзя; уберите один из них</translation>
    </message>
    <message>
        <source>--evolving: a fault %1 cannot turn into another; leave it out</source>
        <translation>--evolving: замыкание %1 не может перейти в другое; уберите этот ключ</translation>
    </message>
    <message>
        <source>--evolving: a fault %1 cannot turn into %2; give one of %3</source>
        <translation>--evolving: замыкание %1 не может перейти в %2; дайте одно из: %3</translation>
    </message>
    <message>
        <source>--rate %1: a simulated fault is sampled at %2 to %3 Hz; give such a rate</source>
        <translation>--rate %1: частота дискретизации моделируемого замыкания — от %2 до %3 Гц; дайте такую</translation>
    </message>
    <message>
        <source>--seconds %1: a simulated recording lasts %2 to %3 s; give such a length</source>
        <translation>--seconds %1: моделируемая осциллограмма длится от %2 до %3 с; дайте такую длительность</translation>
    </message>
    <message>
        <source>Distance to a simulated fault, in percent of the line (40)</source>
        <translation>Расстояние до моделируемого замыкания, в процентах длины линии (40)</translation>
    </message>
    <message>
        <source>Load current before the fault, in parts of the rated current; negative towards the station (0.3)</source>
        <translation>Ток нагрузки до замыкания в долях номинального; отрицательный — к подстанции (0.3)</translation>
    </message>
    <message>
        <source>Let the current transformers of the line saturate</source>
        <translation>С насыщением трансформаторов тока линии</translation>
    </message>
    <message>
        <source>What the fault turns into 35 ms after its onset</source>
        <translation>Во что переходит замыкание через 35 мс после возникновения</translation>
    </message>
    <message>
        <source>Reclose the line: success, or fault (it is still faulted)</source>
        <translation>АПВ линии: success (успешное) или fault (на неустранённое замыкание)</translation>
    </message>
    <message>
        <source>Simulate a fault drawn from a seed (17), or one for each seed of a range (1-1000)</source>
        <translation>Моделировать случайное замыкание по начальному числу (17) или по одному на каждое число диапазона (1-1000)</translation>
    </message>
    <message>
        <source>Likewise without a fault: load steps, switching, inrush, swings</source>
        <translation>То же без замыкания: набросы нагрузки, коммутации, броски тока намагничивания, качания</translation>
    </message>
    <message>
        <source>%1 needs a simulated fault; give --fault %2, too</source>
        <translation>%1 — только для моделируемого замыкания; дайте и --fault %2</translation>
    </message>
    <message>
        <source>%1 draws everything and goes without %2; leave one out</source>
        <translation>%1 выбирает всё случайно и с %2 не сочетается; уберите один из них</translation>
    </message>
    <message>
        <source>Fault on the line: single, two, three, none (single); simulated: AG to ABC</source>
        <translation>Замыкание на линии: single, two, three, none (single); моделируемое: от AG до ABC</translation>
    </message>
    <message>
        <source>Simulate an archive of N recordings, 10 to 100000: a year of the recorders of four substations</source>
        <translation>Смоделировать архив из N осциллограмм, от 10 до 100000: год работы регистраторов четырёх подстанций</translation>
    </message>
    <message>
        <source>The station is a substation of 220/110 kV with a short circuit on a line. There is one recording for each
kind of start, and the ini file ZuDrv.ini. The same options give the same bytes everywhere. The files
written are listed; the last line is the command that converts them.

A simulated fault (--fault AG to ABC, --random-fault) is on a line between two sources whose data
are in lines.ini; a file .truth.json beside each recording says where the fault is, and all else
that an analysis should find. An archive (--archive) has a directory for each recorder, with the same
files; the last line is the command that catalogues it.

Examples:
  zucmtr sample --out station --fault three --segments 2
  zucmtr sample --out faults --fault BCG --distance 70 --resistance 5 --reclose fault
  zucmtr sample --out random --random-fault 1-20
  zucmtr sample --out recordings --archive 20</source>
        <translation>Станция — подстанция 220/110 кВ с коротким замыканием на линии. Для каждого вида пуска есть осциллограмма,
а также ini-файл ZuDrv.ini. Одинаковые ключи везде дают одинаковые байты. Записанные файлы перечисляются;
последняя строка — команда, которая их преобразует.

Моделируемое замыкание (--fault от AG до ABC, --random-fault) происходит на линии между двумя источниками;
её параметры — в файле lines.ini. Рядом с каждой осциллограммой файл .truth.json: где замыкание и что ещё
должен найти анализ. В архиве (--archive) у каждого регистратора каталог с такими же файлами; последняя
строка — команда, которая составляет каталог архива.

Примеры:
  zucmtr sample --out station --fault three --segments 2
  zucmtr sample --out faults --fault BCG --distance 70 --resistance 5 --reclose fault
  zucmtr sample --out random --random-fault 1-20
  zucmtr sample --out recordings --archive 20</translation>
    </message>
    <message>
        <source>%1, recordings: %2</source>
        <translation>%1, осциллограмм: %2</translation>
    </message>
</context>
<context>
    <name>service</name>
    <message>
        <source>the recorder&apos;s process was ended by signal %1</source>
        <translation>процесс регистратора завершён сигналом %1</translation>
    </message>
    <message>
        <source>the recorder&apos;s process has ended with exit code %1</source>
        <translation>процесс регистратора завершился с кодом %1</translation>
    </message>
    <message>
        <source>--status: &apos;%1&apos; cannot be written: %2</source>
        <translation>--status: «%1» не записывается: %2</translation>
    </message>
</context>
<context>
    <name>sources</name>
    <message>
        <source>&apos;%1&apos; could not be written to the disk: %2; the recording is kept; check the disk, then convert again</source>
        <translation>«%1» не удалось записать на диск: %2; осциллограмма сохранена; проверьте диск и преобразуйте снова</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be deleted: %2; delete it yourself, its record is verified</source>
        <translation>«%1» не удалось удалить: %2; удалите сами, запись проверена</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be moved to &apos;%2&apos;: %3; it is where it was</source>
        <translation>«%1» не удалось перенести в «%2»: %3; файл остался на месте</translation>
    </message>
    <message>
        <source>the copy of &apos;%1&apos; in the archive is not the same; check the archive&apos;s disk</source>
        <translation>копия «%1» в архиве отличается; проверьте диск архива</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is already in the archive; give another --archive</source>
        <translation>«%1» уже лежит в архиве; укажите другой --archive</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not archived: a different file &apos;%2&apos; is there; move one of them away</source>
        <translation>«%1» не архивирован: там другой файл «%2»; уберите один из них</translation>
    </message>
    <message>
        <source>the directory &apos;%1&apos; cannot be made: %2; the recording is where it was</source>
        <translation>каталог «%1» не создаётся: %2; осциллограмма осталась на месте</translation>
    </message>
    <message>
        <source>another program is writing &apos;%1&apos;; the recording is where it was</source>
        <translation>другая программа записывает «%1»; осциллограмма осталась на месте</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is locked by another program</source>
        <translation>«%1» заблокирован другой программой</translation>
    </message>
    <message>
        <source>&apos;%1&apos; came after the recording was read</source>
        <translation>«%1» появился после чтения осциллограммы</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is gone since it was read</source>
        <translation>«%1» исчез после чтения</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be put away: the name is too long; give it a shorter one</source>
        <translation>«%1» не удалось убрать: слишком длинное имя; дайте файлу имя короче</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be put away: %2; it is where it was; give this user the permission to change its directory, or put it away yourself, its record is verified</source>
        <translation>«%1» не удалось убрать: %2; файл остался на месте; разрешите этому пользователю изменять каталог или уберите файл сами, запись проверена</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is still open for writing in another program</source>
        <translation>«%1» ещё открыт на запись в другой программе</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is another file than the one that was read</source>
        <translation>«%1» — уже не тот файл, который был прочитан</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be checked again: %2</source>
        <translation>«%1» не удалось проверить повторно: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; changed after it was read</source>
        <translation>«%1» изменился после чтения</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not there</source>
        <translation>файла «%1» нет</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has the name of a recording, but is not a file; move it away, then convert again</source>
        <translation>у «%1» имя осциллограммы, но это не файл; уберите его и преобразуйте снова</translation>
    </message>
    <message>
        <source>&apos;%1&apos; changed while it was read; convert again when it is complete</source>
        <translation>«%1» изменился во время чтения; преобразуйте снова, когда файл будет готов</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be read: %2; convert fewer recordings at once (--jobs)</source>
        <translation>«%1» не удалось прочитать: %2; преобразуйте меньше осциллограмм одновременно (--jobs)</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be read: %2; check the disk or the network, then convert again</source>
        <translation>«%1» не удалось прочитать: %2; проверьте диск или сеть и преобразуйте снова</translation>
    </message>
    <message>
        <source>%1; the recording is kept, convert it again</source>
        <translation>%1; осциллограмма сохранена, преобразуйте её снова</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is there, but not the file before it</source>
        <translation>«%1» есть, а предыдущего файла нет</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is now called &apos;%2&apos; and could not get its name back: %3; rename it</source>
        <translation>«%1» теперь называется «%2», вернуть имя не удалось: %3; переименуйте файл</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is now called &apos;%2&apos;, because another file has taken its name</source>
        <translation>«%1» теперь называется «%2», так как его имя занял другой файл</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be read: no permission; let this user read it, then convert again</source>
        <translation>«%1» не удалось прочитать: нет прав; разрешите этому пользователю чтение и преобразуйте снова</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is now called &apos;%2&apos;, as its continuations could not get their names back</source>
        <translation>«%1» теперь называется «%2»: его продолжениям не удалось вернуть имена</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in the archive as &apos;%2&apos;, but could not be written to the disk: %3; check the archive&apos;s disk</source>
        <translation>«%1» лежит в архиве как «%2», но на диск не записан: %3; проверьте диск архива</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is there and was not made by this program; move it away</source>
        <translation>«%1» уже есть в архиве, и создала его не эта программа; уберите этот файл</translation>
    </message>
</context>
<context>
    <name>sql</name>
    <message>
        <source>Qt&apos;s driver for PostgreSQL is missing; install the package %1</source>
        <translation>нет драйвера Qt для PostgreSQL; установите пакет %1</translation>
    </message>
    <message>
        <source>the server lets nobody write; it may be the copy of another (%1)</source>
        <translation>сервер не принимает записей; возможно, это реплика (%1)</translation>
    </message>
    <message>
        <source>the server&apos;s disk is full (%1)</source>
        <translation>на диске сервера нет места (%1)</translation>
    </message>
    <message>
        <source>its encoding is %1; make a database with ENCODING &apos;UTF8&apos; TEMPLATE template0</source>
        <translation>её кодировка — %1; создайте базу данных с ENCODING &apos;UTF8&apos; TEMPLATE template0</translation>
    </message>
    <message>
        <source>the connection to the server is lost</source>
        <translation>соединение с сервером потеряно</translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation>это не обычный файл</translation>
    </message>
    <message>
        <source>part of it is in &apos;%1-wal&apos;, which can only be read where files can be written: copy both, or ask somebody who may write there to open it once</source>
        <translation>часть данных находится в «%1-wal» и читается только там, где можно записывать файлы: скопируйте оба файла или попросите того, у кого есть право записи, один раз открыть базу</translation>
    </message>
    <message>
        <source>user &apos;%1&apos; may not enter the directory &apos;%2&apos;; its owner &apos;%3&apos; can permit that, as by a group and chmod g+x</source>
        <translation>у пользователя «%1» нет права входа в каталог «%2»; его может дать владелец «%3», например через группу и chmod g+x</translation>
    </message>
    <message>
        <source>user &apos;%1&apos; may not read the file &apos;%2&apos;; its owner &apos;%3&apos; can permit that, as by a group and chmod g+r</source>
        <translation>у пользователя «%1» нет права чтения файла «%2»; его может дать владелец «%3», например через группу и chmod g+r</translation>
    </message>
    <message>
        <source>user &apos;%1&apos; may not write to the file &apos;%2&apos;; its owner &apos;%3&apos; can permit that, as by a group and chmod g+w</source>
        <translation>у пользователя «%1» нет права записи в файл «%2»; его может дать владелец «%3», например через группу и chmod g+w</translation>
    </message>
    <message>
        <source>user &apos;%1&apos; may not make files in the directory &apos;%2&apos;, where the database needs some beside it; its owner &apos;%3&apos; can permit that, as by a group and chmod g+wx</source>
        <translation>у пользователя «%1» нет права создавать файлы в каталоге «%2», а базе данных нужны файлы рядом с ней; его может дать владелец «%3», например через группу и chmod g+wx</translation>
    </message>
    <message>
        <source>the role &apos;%1&apos; lacks a permission on the server (%2); the owner of the tables or the server&apos;s administrator can give it with GRANT, or name another role in the address</source>
        <translation>у роли «%1» нет прав на сервере (%2); их даёт командой GRANT владелец таблиц или администратор сервера; можно также указать в адресе другую роль</translation>
    </message>
</context>
<context>
    <name>staging</name>
    <message>
        <source>no directory for new records can be made in &apos;%1&apos;: %2</source>
        <translation>в «%1» не удалось создать каталог для новых записей: %2</translation>
    </message>
    <message>
        <source>the record&apos;s file &apos;%1&apos; was not written: %2</source>
        <translation>файл записи «%1» не был создан: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a directory; the record needs the name, move it away</source>
        <translation>«%1» — каталог, а имя нужно записи; переместите его</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be removed: %2</source>
        <translation>«%1» не удалось удалить: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be put in place: %2</source>
        <translation>«%1» не удалось поставить на место: %2</translation>
    </message>
    <message>
        <source>; what was there before could not be put back, convert the recording again</source>
        <translation>; прежние файлы не удалось вернуть на место, преобразуйте осциллограмму снова</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a device or a pipe; the record needs the name, move it away</source>
        <translation>«%1» — устройство или канал; имя нужно записи, уберите его</translation>
    </message>
    <message>
        <source>another zucmtr holds the directory &apos;%1&apos;, where it puts a record in place; convert again when it has ended</source>
        <translation>каталог «%1» удерживает другой процесс zucmtr, который помещает туда запись; повторите преобразование, когда он завершится</translation>
    </message>
    <message>
        <source>the record cannot be called &apos;%1&apos;: %2</source>
        <translation>запись нельзя назвать «%1»: %2</translation>
    </message>
</context>
<context>
    <name>summary</name>
    <message>
        <source>start</source>
        <translation>пуск</translation>
    </message>
    <message>
        <source>trip</source>
        <translation>отключение</translation>
    </message>
    <message>
        <source>breaker</source>
        <translation>выключатель</translation>
    </message>
    <message>
        <source>reclosing</source>
        <translation>АПВ</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>включён</translation>
    </message>
    <message>
        <source>open</source>
        <translation>отключён</translation>
    </message>
    <message>
        <source>(pulse, %1 changes)</source>
        <translation>(импульс, переключений: %1)</translation>
    </message>
    <message>
        <source>(bounce, %1 changes)</source>
        <translation>(дребезг, переключений: %1)</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>From trigger, s</source>
        <translation>От пуска, с</translation>
    </message>
    <message>
        <source>Since previous, s</source>
        <translation>От предыдущего, с</translation>
    </message>
    <message>
        <source>Circuit</source>
        <translation>Присоединение</translation>
    </message>
    <message>
        <source>Signal</source>
        <translation>Сигнал</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Вид</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Состояние</translation>
    </message>
    <message>
        <source>.</source>
        <translation>,</translation>
    </message>
    <message>
        <source>further changes, not listed: %1</source>
        <translation>остальные переключения, не показаны: %1</translation>
    </message>
    <message>
        <source>A to earth</source>
        <translation>А-земля</translation>
    </message>
    <message>
        <source>B to earth</source>
        <translation>В-земля</translation>
    </message>
    <message>
        <source>C to earth</source>
        <translation>С-земля</translation>
    </message>
    <message>
        <source>A-B</source>
        <translation>А-В</translation>
    </message>
    <message>
        <source>B-C</source>
        <translation>В-С</translation>
    </message>
    <message>
        <source>C-A</source>
        <translation>С-А</translation>
    </message>
    <message>
        <source>A-B to earth</source>
        <translation>А-В-земля</translation>
    </message>
    <message>
        <source>B-C to earth</source>
        <translation>В-С-земля</translation>
    </message>
    <message>
        <source>C-A to earth</source>
        <translation>С-А-земля</translation>
    </message>
    <message>
        <source>A-B-C</source>
        <translation>А-В-С</translation>
    </message>
    <message>
        <source>A-B-C to earth</source>
        <translation>А-В-С-земля</translation>
    </message>
    <message>
        <source>reactance method</source>
        <translation>метод реактанса</translation>
    </message>
    <message>
        <source>Takagi method</source>
        <translation>метод Такаги</translation>
    </message>
    <message>
        <source>modified Takagi method</source>
        <translation>уточнённый метод Такаги</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 мс</translation>
    </message>
    <message>
        <source>Short circuit %1 at %2</source>
        <translation>Короткое замыкание %1 в %2</translation>
    </message>
    <message>
        <source>Short circuit %1 on %2 at %3</source>
        <translation>Короткое замыкание %1 на %2 в %3</translation>
    </message>
    <message>
        <source>%1; cleared after %2.</source>
        <translation>%1; отключено через %2.</translation>
    </message>
    <message>
        <source>%1; it lasts to the end of the record.</source>
        <translation>%1; продолжается до конца записи.</translation>
    </message>
    <message>
        <source>After %1 it became %2.</source>
        <translation>Через %1 перешло в %2.</translation>
    </message>
    <message>
        <source>Short circuit %1 again at %2, for %3.</source>
        <translation>Повторное короткое замыкание %1 в %2, длительность %3.</translation>
    </message>
    <message>
        <source>Short circuit %1 again at %2, to the end of the record.</source>
        <translation>Повторное короткое замыкание %1 в %2, до конца записи.</translation>
    </message>
    <message>
        <source>It is ahead, in the direction of the circuit.</source>
        <translation>Направление: в сторону присоединения.</translation>
    </message>
    <message>
        <source>It is behind the recorder, not on this circuit.</source>
        <translation>Направление: «за спиной», не на этом присоединении.</translation>
    </message>
    <message>
        <source>No distance: there is no lines.ini with the data of the line.</source>
        <translation>Расстояние не определено: нет файла lines.ini с параметрами линии.</translation>
    </message>
    <message>
        <source>No distance: &apos;%1&apos; has no data of the line [%2].</source>
        <translation>Расстояние не определено: в «%1» нет параметров линии [%2].</translation>
    </message>
    <message>
        <source>No distance: the record has no voltages of this circuit; &apos;voltages&apos; in lines.ini names the circuit whose voltages serve it.</source>
        <translation>Расстояние не определено: в записи нет напряжений этого присоединения; ключ voltages в lines.ini называет присоединение, напряжения которого к нему относятся.</translation>
    </message>
    <message>
        <source>No distance: the fault is too short for it.</source>
        <translation>Расстояние не определено: замыкание слишком короткое.</translation>
    </message>
    <message>
        <source>between %1 and %2 %</source>
        <translation>от %1 до %2 %</translation>
    </message>
    <message>
        <source>Distance %1.</source>
        <translation>Расстояние %1.</translation>
    </message>
    <message>
        <source>%1 % (%2 km)</source>
        <translation>%1 % (%2 км)</translation>
    </message>
    <message>
        <source>fault resistance %1 ohm</source>
        <translation>Rп %1 Ом</translation>
    </message>
    <message>
        <source>Distance %1 (%2).</source>
        <translation>Расстояние %1 (%2).</translation>
    </message>
    <message>
        <source>start of the protection %1</source>
        <translation>пуск защиты %1</translation>
    </message>
    <message>
        <source>trip %1</source>
        <translation>команда отключения %1</translation>
    </message>
    <message>
        <source>breaker open %1</source>
        <translation>выключатель отключён %1</translation>
    </message>
    <message>
        <source>From the onset: %1.</source>
        <translation>От начала КЗ: %1.</translation>
    </message>
    <message>
        <source>From the start of the protection: %1.</source>
        <translation>От пуска защиты: %1.</translation>
    </message>
    <message>
        <source>Closed again after %1, with success.</source>
        <translation>Повторное включение через %1, успешное.</translation>
    </message>
    <message>
        <source>Closed again after %1, without success.</source>
        <translation>Повторное включение через %1, неуспешное.</translation>
    </message>
    <message>
        <source>No short circuit was found.</source>
        <translation>Короткое замыкание не обнаружено.</translation>
    </message>
    <message>
        <source>The record has no circuit with the currents of three phases, so that no short circuit can be found in it.</source>
        <translation>В записи нет присоединения с токами трёх фаз, поэтому короткое замыкание обнаружить нельзя.</translation>
    </message>
    <message>
        <source>No discrete signal changes.</source>
        <translation>Дискретные сигналы не изменялись.</translation>
    </message>
    <message>
        <source>The trigger time is outside the record&apos;s samples.</source>
        <translation>Момент пуска лежит вне отсчётов записи.</translation>
    </message>
    <message>
        <source>Only %1 of %2 samples, around the trigger, were looked at.</source>
        <translation>Рассмотрены только отсчёты вокруг момента пуска: %1 из %2.</translation>
    </message>
</context>
<context>
    <name>system</name>
    <message>
        <source>Permission denied</source>
        <translation>нет прав доступа</translation>
    </message>
    <message>
        <source>Operation not permitted</source>
        <translation>действие не разрешено</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>нет такого файла или каталога</translation>
    </message>
    <message>
        <source>File exists</source>
        <translation>файл уже есть</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>это каталог</translation>
    </message>
    <message>
        <source>Not a directory</source>
        <translation>это не каталог</translation>
    </message>
    <message>
        <source>Directory not empty</source>
        <translation>каталог не пуст</translation>
    </message>
    <message>
        <source>File name too long</source>
        <translation>слишком длинное имя файла</translation>
    </message>
    <message>
        <source>Too many levels of symbolic links</source>
        <translation>слишком длинная цепочка ссылок</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>на диске нет места</translation>
    </message>
    <message>
        <source>Disk quota exceeded</source>
        <translation>превышена квота на диске</translation>
    </message>
    <message>
        <source>File too large</source>
        <translation>слишком большой файл</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>файловая система только для чтения</translation>
    </message>
    <message>
        <source>Input/output error</source>
        <translation>ошибка ввода-вывода</translation>
    </message>
    <message>
        <source>Invalid cross-device link</source>
        <translation>перенос между файловыми системами невозможен</translation>
    </message>
    <message>
        <source>Device or resource busy</source>
        <translation>устройство или файл занят</translation>
    </message>
    <message>
        <source>Text file busy</source>
        <translation>программа выполняется, файл занят</translation>
    </message>
    <message>
        <source>Broken pipe</source>
        <translation>канал закрыт</translation>
    </message>
    <message>
        <source>No such device or address</source>
        <translation>нет такого устройства или адреса</translation>
    </message>
    <message>
        <source>No such device</source>
        <translation>нет такого устройства</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>открыто слишком много файлов</translation>
    </message>
    <message>
        <source>Cannot allocate memory</source>
        <translation>не хватает памяти</translation>
    </message>
    <message>
        <source>Stale file handle</source>
        <translation>файл исчез с сетевого диска</translation>
    </message>
    <message>
        <source>Invalid argument</source>
        <translation>недопустимый аргумент</translation>
    </message>
    <message>
        <source>the system gives no reason</source>
        <translation>система не сообщает причину</translation>
    </message>
    <message>
        <source>Too many open files in system</source>
        <translation>слишком много открытых файлов в системе</translation>
    </message>
    <message>
        <source>Connection timed out</source>
        <translation>время ожидания ответа истекло</translation>
    </message>
    <message>
        <source>Remote I/O error</source>
        <translation>ошибка ввода-вывода на удалённой стороне</translation>
    </message>
    <message>
        <source>Transport endpoint is not connected</source>
        <translation>соединение с файловой системой потеряно</translation>
    </message>
    <message>
        <source>Resource temporarily unavailable</source>
        <translation>ресурс временно недоступен</translation>
    </message>
    <message>
        <source>Operation not supported</source>
        <translation>операция не поддерживается</translation>
    </message>
    <message>
        <source>no room left on the disk of %1</source>
        <translation>на диске каталога %1 нет места</translation>
    </message>
    <message>
        <source>another program is at work with it</source>
        <translation>с ним сейчас работает другая программа</translation>
    </message>
</context>
<context>
    <name>validate</name>
    <message>
        <source>there is no section &apos;%1&apos;; the sections are CFG, INF, HDR and DAT</source>
        <translation>раздела «%1» нет в стандарте; есть разделы CFG, INF, HDR и DAT</translation>
    </message>
    <message>
        <source>section %1 follows %2; the order is CFG, INF, HDR, DAT</source>
        <translation>раздел %1 стоит после %2; порядок разделов: CFG, INF, HDR, DAT</translation>
    </message>
    <message>
        <source>the mark is &apos;%1&apos;, but the configuration says %2 data; it should be &apos;%3&apos;</source>
        <translation>заголовок раздела — «%1», а по конфигурации данные имеют тип %2; должно быть «%3»</translation>
    </message>
    <message>
        <source>%1 has %2 characters, the standard allows %3: some readers cut it off or refuse the record; shorten it</source>
        <translation>в поле %1 %2 симв., стандарт допускает %3: одни программы обрежут его, другие не прочтут запись; сократите</translation>
    </message>
    <message>
        <source>%1, the unit, is empty, and the standard requires it; write NONE if there is no unit</source>
        <translation>единица измерения %1 не указана, а стандарт её требует; если единицы нет, пишите NONE</translation>
    </message>
    <message>
        <source>there is no channel; a record has at least one</source>
        <translation>нет ни одного канала; в записи должен быть хотя бы один</translation>
    </message>
    <message>
        <source>the multiplier a is 0, so that all values of the channel are b; give the value of one unit of the data</source>
        <translation>множитель a равен 0, поэтому все значения канала равны b; укажите цену единицы кода</translation>
    </message>
    <message>
        <source>%1 is %2, which %3 data cannot hold: they go from %4 to %5</source>
        <translation>%1 = %2, но данные типа %3 лежат в пределах от %4 до %5</translation>
    </message>
    <message>
        <source>%1 is %2; the ratio of the transformer needs a number above 0 (1 if there is no transformer), or primary and secondary values cannot be converted</source>
        <translation>%1 = %2; для коэффициента трансформации нужно число больше 0 (1, если трансформатора нет), иначе первичные и вторичные значения не пересчитать</translation>
    </message>
    <message>
        <source>the skew is %1 microseconds, more than the %2 from one sample to the next</source>
        <translation>сдвиг времени %1 мкс больше интервала между отсчётами, %2 мкс</translation>
    </message>
    <message>
        <source>the sample has number %1, not %2; the numbers count from 1, one by one (samples out of step: %3)</source>
        <translation>номер отсчёта %1, а не %2; отсчёты нумеруются подряд с 1 (отсчётов с нарушением: %3)</translation>
    </message>
    <message>
        <source>the time of the sample is %1, that of the one before is %2; times go up (samples that do not follow: %3)</source>
        <translation>метка времени отсчёта %1, у предыдущего %2; метки должны возрастать (отсчётов с нарушением: %3)</translation>
    </message>
    <message>
        <source>the sample has no time, and the configuration no rate for it, so that nobody knows when it was (samples without a time: %1)</source>
        <translation>у отсчёта нет метки времени, а в конфигурации нет частоты дискретизации, поэтому его момент неизвестен (отсчётов без метки: %1)</translation>
    </message>
    <message>
        <source>the sample is %1 s after the first one of its rate by its time, and %3 s by the rate of %2 per second; readers use one or the other (samples that disagree: %4)</source>
        <translation>по метке времени отсчёт отстоит от первого с той же частотой на %1 с, а по частоте %2 отсчётов в секунду — на %3 с; программы берут то или другое (отсчётов с расхождением: %4)</translation>
    </message>
    <message>
        <source>analog channel %1 has the value %2, its limits are %3 and %4; some readers cut off what is beyond, or scale by the limits (samples beyond them: %5)</source>
        <translation>в аналоговом канале %1 значение %2 вне пределов %3 и %4; одни программы обрежут его, другие выбирают по пределам масштаб (отсчётов вне пределов: %5)</translation>
    </message>
    <message>
        <source>analog channel %1 has the value %2; ASCII data before revision 2013 are integers (samples that are not: %3)</source>
        <translation>в аналоговом канале %1 значение %2; до редакции 2013 данные ASCII — целые числа (дробных отсчётов: %3)</translation>
    </message>
    <message>
        <source>the text has letters beyond ASCII; before revision 2013 there are none, and each reader guesses the encoding; read as %1</source>
        <translation>в тексте есть буквы вне ASCII; до редакции 2013 их нет, и каждая программа угадывает кодировку сама; прочитано как %1</translation>
    </message>
    <message>
        <source>the text is not UTF-8, the encoding of revision 2013, and not every reader guesses another one; read as %1</source>
        <translation>текст не в UTF-8, кодировке редакции 2013, а другую угадает не каждая программа; прочитано как %1</translation>
    </message>
    <message>
        <source>the line has the control character %1; a text has none but line ends</source>
        <translation>в строке управляющий символ %1; в тексте допустимы только концы строк</translation>
    </message>
    <message>
        <source>lines should end with CR LF, this one does not</source>
        <translation>строки должны заканчиваться символами CR LF, а эта заканчивается иначе</translation>
    </message>
    <message>
        <source>the header holds bytes that no text has; it should be a text for people</source>
        <translation>в файле заголовка есть байты, которых не бывает в тексте; это должен быть текст для чтения человеком</translation>
    </message>
    <message>
        <source>the line comes before the first section, so that it belongs to none</source>
        <translation>строка стоит до первой секции и не относится ни к одной</translation>
    </message>
    <message>
        <source>the line is neither a section in brackets nor &apos;name=value&apos;; comments start with &apos;;&apos;</source>
        <translation>строка — ни секция в квадратных скобках, ни «имя=значение»; комментарии начинаются с «;»</translation>
    </message>
    <message>
        <source>the heading of a section ends with &apos;]&apos;</source>
        <translation>заголовок секции должен заканчиваться скобкой «]»</translation>
    </message>
    <message>
        <source>section [%1] is in line %2 already; readers take one of them</source>
        <translation>секция [%1] уже есть в строке %2; программы возьмут одну из них</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in line %2 of this section already; readers take one of them</source>
        <translation>«%1» уже есть в этой секции, в строке %2; программы возьмут одно из двух</translation>
    </message>
    <message>
        <source>%1 is &apos;%2&apos;, but the configuration says &apos;%3&apos;; they must be the same</source>
        <translation>%1 — «%2», а в конфигурации «%3»; они должны совпадать</translation>
    </message>
    <message>
        <source>the section is about channel %1 of %2 in the configuration</source>
        <translation>секция описывает канал %1, а в конфигурации каналов этого вида %2</translation>
    </message>
    <message>
        <source>the frequency of the network is %1 Hz; 50 and 60 are usual</source>
        <translation>частота сети %1 Гц; обычно она 50 или 60</translation>
    </message>
    <message>
        <source>there are %1 rates; the standard allows 999</source>
        <translation>частот дискретизации %1; стандарт допускает 999</translation>
    </message>
    <message>
        <source>the rate ends with sample %1, as the one before does, so that no sample has it; take it out</source>
        <translation>частота заканчивается отсчётом %1, как и предыдущая, так что с ней нет ни одного отсчёта; уберите её</translation>
    </message>
    <message>
        <source>the last sample is 0: the record has none</source>
        <translation>номер последнего отсчёта 0: в записи нет отсчётов</translation>
    </message>
    <message>
        <source>the times of the samples go to %1, and their field ends with %2; use a larger time multiplier</source>
        <translation>метки времени доходят до %1, а поле вмещает %2; увеличьте множитель времени</translation>
    </message>
    <message>
        <source>the year is %1; the standard allows 1900 to 9999</source>
        <translation>год %1; стандарт допускает годы с 1900 по 9999</translation>
    </message>
    <message>
        <source>the seconds have %1 digits after the point; the standard has 6, and 9 for nanoseconds in revision 2013</source>
        <translation>у секунд %1 цифр после точки; по стандарту их 6, а для наносекунд в редакции 2013 — 9</translation>
    </message>
    <message>
        <source>the trigger is %1 s before the first sample; readers that look for it among the samples find none</source>
        <translation>пуск на %1 с раньше первого отсчёта; программы, которые ищут его среди отсчётов, его не найдут</translation>
    </message>
    <message>
        <source>the trigger is %1 s after the first sample, and the record has %2 s</source>
        <translation>пуск через %1 с после первого отсчёта, а длительность записи %2 с</translation>
    </message>
    <message>
        <source>%1 data came with revision 2013, this is revision %2; older readers refuse them</source>
        <translation>данные типа %1 появились в редакции 2013, здесь редакция %2; программы, рассчитанные на неё, их не прочтут</translation>
    </message>
    <message>
        <source>&apos;%1&apos; should be the difference from UTC, as +3, -7h15 or 0, or x where it is not known</source>
        <translation>«%1» — здесь должна быть разница с UTC, например +3, -7h15 или 0, либо x, если она неизвестна</translation>
    </message>
    <message>
        <source>the quality of the time is &apos;%1&apos;; it is 0 to 9, A, B or F</source>
        <translation>качество времени — «%1»; возможны 0–9, A, B и F</translation>
    </message>
    <message>
        <source>the leap second is &apos;%1&apos;; it is 0, 1, 2 or 3</source>
        <translation>признак високосной секунды — «%1»; возможны 0, 1, 2 и 3</translation>
    </message>
    <message>
        <source>the record cannot be read: %1</source>
        <translation>запись не читается: %1</translation>
    </message>
    <message>
        <source>the data cannot be read to their end: %1</source>
        <translation>данные не читаются до конца: %1</translation>
    </message>
    <message>
        <source>%1 (and %2 more of this kind in the file)</source>
        <translation>%1 (и ещё таких в файле: %2)</translation>
    </message>
    <message>
        <source>%1: nothing is wrong</source>
        <translation>%1: ошибок нет</translation>
    </message>
    <message>
        <source>notes: %1</source>
        <translation>примечаний: %1</translation>
    </message>
    <message>
        <source>%1: nothing is wrong; %2</source>
        <translation>%1: ошибок нет; %2</translation>
    </message>
    <message>
        <source>errors: %1</source>
        <translation>ошибок: %1</translation>
    </message>
    <message>
        <source>warnings: %1</source>
        <translation>предупреждений: %1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Check whether COMTRADE records keep to the standard</source>
        <translation>Проверить, соответствуют ли записи COMTRADE стандарту</translation>
    </message>
    <message>
        <source>One JSON object per finding, for programs</source>
        <translation>По одному объекту JSON на замечание, для программ</translation>
    </message>
    <message>
        <source>The .cfg or .cff files of records; the files beside them are checked too</source>
        <translation>Файлы .cfg или .cff записей; файлы рядом с ними тоже проверяются</translation>
    </message>
    <message>
        <source>a container (.cff) came with revision 2013, this is revision %1; older readers do not know it</source>
        <translation>единый файл (.cff) появился в редакции 2013, здесь редакция %1; программы, рассчитанные на неё, такого файла не знают</translation>
    </message>
    <message>
        <source>%1 is empty; revision 2013 requires at least one character</source>
        <translation>поле %1 пусто; в редакции 2013 нужен хотя бы один символ</translation>
    </message>
    <message>
        <source>the channel has number %1, and is number %2 of its kind; channels are numbered from 1 in the order of their lines</source>
        <translation>номер канала %1, а по порядку среди каналов своего вида он %2-й; каналы нумеруются с 1 в порядке строк</translation>
    </message>
    <message>
        <source>the standard has no public section [%1]; the headings of other sections start with another word than Public</source>
        <translation>открытой секции [%1] в стандарте нет; заголовки прочих секций начинаются не со слова Public</translation>
    </message>
    <message>
        <source>there is no section [Public %1], which the standard requires</source>
        <translation>нет секции [Public %1], которой требует стандарт</translation>
    </message>
    <message>
        <source>the number of rates is 0, but the rate is %1; without a constant rate both are 0</source>
        <translation>число частот дискретизации 0, а частота %1; без постоянной частоты оба числа равны 0</translation>
    </message>
    <message>
        <source>the rate is 0, but the number of rates is %1; without a constant rate both are 0</source>
        <translation>частота дискретизации 0, а число частот %1; без постоянной частоты оба числа равны 0</translation>
    </message>
    <message>
        <source>the seconds have %1 digits after the point, those of the start have %2; the digits give the unit of the times of the samples, so give both as many</source>
        <translation>у секунд %1 цифр после точки, а у времени начала %2; по их числу определяется единица меток времени, поэтому оно должно быть одинаковым</translation>
    </message>
    <message>
        <source>Compares the configuration, data, header and information file of a record, or the one file that holds them
all, with the rules of IEEE C37.111, revisions 1991, 1999 and 2013. An error makes readers fail or show what
is not there; a warning is something that not every reader understands, or not what it looks like; a note is
worth knowing.

Exit code: 0 nothing but notes, 1 errors or warnings, 2 wrong usage.

Example, with the sample station:
  zucmtr sample --out station
  zucmtr convert --out comtrade --make-out station
  zucmtr validate comtrade/*.cfg</source>
        <translation>Сверяет файлы конфигурации, данных, заголовка и информации записи, или единый файл с ними, с правилами
IEEE C37.111 редакций 1991, 1999 и 2013. Из-за ошибки программы не читают запись или показывают то, чего нет;
предупреждение — то, что понимает не каждая программа или что не является тем, чем кажется; примечание полезно знать.

Код завершения: 0 — нет ничего, кроме примечаний, 1 — ошибки или предупреждения, 2 — неверный вызов.

Пример, с образцом подстанции:
  zucmtr sample --out station
  zucmtr convert --out comtrade --make-out station
  zucmtr validate comtrade/*.cfg</translation>
    </message>
    <message>
        <source>the text starts with a byte order mark, which some readers take for a part of it; write it without</source>
        <translation>текст начинается с метки порядка байтов (BOM), которую некоторые программы принимают за его часть; пишите без неё</translation>
    </message>
</context>
<context>
    <name>values</name>
    <message>
        <source>&apos;%1&apos; is wrong; give a whole number from %2 to %3</source>
        <translation>«%1» не годится; дайте целое число от %2 до %3</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is wrong; give a number from %2 to %3</source>
        <translation>«%1» не годится; дайте число от %2 до %3</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is wrong; give a number above 0 and below %2</source>
        <translation>«%1» не годится; дайте число больше 0 и меньше %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is wrong; give one of %2</source>
        <translation>«%1» не годится; дайте одно из: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is wrong; give a size as 800M or 2G, or 0 for no limit</source>
        <translation>«%1» не годится; дайте размер, как 800M или 2G, или 0 — без предела</translation>
    </message>
    <message>
        <source>the value is empty; give one, or leave the option out</source>
        <translation>пустое значение; укажите его или уберите ключ</translation>
    </message>
    <message>
        <source>the path is empty; give one</source>
        <translation>пустой путь; укажите его</translation>
    </message>
    <message>
        <source>there is no encoding &apos;%1&apos;; give a name such as UTF-8, CP1251, CP866, KOI8-R, GBK or Latin-1</source>
        <translation>нет кодировки &apos;%1&apos;; укажите имя, например UTF-8, CP1251, CP866, KOI8-R, GBK или Latin-1</translation>
    </message>
</context>
<context>
    <name>verify</name>
    <message>
        <source>the channel &apos;%1&apos; has a comma or a line end in its name, its unit or its bay, so that no program can read the record&apos;s configuration; rename it in the recorder, or in the ini file if it is a bay&apos;s text</source>
        <translation>у канала «%1» запятая или конец строки в имени, единице или присоединении, поэтому конфигурацию записи не прочтёт ни одна программа; переименуйте его в регистраторе или в ini-файле, если это текст присоединения</translation>
    </message>
    <message>
        <source>%1: line %2 has %3 fields in place of %4</source>
        <translation>%1: в строке %2 полей %3 вместо %4</translation>
    </message>
    <message>
        <source>&apos;%1&apos; goes on after line %2, which should be its last</source>
        <translation>«%1» продолжается за строкой %2, которая должна быть последней</translation>
    </message>
    <message>
        <source>&apos;%1&apos; ends within line %2 or before it; free the disk, then convert again</source>
        <translation>«%1» кончается в строке %2 или до неё; освободите диск и преобразуйте снова</translation>
    </message>
    <message>
        <source>the ini file&apos;s object &apos;%1&apos; or source &apos;%2&apos; holds a comma, so that no program can read the record&apos;s configuration; take it out</source>
        <translation>в объекте «%1» или источнике «%2» ini-файла запятая, поэтому конфигурацию записи не прочтёт ни одна программа; уберите её</translation>
    </message>
    <message>
        <source>station</source>
        <translation>объект</translation>
    </message>
    <message>
        <source>recording device</source>
        <translation>регистратор</translation>
    </message>
    <message>
        <source>revision</source>
        <translation>редакция</translation>
    </message>
    <message>
        <source>number of channels</source>
        <translation>число каналов</translation>
    </message>
    <message>
        <source>number of analog channels</source>
        <translation>число аналоговых каналов</translation>
    </message>
    <message>
        <source>number of state channels</source>
        <translation>число дискретных каналов</translation>
    </message>
    <message>
        <source>analog channel %1 (%2)</source>
        <translation>аналоговый канал %1 (%2)</translation>
    </message>
    <message>
        <source>number</source>
        <translation>номер</translation>
    </message>
    <message>
        <source>name</source>
        <translation>наименование</translation>
    </message>
    <message>
        <source>phase</source>
        <translation>фаза</translation>
    </message>
    <message>
        <source>circuit</source>
        <translation>присоединение</translation>
    </message>
    <message>
        <source>unit</source>
        <translation>единица</translation>
    </message>
    <message>
        <source>multiplier a</source>
        <translation>множитель a</translation>
    </message>
    <message>
        <source>offset b</source>
        <translation>смещение b</translation>
    </message>
    <message>
        <source>skew</source>
        <translation>сдвиг</translation>
    </message>
    <message>
        <source>lowest code</source>
        <translation>наименьший код</translation>
    </message>
    <message>
        <source>highest code</source>
        <translation>наибольший код</translation>
    </message>
    <message>
        <source>primary value</source>
        <translation>первичное значение</translation>
    </message>
    <message>
        <source>secondary value</source>
        <translation>вторичное значение</translation>
    </message>
    <message>
        <source>primary or secondary</source>
        <translation>первичное или вторичное</translation>
    </message>
    <message>
        <source>state channel %1 (%2)</source>
        <translation>дискретный канал %1 (%2)</translation>
    </message>
    <message>
        <source>normal state</source>
        <translation>нормальное состояние</translation>
    </message>
    <message>
        <source>line frequency</source>
        <translation>частота сети</translation>
    </message>
    <message>
        <source>number of rates</source>
        <translation>число частот дискретизации</translation>
    </message>
    <message>
        <source>samples per second</source>
        <translation>отсчётов в секунду</translation>
    </message>
    <message>
        <source>number of the last sample</source>
        <translation>номер последнего отсчёта</translation>
    </message>
    <message>
        <source>date</source>
        <translation>дата</translation>
    </message>
    <message>
        <source>time of day</source>
        <translation>время суток</translation>
    </message>
    <message>
        <source>time code</source>
        <translation>код времени</translation>
    </message>
    <message>
        <source>local code</source>
        <translation>местный код</translation>
    </message>
    <message>
        <source>time quality</source>
        <translation>качество времени</translation>
    </message>
    <message>
        <source>leap second</source>
        <translation>секунда координации</translation>
    </message>
    <message>
        <source>first sample</source>
        <translation>первый отсчёт</translation>
    </message>
    <message>
        <source>trigger</source>
        <translation>пуск</translation>
    </message>
    <message>
        <source>form of the data</source>
        <translation>вид данных</translation>
    </message>
    <message>
        <source>time multiplier</source>
        <translation>множитель времени</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>&apos;%1&apos; ends after record %2 of %3; free the disk, then convert again</source>
        <translation>«%1» кончается после отсчёта %2 из %3; освободите диск и преобразуйте снова</translation>
    </message>
    <message>
        <source>&apos;%1&apos; goes on after record %2, with which the recording ends</source>
        <translation>«%1» продолжается за отсчётом %2, которым кончается осциллограмма</translation>
    </message>
    <message>
        <source>&apos;%1&apos;, record %2</source>
        <translation>«%1», отсчёт %2</translation>
    </message>
    <message>
        <source>, number</source>
        <translation>, номер</translation>
    </message>
    <message>
        <source>, time</source>
        <translation>, время</translation>
    </message>
    <message>
        <source>, analog channel %1 (%2)</source>
        <translation>, аналоговый канал %1 (%2)</translation>
    </message>
    <message>
        <source>, state channel %1 (%2)</source>
        <translation>, дискретный канал %1 (%2)</translation>
    </message>
    <message>
        <source>the sections [%1] and [%2] of &apos;%3&apos; do not load for the verification</source>
        <translation>секции [%1] и [%2] файла «%3» не загружаются для проверки</translation>
    </message>
    <message>
        <source>%1: the record says &apos;%2&apos;, the recording &apos;%3&apos;</source>
        <translation>%1: в записи «%2», в осциллограмме «%3»</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be read: %2</source>
        <translation>«%1» не читается: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is too large</source>
        <translation>«%1» слишком велик</translation>
    </message>
    <message>
        <source>&apos;%1&apos; does not end with a whole line; free the disk, then convert again</source>
        <translation>«%1» не кончается целой строкой; освободите диск и преобразуйте снова</translation>
    </message>
    <message>
        <source>&apos;%1&apos; does not have &apos;%2&apos; where it should</source>
        <translation>в «%1» нет «%2» на своём месте</translation>
    </message>
    <message>
        <source>&apos;%1&apos; ends before &apos;%2&apos;; free the disk, then convert again</source>
        <translation>«%1» кончается перед «%2»; освободите диск и преобразуйте снова</translation>
    </message>
    <message>
        <source>&apos;%1&apos;, mark of the data</source>
        <translation>«%1», метка данных</translation>
    </message>
    <message>
        <source>&apos;%1&apos;, line %2</source>
        <translation>«%1», строка %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has %2 records, but its configuration says %3</source>
        <translation>в «%1» отсчётов %2, а в конфигурации %3</translation>
    </message>
    <message>
        <source>the recording cannot be read: %1</source>
        <translation>осциллограмма не читается: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a file</source>
        <translation>«%1» — не файл</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a COMTRADE record</source>
        <translation>«%1» — не запись COMTRADE</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has other samples than the recording</source>
        <translation>в «%1» не те отсчёты, что в осциллограмме</translation>
    </message>
    <message>
        <source>the fault report is not whole</source>
        <translation>отчёт об аварии не полон</translation>
    </message>
    <message>
        <source>the INF file has no %1 in [%2]</source>
        <translation>в файле INF нет %1 в [%2]</translation>
    </message>
    <message>
        <source>the INF file has &apos;%1&apos; for %2 in [%3], the configuration &apos;%4&apos;</source>
        <translation>в файле INF «%1» для %2 в [%3], в конфигурации «%4»</translation>
    </message>
    <message>
        <source>the configuration numbers its channel %1 as %2</source>
        <translation>в конфигурации у канала %1 номер %2</translation>
    </message>
    <message>
        <source>the INF file has no section [%1]</source>
        <translation>в файле INF нет секции [%1]</translation>
    </message>
    <message>
        <source>the fault report has no line &apos;%1&apos; where it should</source>
        <translation>в отчёте об аварии нет строки «%1» на своём месте</translation>
    </message>
    <message>
        <source>the fault report has &apos;%1&apos; for &apos;%2&apos;, the record&apos;s other files &apos;%3&apos;</source>
        <translation>в отчёте об аварии «%1» для «%2», в других файлах записи «%3»</translation>
    </message>
    <message>
        <source>its INF file is missing</source>
        <translation>нет файла INF</translation>
    </message>
    <message>
        <source>its INF file is not that of this converter</source>
        <translation>файл INF не от этого преобразователя</translation>
    </message>
    <message>
        <source>its fault report (HDR) is missing</source>
        <translation>нет отчёта об аварии (HDR)</translation>
    </message>
    <message>
        <source>its HDR file is not the fault report of this converter</source>
        <translation>файл HDR — не отчёт об аварии этого преобразователя</translation>
    </message>
    <message>
        <source>analog and state channels</source>
        <translation>аналоговых и дискретных каналов</translation>
    </message>
    <message>
        <source>there are %1 samples, but the configuration says %2</source>
        <translation>отсчётов %1, а в конфигурации %2</translation>
    </message>
    <message>
        <source>there are samples after the last one, number %1</source>
        <translation>после последнего отсчёта, номер %1, есть ещё</translation>
    </message>
    <message>
        <source>sample %1 has the number %2</source>
        <translation>у отсчёта %1 номер %2</translation>
    </message>
    <message>
        <source>sample %1 has the time %2 µs, the recording %3 µs</source>
        <translation>у отсчёта %1 время %2 мкс, в осциллограмме %3 мкс</translation>
    </message>
    <message>
        <source>%1: no channel of the recording has its samples</source>
        <translation>%1: таких отсчётов нет ни в одном канале осциллограммы</translation>
    </message>
    <message>
        <source>%1: %2 of %3 values differ; sample %4 (%5 s) is %6 and should be %7</source>
        <translation>%1: различаются значения: %2 из %3; в отсчёте %4 (%5 с) %6, должно быть %7</translation>
    </message>
    <message>
        <source>%1: the record says &apos;%2&apos;, the ini file makes it &apos;%3&apos;</source>
        <translation>%1: в записи «%2», по ini-файлу «%3»</translation>
    </message>
    <message>
        <source>sample %1 has the number %2 in place of %3</source>
        <translation>у отсчёта %1 номер %2 вместо %3</translation>
    </message>
    <message>
        <source>sample %1 has the time %2; by the rates it should be %3</source>
        <translation>у отсчёта %1 время %2; по частоте дискретизации должно быть %3</translation>
    </message>
    <message>
        <source>analog channel %1 (%2) has values beyond its limits %3 and %4: %5, the first is %6 in sample %7</source>
        <translation>у аналогового канала %1 (%2) значения вне пределов %3 и %4: %5, первое — %6 в отсчёте %7</translation>
    </message>
    <message>
        <source>%1 bytes follow the data</source>
        <translation>после данных ещё %1 байт</translation>
    </message>
</context>
<context>
    <name>verify command</name>
    <message>
        <source>texts were not compared, as --plain is given</source>
        <translation>тексты не сравнивались, так как задан --plain</translation>
    </message>
    <message>
        <source>texts were not compared, as no ini file was found</source>
        <translation>тексты не сравнивались, так как ini-файл не найден</translation>
    </message>
    <message>
        <source>the channels are in another order than &apos;%1&apos; gives them</source>
        <translation>порядок каналов не тот, что даёт «%1»</translation>
    </message>
    <message>
        <source>the record has other settings than &apos;%1&apos; (%2)</source>
        <translation>запись сделана с другими параметрами, чем в «%1» (%2)</translation>
    </message>
    <message>
        <source>if the record was made with other settings than &apos;%1&apos;, --plain leaves its texts out</source>
        <translation>если запись сделана с другими параметрами, чем в «%1», --plain не сравнивает её тексты</translation>
    </message>
    <message>
        <source>there is no record (.cfg, .cff) in this directory</source>
        <translation>в этом каталоге нет записей (.cfg, .cff)</translation>
    </message>
    <message>
        <source>there is no record (.cfg, .cff) in this directory; --recursive searches the directories below it, too</source>
        <translation>в этом каталоге нет записей (.cfg, .cff); с --recursive просматриваются и вложенные</translation>
    </message>
    <message>
        <source>  and %1 more like these</source>
        <translation>  и ещё таких же: %1</translation>
    </message>
    <message>
        <source>%1 samples, %2 + %3 channels</source>
        <translation>отсчётов %1, каналов %2 + %3</translation>
    </message>
    <message>
        <source>wrong</source>
        <translation>ошибка</translation>
    </message>
    <message>
        <source>%1: good (%2)</source>
        <translation>%1: в порядке (%2)</translation>
    </message>
    <message>
        <source>samples %1 to %2 of %3</source>
        <translation>отсчёты с %1 по %2 из %3</translation>
    </message>
    <message>
        <source>, one in %1</source>
        <translation>, каждая %1-я</translation>
    </message>
    <message>
        <source>; %1 + %2 of %3 + %4 channels</source>
        <translation>; каналов %1 + %2 из %3 + %4</translation>
    </message>
    <message>
        <source>every byte compared, by &apos;%1&apos;</source>
        <translation>сравнён каждый байт, по «%1»</translation>
    </message>
    <message>
        <source>samples, states, times and names compared; %1</source>
        <translation>сравнены отсчёты, состояния, времена и наименования; %1</translation>
    </message>
    <message>
        <source>samples, states and times compared; %1</source>
        <translation>сравнены отсчёты, состояния и времена; %1</translation>
    </message>
    <message>
        <source>is not what %1 makes</source>
        <translation>не то, что даёт %1</translation>
    </message>
    <message>
        <source>%1: good, the record of %2 (%3); %4</source>
        <translation>%1: в порядке, запись осциллограммы %2 (%3); %4</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not the .cfg or .cff file of a record; give the record of a recording after it</source>
        <translation>«%1» — не файл .cfg или .cff записи; после осциллограммы укажите её запись</translation>
    </message>
    <message>
        <source>a recording is compared with one record: give the first file of the recording, then the .cfg or .cff file of the record</source>
        <translation>осциллограмма сравнивается с одной записью: укажите первый файл осциллограммы, затем файл .cfg или .cff записи</translation>
    </message>
    <message>
        <source>--ini, --defaults, --device and --plain are for a record and its recording; give the recording first, or leave them out</source>
        <translation>--ini, --defaults, --device и --plain — для записи и её осциллограммы; укажите сначала осциллограмму или уберите их</translation>
    </message>
    <message>
        <source>A record and its recording: with the recorder&apos;s ini file every byte is compared, as &apos;zucmtr convert&apos;
does it, in the form that the record has. Without one, and for records of &apos;zucmtr export&apos; or of other
settings, it is every sample, state and time; the line says what was compared. The record may have part
of the samples and channels only.
A record by itself: everything can be read, and samples, numbers, times, limits and the record&apos;s files
agree with each other. It is not held against the standard: see &apos;zucmtr validate&apos;.

Exit code: 0 all records are good, 1 something is wrong with at least one, 2 wrong usage.

Example, with the sample station:
  zucmtr sample --out station
  zucmtr convert --out station/comtrade --make-out station/*.ZU
  zucmtr verify station/comtrade
  zucmtr verify station/Vostochnaya_000123.ZU station/comtrade/*120000*.cfg</source>
        <translation>Запись и осциллограмма: с ini-файлом регистратора сравнивается каждый байт, как в «zucmtr convert», в том виде,
который у записи. Без него, а также для записей «zucmtr export» и сделанных с другими параметрами — каждый отсчёт,
состояние и время; в строке сказано, что сравнивалось. В записи может быть только часть отсчётов и каналов.
Запись сама по себе: всё читается, отсчёты, номера, времена, пределы и файлы записи согласуются между собой.
Соответствие стандарту не проверяется: для этого «zucmtr validate».

Код завершения: 0 все записи в порядке, 1 хотя бы с одной что-то не так, 2 неверный вызов.

Пример, с учебной станцией:
  zucmtr sample --out station
  zucmtr convert --out station/comtrade --make-out station/*.ZU
  zucmtr verify station/comtrade
  zucmtr verify station/Vostochnaya_000123.ZU station/comtrade/*120000*.cfg</translation>
    </message>
    <message>
        <source>Compare a record with its recording, or with itself</source>
        <translation>Сверить запись с осциллограммой или проверить её саму</translation>
    </message>
    <message>
        <source>Take no ini file: leave the texts out</source>
        <translation>Без ini-файла: не сравнивать тексты</translation>
    </message>
    <message>
        <source>The recorder&apos;s ini file. Default: ZuDrv.ini beside the recording or in the current directory, if there is one</source>
        <translation>Ini-файл регистратора. По умолчанию ZuDrv.ini рядом с осциллограммой или в текущем каталоге, если он есть</translation>
    </message>
    <message>
        <source>Section of the ini file for this recorder. Default: the only other section</source>
        <translation>Секция ini-файла для этого регистратора. По умолчанию единственная другая секция</translation>
    </message>
    <message>
        <source>Search for records in the directories below, too</source>
        <translation>Искать записи и во вложенных каталогах</translation>
    </message>
    <message>
        <source>Report only what is wrong</source>
        <translation>Сообщать только об ошибках</translation>
    </message>
    <message>
        <source>One JSON object per record, for programs</source>
        <translation>Объект JSON на каждую запись, для программ</translation>
    </message>
    <message>
        <source>The .cfg or .cff files of records, or directories with records; or the first file of a recording (.ZU) and its record</source>
        <translation>Файлы .cfg или .cff записей либо каталоги с записями; или первый файл осциллограммы (.ZU) и её запись</translation>
    </message>
    <message>
        <source>its bytes were not, as &apos;zucmtr convert&apos; did not write them</source>
        <translation>байты не сравнивались, так как запись сделана не «zucmtr convert»</translation>
    </message>
</context>
<context>
    <name>view</name>
    <message>
        <source>%1: the page holds %2 of %3 samples around the trigger; --window SECONDS chooses how many, --full takes all</source>
        <translation>%1: на странице отсчётов вокруг пуска %2 из %3; сколько их, выбирает --window SECONDS, --full берёт все</translation>
    </message>
    <message>
        <source>Write an overview as an SVG picture; without -o no page</source>
        <translation>Записать обзор рисунком SVG; без -o страницы нет</translation>
    </message>
    <message>
        <source>Write the overview as a PNG picture; likewise</source>
        <translation>Записать обзор рисунком PNG; так же</translation>
    </message>
    <message>
        <source>Hold this many seconds around the trigger, a third of them before it</source>
        <translation>Столько секунд вокруг пуска, треть из них до него</translation>
    </message>
    <message>
        <source>Hold all samples, however large the page becomes</source>
        <translation>Все отсчёты, как бы велика ни стала страница</translation>
    </message>
    <message>
        <source>Take no ini file: names as in the recording, a report without the values of circuits</source>
        <translation>Без ini-файла: имена как в осциллограмме, отчёт без значений присоединений</translation>
    </message>
    <message>
        <source>Show a recording or COMTRADE record as a page for the browser, or as a picture</source>
        <translation>Показать осциллограмму или запись COMTRADE страницей для браузера или рисунком</translation>
    </message>
    <message>
        <source>The recording or record</source>
        <translation>Осциллограмма или запись</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be written: %2</source>
        <translation>«%1» не записывается: %2</translation>
    </message>
    <message>
        <source>The page; - is standard output. Default: FILE with the extension .html</source>
        <translation>Страница; «-» — стандартный вывод. По умолчанию ФАЙЛ с окончанием .html</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 мс</translation>
    </message>
    <message>
        <source>As in the fault report:</source>
        <translation>Как в отчёте об аварии:</translation>
    </message>
    <message>
        <source>%1: the trigger time is outside the record&apos;s samples; check the start time, the trigger time and the sampling rates in its configuration</source>
        <translation>%1: время пуска вне отсчётов записи; проверьте в её конфигурации время начала, время пуска и частоты дискретизации</translation>
    </message>
    <message>
        <source>%1: missing analog values: %2 (channels: %3); the traces have gaps there, and a period with a gap has no RMS and no angle</source>
        <translation>%1: пропущено аналоговых значений: %2 (каналов: %3); на осциллограммах там разрывы, а для периода с разрывом нет действующего значения и угла</translation>
    </message>
    <message>
        <source>%1: the configuration announces %2 samples, the data have %3</source>
        <translation>%1: в конфигурации указано отсчётов: %2, в данных их %3</translation>
    </message>
    <message>
        <source>%1: it lies too far from &apos;%2&apos; in time to be seen over it; --align trigger lays trigger over trigger</source>
        <translation>%1: по времени слишком далеко от «%2», чтобы показать их вместе; --align trigger совмещает пуски</translation>
    </message>
    <message>
        <source>%1: a picture shows the first record alone; -o writes a page with both</source>
        <translation>%1: на рисунке только первая запись; страницу с обеими пишет -o</translation>
    </message>
    <message>
        <source>Section of the ini file for the recorder of SECOND. Default: as --device</source>
        <translation>Секция ini-файла для регистратора файла ВТОРОЙ. По умолчанию как --device</translation>
    </message>
    <message>
        <source>Another recording or record, to be laid over the first</source>
        <translation>Другая осциллограмма или запись, которая накладывается на первую</translation>
    </message>
    <message>
        <source>What the two have in common: the time of day (time, the default), or the moment of the trigger (trigger)</source>
        <translation>По чему совместить обе: по времени (time, по умолчанию) или по моменту пуска (trigger)</translation>
    </message>
    <message>
        <source>FILE is the first file of a recording (.ZU, its continuations beside it) or a COMTRADE record (.cfg or
.cff). The page is one HTML file with everything in it: mail it, archive it, open it without a network.
A recording needs no ini file; with one, its names, circuits and bays are those of the converted record.
Beyond 64 MB of samples the page holds a window around the trigger and says so.

SECOND is of the other end of the line, of another recorder or an earlier one, of any make. It lies over
FILE by date and time, in UTC where both records have their time zone; the page shifts it by hand. Its ini
file is found as that of FILE, beside it, unless --ini names one for both.

Exit code: 0 written, 1 the record cannot be read or the page cannot be written, 2 wrong usage, 130 ended
by Ctrl-C (143 by SIGTERM).

Example, with the sample station:
  zucmtr sample --out station --force
  zucmtr view station/Vostochnaya_000123.ZU -o station/fault.html
  zucmtr view station/Vostochnaya_000123.ZU station/Vostochnaya_000124.ZU --align trigger</source>
        <translation>ФАЙЛ — первый файл осциллограммы (.ZU, продолжения рядом с ним) или запись COMTRADE (.cfg или .cff).
Страница — один файл HTML, в котором есть всё: пересылайте, храните, открывайте без сети.
Осциллограмме не нужен ini-файл; с ним имена и присоединения те же, что в преобразованной записи.
Сверх 64 МБ отсчётов на странице окно вокруг пуска, и она об этом говорит.

ВТОРОЙ — с другого конца линии, с другого регистратора или более ранний, любого производителя. Он
накладывается на ФАЙЛ по дате и времени, по UTC, если в обеих записях есть часовой пояс; на странице его
можно сдвинуть. Его ini-файл ищется так же, рядом с ним, если ключ --ini не назвал один для обоих.

Код завершения: 0 записано, 1 запись не читается или страница не записывается, 2 неверный вызов, 130 прервано
по Ctrl-C (143 по SIGTERM).

Пример с учебной станцией:
  zucmtr sample --out station --force
  zucmtr view station/Vostochnaya_000123.ZU -o station/fault.html
  zucmtr view station/Vostochnaya_000123.ZU station/Vostochnaya_000124.ZU --align trigger</translation>
    </message>
    <message>
        <source>onset</source>
        <translation>начало КЗ</translation>
    </message>
    <message>
        <source>trip %1</source>
        <translation>команда откл. %1</translation>
    </message>
    <message>
        <source>cleared %1</source>
        <translation>отключено %1</translation>
    </message>
    <message>
        <source>Fault current</source>
        <translation>Ток КЗ</translation>
    </message>
    <message>
        <source>Protection starts</source>
        <translation>Пуск защиты</translation>
    </message>
    <message>
        <source>Trip</source>
        <translation>Команда отключения</translation>
    </message>
    <message>
        <source>Breaker opens</source>
        <translation>Выключатель отключён</translation>
    </message>
    <message>
        <source>Dead time</source>
        <translation>Бестоковая пауза</translation>
    </message>
    <message>
        <source>km</source>
        <translation>км</translation>
    </message>
    <message>
        <source>ohm</source>
        <translation>Ом</translation>
    </message>
    <message>
        <source>RMS</source>
        <translation>Действ.</translation>
    </message>
    <message>
        <source>before</source>
        <translation>до КЗ</translation>
    </message>
    <message>
        <source>during</source>
        <translation>КЗ</translation>
    </message>
    <message>
        <source>after</source>
        <translation>после</translation>
    </message>
    <message>
        <source>Operating times from the onset</source>
        <translation>Времена срабатывания от начала КЗ</translation>
    </message>
    <message>
        <source>Distance by method</source>
        <translation>Расстояние по методам</translation>
    </message>
    <message>
        <source>Magnitudes</source>
        <translation>Величины</translation>
    </message>
    <message>
        <source>behind the busbar</source>
        <translation>за шинами («за спиной»)</translation>
    </message>
    <message>
        <source>somewhere on the line</source>
        <translation>место на линии неизвестно</translation>
    </message>
    <message>
        <source>recorder</source>
        <translation>регистратор</translation>
    </message>
    <message>
        <source>%1 km</source>
        <translation>%1 км</translation>
    </message>
    <message>
        <source>%1 ohm</source>
        <translation>%1 Ом</translation>
    </message>
    <message>
        <source>%1 to %2 %</source>
        <translation>от %1 до %2 %</translation>
    </message>
    <message>
        <source>%1 km, %2 %</source>
        <translation>%1 км, %2 %</translation>
    </message>
</context>
<context>
    <name>watch</name>
    <message>
        <source>Convert what is there and end, for example for cron</source>
        <translation>Преобразовать то, что есть, и завершиться: для cron, например</translation>
    </message>
    <message>
        <source>File that remembers what is converted. Default: .zucmtr-watch in the directory of --out</source>
        <translation>Файл, помнящий, что преобразовано. По умолчанию .zucmtr-watch в каталоге --out</translation>
    </message>
    <message>
        <source>Seconds after which the directories are scanned in any case, as network file systems report nothing. Default: 30</source>
        <translation>Через сколько секунд каталоги просматриваются в любом случае, так как сетевые файловые системы ничего не сообщают. По умолчанию 30</translation>
    </message>
    <message>
        <source>Seconds after which a recording that failed is tried again; doubled after each failure. Default: 10</source>
        <translation>Через сколько секунд повторяется попытка после ошибки; с каждой ошибкой вдвое дольше. По умолчанию 10</translation>
    </message>
    <message>
        <source>Convert recordings as they arrive in directories</source>
        <translation>Преобразовывать осциллограммы по мере поступления в каталоги</translation>
    </message>
    <message>
        <source>Directories of recordings</source>
        <translation>Каталоги осциллограмм</translation>
    </message>
    <message>
        <source>How often a recording is tried before it is given up until it changes. Default: 8</source>
        <translation>Сколько попыток делается, прежде чем осциллограмма оставляется до её изменения. По умолчанию 8</translation>
    </message>
    <message>
        <source>Start by trying again those that were given up</source>
        <translation>Начать с новых попыток для оставленных осциллограмм</translation>
    </message>
    <message>
        <source>--state: &apos;%1&apos; is another kind of file; give one that &apos;zucmtr watch&apos; has made, or one that does not exist yet</source>
        <translation>--state: «%1» — файл другого рода; укажите файл, созданный «zucmtr watch», или ещё не существующий</translation>
    </message>
    <message>
        <source>the directory is gone; it is searched for at each rescan</source>
        <translation>каталог исчез; его ищут при каждом просмотре</translation>
    </message>
    <message>
        <source>ended by SIGTERM</source>
        <translation>завершено сигналом SIGTERM</translation>
    </message>
    <message>
        <source>ended by Ctrl-C</source>
        <translation>завершено по Ctrl-C</translation>
    </message>
    <message>
        <source>nothing is left to do</source>
        <translation>больше нечего делать</translation>
    </message>
    <message>
        <source>--state: &apos;%1&apos; is no regular file; give a file in a directory that can be written to</source>
        <translation>--state: «%1» — не обычный файл; укажите файл в каталоге, доступном для записи</translation>
    </message>
    <message>
        <source>there is no directory &apos;%1&apos;; make it first: mkdir -p %2</source>
        <translation>каталога «%1» нет; создайте его: mkdir -p %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no directory; give the one in which recordings arrive</source>
        <translation>«%1» — не каталог; укажите каталог, в который поступают осциллограммы</translation>
    </message>
    <message>
        <source>--state: &apos;%1&apos; cannot be written: %2; give another file</source>
        <translation>--state: «%1» не записывается: %2; укажите другой файл</translation>
    </message>
    <message>
        <source>not converted: no process for it: %1</source>
        <translation>не преобразована: для неё не запускается процесс: %1</translation>
    </message>
    <message>
        <source>signal %1</source>
        <translation>сигнал %1</translation>
    </message>
    <message>
        <source>exit code %1</source>
        <translation>код завершения %1</translation>
    </message>
    <message>
        <source>not converted: the program does not survive it (%1); send the recording to the maintainers</source>
        <translation>не преобразована: программа на ней аварийно завершается (%1); пришлите осциллограмму разработчикам</translation>
    </message>
    <message>
        <source>the next run goes on: %1</source>
        <translation>продолжит следующий запуск: %1</translation>
    </message>
    <message>
        <source>%1 converted, %2 given up, %3 waiting</source>
        <translation>преобразовано %1, оставлено без новых попыток %2, ожидают %3</translation>
    </message>
    <message>
        <source>it continues a recording whose first file %1 is not there, so it is not converted; bring that back</source>
        <translation>это продолжение осциллограммы, первого файла которой %1 нет, поэтому оно не преобразуется; верните первый файл</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be written: %2; free the disk, or give this user the permission</source>
        <translation>«%1» не записывается: %2; освободите место на диске или дайте права этому пользователю</translation>
    </message>
    <message>
        <source>another file has taken the place of &apos;%1&apos;; start again</source>
        <translation>вместо «%1» там теперь другой файл; запустите программу снова</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; cannot be written to: %3; the work goes on once that is put right</source>
        <translation>%1: в «%2» нельзя записать: %3; работа продолжится, когда это исправят</translation>
    </message>
    <message>
        <source>the system reports no changes of this many directories, as its limit is reached; they are scanned every %1 seconds or more; raise fs.inotify.max_user_watches</source>
        <translation>об изменениях стольких каталогов система не сообщает: её предел исчерпан; они просматриваются каждые %1 с или реже; увеличьте fs.inotify.max_user_watches</translation>
    </message>
    <message>
        <source>not converted: its files cannot be checked; the next run tries again</source>
        <translation>не преобразована: её файлы недоступны; следующий запуск попробует снова</translation>
    </message>
    <message>
        <source>not converted: the process that worked on it was ended from outside (signal %1); if the system lacked memory, its log has a line on that</source>
        <translation>не преобразована: процесс, который её обрабатывал, завершён извне (сигнал %1); если системе не хватило памяти, об этом есть строка в её журнале</translation>
    </message>
    <message>
        <source>Watch the directories below the given ones, too; their records go to directories of the same names below --out</source>
        <translation>Следить и за вложенными каталогами; их записи попадают в одноимённые каталоги внутри --out</translation>
    </message>
    <message>
        <source>Put all records into the directory of --out itself</source>
        <translation>Складывать все записи в сам каталог --out</translation>
    </message>
    <message>
        <source> (process %1 on %2)</source>
        <translation> (процесс %1 на %2)</translation>
    </message>
    <message>
        <source>--state: another &apos;zucmtr watch&apos; works with &apos;%1&apos;%2; end it, or give another file</source>
        <translation>--state: с «%1» работает другой «zucmtr watch»%2; завершите его или укажите другой файл</translation>
    </message>
    <message>
        <source>--state: &apos;%1&apos; is damaged (%2); put a copy of it in its place, or move it away: then all recordings that are there are converted again</source>
        <translation>--state: «%1» повреждён (%2); верните на его место копию или уберите его: тогда все имеющиеся осциллограммы будут преобразованы заново</translation>
    </message>
    <message>
        <source>--state: &apos;%1&apos; was made by a newer version of the program; install that, or give another file</source>
        <translation>--state: «%1» создан более новой версией программы; установите её или укажите другой файл</translation>
    </message>
    <message>
        <source>the directory &apos;%1&apos; cannot be entered</source>
        <translation>в каталог «%1» нельзя войти</translation>
    </message>
    <message>
        <source>it has the state &apos;%1&apos;, as &apos;%2&apos; has; give another &apos;state = FILE&apos;</source>
        <translation>у него тот же файл состояния «%1», что у «%2»; укажите другой: «state = ФАЙЛ»</translation>
    </message>
    <message>
        <source>with --config the directories of recordings belong into the .conf files, as &apos;directory = DIR&apos;</source>
        <translation>с --config каталоги осциллограмм указываются в файлах .conf: «directory = КАТАЛОГ»</translation>
    </message>
    <message>
        <source>with --config --%1 belongs into the .conf files, as &apos;%1 = ...&apos;</source>
        <translation>с --config ключ --%1 указывается в файлах .conf: «%1 = ...»</translation>
    </message>
    <message>
        <source>A recording counts as complete when none of its files has changed for the time that the ini file
gives as &apos;Время ожидания&apos;. Each event is one JSON object and line on standard output. What is
converted is remembered on the disk, so that a restart neither converts twice nor forgets. SIGTERM
and Ctrl-C end after the current recording.

The command of --exec is split into words at blanks; &apos;...&apos;, &quot;...&quot; and a backslash keep blanks in a
word. Variables: ZUCMTR_RECORD, ZUCMTR_RECORDING, ZUCMTR_STATION, ZUCMTR_FAULT and others.

Exit code: 0 ended by a signal, or with --once all recordings converted; 1 a recording failed or a
directory could not be read with --once, or the program could not start now: a directory is missing,
the state cannot be written or another process has it; 2 wrong usage or configuration.

Example, with the sample station:
  zucmtr sample --out station --force
  mkdir -p station/comtrade
  sed -i &apos;s/^Время ожидания=.*/Время ожидания=200/&apos; station/ZuDrv.ini
  zucmtr watch --once --out station/comtrade station</source>
        <translation>Осциллограмма считается полной, когда ни один её файл не менялся столько времени, сколько указано в
ini-файле ключом «Время ожидания». Каждое событие — объект JSON и строка в стандартном выводе. Что
преобразовано, помнится на диске: после перезапуска ничего не преобразуется дважды и не забывается.
SIGTERM и Ctrl-C завершают работу после начатой осциллограммы.

Команда --exec делится на слова по пробелам; &apos;...&apos;, &quot;...&quot; и обратная косая черта оставляют пробелы внутри
слова. Переменные: ZUCMTR_RECORD, ZUCMTR_RECORDING, ZUCMTR_STATION, ZUCMTR_FAULT и другие.

Код завершения: 0 завершено сигналом или с --once всё преобразовано; 1 при --once ошибка с осциллограммой
или не читается каталог, либо сейчас запуск невозможен: нет каталога, состояние не записывается или занято
другим процессом; 2 неверный вызов или настройка.

Пример с учебной станцией:
  zucmtr sample --out station --force
  mkdir -p station/comtrade
  sed -i &apos;s/^Время ожидания=.*/Время ожидания=200/&apos; station/ZuDrv.ini
  zucmtr watch --once --out station/comtrade station</translation>
    </message>
    <message>
        <source>Run this after each record, for example to mail or copy it: a program with its arguments, without a shell. It gets the summary on its standard input, as &apos;zucmtr convert --json&apos; has it, and in variables</source>
        <translation>Запускать после каждой записи, например для отправки или копирования: программа с параметрами, без оболочки. Сводку она получает на стандартном входе, как в «zucmtr convert --json», и в переменных окружения</translation>
    </message>
    <message>
        <source>Seconds after which the command of --exec is ended, with all that it has started. Default: 60</source>
        <translation>Через сколько секунд команда --exec завершается вместе со всем, что она запустила. По умолчанию 60</translation>
    </message>
    <message>
        <source>How often a command that failed is run again, after growing pauses. Default: 5</source>
        <translation>Сколько раз повторяется неудавшаяся команда, с растущими паузами. По умолчанию 5</translation>
    </message>
    <message>
        <source>Existing directory for the COMTRADE files; to be given, unless --config is</source>
        <translation>Существующий каталог для файлов COMTRADE; обязателен, если нет --config</translation>
    </message>
    <message>
        <source>Watch for several recorders: each file NAME.conf in this directory has the options of one, as &apos;out = DIR&apos;, and &apos;directory = DIR&apos;. SIGHUP has them read again</source>
        <translation>Работать для нескольких регистраторов: каждый файл ИМЯ.conf в этом каталоге содержит ключи одного из них, как «out = КАТАЛОГ», и «directory = КАТАЛОГ». По SIGHUP файлы читаются заново</translation>
    </message>
    <message>
        <source>Form of the events: json, one object a line, or text, which the file of --log gets as well. Default: json</source>
        <translation>Вид событий: json, по объекту в строке, или text — он попадает и в файл --log. По умолчанию json</translation>
    </message>
    <message>
        <source>File for monitoring that says how the recorders are doing, replaced again and again: JSON, or for NAME.prom the text form of node_exporter</source>
        <translation>Файл для мониторинга о состоянии регистраторов, постоянно обновляемый: JSON, а для ИМЯ.prom — текст для node_exporter</translation>
    </message>
    <message>
        <source>The file of --status is never older than this, unless the program hangs. Default: 15</source>
        <translation>Файл --status не бывает старше стольких секунд, если программа не зависла. По умолчанию 15</translation>
    </message>
    <message>
        <source>the process that writes it has ended (signal %1)</source>
        <translation>процесс, который её записывает, завершился (сигнал %1)</translation>
    </message>
    <message>
        <source>the process that writes it has ended</source>
        <translation>процесс, который её записывает, завершился</translation>
    </message>
    <message>
        <source>the journal&apos;s copy is not written: %1; the work goes on, and the copy follows</source>
        <translation>копия состояния не записывается: %1; работа продолжается, копия будет дополнена</translation>
    </message>
</context>
<context>
    <name>work</name>
    <message>
        <source>Write a page for the browser beside each record, as &apos;zucmtr view&apos;</source>
        <translation>Записать рядом с каждой записью страницу для браузера, как «zucmtr view»</translation>
    </message>
    <message>
        <source>Read each record back and compare it with its recording (the default)</source>
        <translation>Прочитать каждую запись и сравнить с осциллограммой (по умолчанию)</translation>
    </message>
    <message>
        <source>Do not read the records back</source>
        <translation>Не читать записи для проверки</translation>
    </message>
    <message>
        <source>Delete each recording after its record is verified and on the disk</source>
        <translation>Удалять каждую осциллограмму после того, как её запись проверена и находится на диске</translation>
    </message>
    <message>
        <source>Existing directory to which each recording is moved after its record is verified and on the disk</source>
        <translation>Существующий каталог, в который переносится каждая осциллограмма после того, как её запись проверена и находится на диске</translation>
    </message>
    <message>
        <source>--remove-source and --archive need a verified record; leave --no-verify out</source>
        <translation>для --remove-source и --archive нужна проверенная запись; уберите --no-verify</translation>
    </message>
    <message>
        <source>Write what happened beside each record, as &apos;zucmtr events&apos;: NAME.events.json and NAME.events.txt</source>
        <translation>Записать рядом с каждой записью, что произошло, как &apos;zucmtr events&apos;: ИМЯ.events.json и ИМЯ.events.txt</translation>
    </message>
    <message>
        <source>Write each record and its recording into this catalogue, too, as &apos;zucmtr archive update&apos;: a file, or postgresql://user@host/database</source>
        <translation>Вносить каждую запись и её осциллограмму также в этот каталог, как «zucmtr archive update»: файл или postgresql://user@host/database</translation>
    </message>
</context>
<context>
    <name>worker</name>
    <message>
        <source>not enough memory; give more by --max-memory, or fewer recordings at once by --jobs</source>
        <translation>не хватает памяти; дайте больше ключом --max-memory или меньше осциллограмм одновременно ключом --jobs</translation>
    </message>
    <message>
        <source>not converted: %1</source>
        <translation>не преобразована: %1</translation>
    </message>
    <message>
        <source>the record was read, but could not be compared: the recording is deleted</source>
        <translation>запись прочитана, но сравнить её не с чем: осциллограмма удалена</translation>
    </message>
    <message>
        <source>converted, but its page could not be written: %1; the recording is kept</source>
        <translation>преобразована, но страница не записывается: %1; осциллограмма сохранена</translation>
    </message>
    <message>
        <source>not converted: %1; free some</source>
        <translation>не преобразована: %1; освободите место</translation>
    </message>
    <message>
        <source>converted, but the record is not right: %1; the recording is deleted</source>
        <translation>преобразована, но запись неверна: %1; осциллограмма удалена</translation>
    </message>
    <message>
        <source>not converted: &apos;%1&apos; is there already and is not the record of this recording (%2); move it away, choose another directory by --out, or replace it by --replace</source>
        <translation>не преобразована: «%1» уже есть, и это не запись этой осциллограммы (%2); уберите её, укажите другой каталог в --out или замените её с --replace</translation>
    </message>
    <message>
        <source>not converted: the record that was written is not right: %1</source>
        <translation>не преобразована: записано неверно: %1</translation>
    </message>
    <message>
        <source>not converted: &apos;%1&apos; could not be read at first; convert again</source>
        <translation>не преобразована: «%1» сначала не удалось прочитать; преобразуйте ещё раз</translation>
    </message>
    <message>
        <source>not converted: the recording changed meanwhile: %1; convert again</source>
        <translation>не преобразована: осциллограмма за это время изменилась: %1; преобразуйте ещё раз</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a directory</source>
        <translation>«%1» — каталог</translation>
    </message>
    <message>
        <source>the recording is kept, as &apos;%1&apos; is not in the record</source>
        <translation>осциллограмма оставлена: «%1» в запись не вошёл</translation>
    </message>
    <message>
        <source>&apos;%1&apos; could not be written to the disk: %2</source>
        <translation>«%1» не удалось записать на диск: %2</translation>
    </message>
    <message>
        <source>the directory &apos;%1&apos; cannot be made: %2</source>
        <translation>каталог «%1» не создаётся: %2</translation>
    </message>
    <message>
        <source>not converted: for a moment the recording could not be read, or its record not be written; convert again</source>
        <translation>не преобразована: осциллограмму на мгновение не удалось прочитать или её запись — сохранить; повторите преобразование</translation>
    </message>
    <message>
        <source>not converted: &apos;%1&apos; is there already and is longer: it starts like this recording and goes on after its end, so continuation files of the recording are missing; bring them back beside &apos;%2&apos;, or replace the record by this shorter one with --replace</source>
        <translation>не преобразована: «%1» уже есть и длиннее: запись начинается как эта осциллограмма и продолжается после её конца, то есть файлов продолжения не хватает; верните их к «%2» или замените запись этой, более короткой, ключом --replace</translation>
    </message>
    <message>
        <source>converted, but its events could not be written: %1; the recording is kept</source>
        <translation>преобразована, но не удалось записать её события: %1; осциллограмма сохранена</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a regular file; move it away</source>
        <translation>«%1» не обычный файл; уберите его</translation>
    </message>
    <message>
        <source>the recording is kept, as it is damaged</source>
        <translation>осциллограмма оставлена на месте, так как она повреждена</translation>
    </message>
    <message>
        <source>no temporary directory: %1</source>
        <translation>нет временного каталога: %1</translation>
    </message>
    <message>
        <source>; no channel of it is whole, so that there is nothing to salvage</source>
        <translation>; ни один её канал не уцелел, спасать нечего</translation>
    </message>
    <message>
        <source>; the recording is damaged, so that this may be the record of the whole one</source>
        <translation>; осциллограмма повреждена, так что это может быть запись, сделанная по неповреждённой</translation>
    </message>
    <message>
        <source>converted, but not in the catalogue: %1; the recording is kept; convert it again, or bring the catalogue up to date with &apos;zucmtr archive update&apos;</source>
        <translation>преобразовано, но в каталог не внесено: %1; осциллограмма оставлена; преобразуйте её ещё раз или обновите каталог командой «zucmtr archive update»</translation>
    </message>
    <message>
        <source>the catalogue does not know yet that the recording was put away: %1; &apos;zucmtr archive update&apos; brings it up to date</source>
        <translation>в каталоге ещё не отмечено, что осциллограмма убрана: %1; его обновит «zucmtr archive update»</translation>
    </message>
</context>
</TS>
