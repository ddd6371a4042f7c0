// What is reported about files and directories that a command cannot take.
#include "wrong.h"

namespace {

const QString longName = QString(300, 'x') + ".ZU";

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Convert, WrongTest,
    testing::Values(
        Wrong{{"convert", "nosuch.ZU"},
              1,
              "nosuch.ZU: not converted: there is no such file; check the path",
              "nosuch.ZU: не преобразована: такого файла нет; проверьте путь"},
        Wrong{
            {"convert", "x.cfg"},
            1,
            "x.cfg: not converted: it is a COMTRADE record, not a recording; 'zucmtr info' and 'zucmtr view' "
            "take it",
            "x.cfg: не преобразована: это запись COMTRADE, а не осциллограмма; её принимают «zucmtr info» и "
            "«zucmtr view»"},
        Wrong{{"convert", "empty/"},
              0,
              "empty/: there is no recording (.ZU) in this directory; --recursive searches the directories "
              "below it, too",
              "empty/: в этом каталоге нет осциллограмм (.ZU); --recursive ищет и во вложенных каталогах"},
        Wrong{{"convert", "d.ZU"},
              0,
              "d.ZU: there is no recording (.ZU) in this directory; --recursive searches the directories "
              "below it, too",
              "d.ZU: в этом каталоге нет осциллограмм (.ZU); --recursive ищет и во вложенных каталогах"},
        Wrong{
            {"convert", "rec.ZU"},
            2,
            "there is no ZuDrv.ini in the current directory; name the recorders' ini file by --ini, or have "
            "'zucmtr dictionary --complete' make one",
            "в текущем каталоге нет ZuDrv.ini; укажите ini-файл регистраторов ключом --ini или составьте "
            "его: «zucmtr dictionary --complete»"},
        Wrong{{"convert", "nosuch.ZU", "in/b.ZU"},
              2,
              "there is no ZuDrv.ini in 'in' or in the current directory; name the recorders' ini file by "
              "--ini, or have 'zucmtr dictionary --complete' make one",
              "в «in» и в текущем каталоге нет ZuDrv.ini; укажите ini-файл регистраторов ключом --ini или "
              "составьте его: «zucmtr dictionary --complete»"},
        Wrong{{"convert", "my.ini"},
              1,
              "my.ini: not converted: it is an ini file, not a recording; name it by --ini, or look at it "
              "with 'zucmtr check'",
              "my.ini: не преобразована: это ini-файл, а не осциллограмма; укажите его ключом --ini или "
              "проверьте командой «zucmtr check»"},
        Wrong{{"convert", "x.dat"},
              1,
              "x.dat: not converted: it is a part of a COMTRADE record, not a recording (.ZU); 'zucmtr info' "
              "and 'zucmtr view' take its configuration 'x.cfg'",
              "x.dat: не преобразована: это часть записи COMTRADE, а не осциллограмма (.ZU); «zucmtr info» и "
              "«zucmtr view» принимают её конфигурацию «x.cfg»"},
        Wrong{{"convert", "lone.Z01"},
              1,
              "lone.Z01: not converted: it continues a recording whose first file lone.ZU is not there; "
              "bring that back",
              "lone.Z01: не преобразована: файл продолжает осциллограмму, первого файла которой (lone.ZU) "
              "нет; верните его"},
        Wrong{{"convert", "rec.bin"},
              1,
              "rec.bin: not converted: the name of a recording ends in .ZU or .zu; rename the file",
              "rec.bin: не преобразована: имя осциллограммы должно кончаться на .ZU или .zu; переименуйте "
              "файл"},
        Wrong{{"convert", "/dev/zero"},
              1,
              "/dev/zero: not converted: it is a device or a socket; give a file",
              "/dev/zero: не преобразована: это устройство или сокет; укажите файл"},
        Wrong{{"convert", "fifo.ZU"},
              1,
              "fifo.ZU: not converted: it is a pipe; save what comes out of it in a file, and give that",
              "fifo.ZU: не преобразована: это канал; сохраните данные из него в файл и укажите этот файл"},
        Wrong{{"convert", "loop.ZU"},
              1,
              "loop.ZU: not converted: it is a link that leads back to itself; remove it",
              "loop.ZU: не преобразована: это ссылка, ведущая на саму себя; удалите её"},
        Wrong{{"convert", "no\nsuch\033[31m.ZU"},
              1,
              "no?such?[31m.ZU: not converted: there is no such file; check the path",
              "no?such?[31m.ZU: не преобразована: такого файла нет; проверьте путь"},
        Wrong{{"convert", longName},
              1,
              longName + ": not converted: the path is too long; shorten the names",
              longName + ": не преобразована: слишком длинный путь; сократите имена"},
        Wrong{{"convert", ""},
              2,
              "FILE: the path is empty; give one",
              "ФАЙЛ: пустой путь; укажите его",
              "zucmtr convert"},
        Wrong{{"convert", "--ini", "nosuch.ini", "rec.ZU"},
              2,
              "--ini: nosuch.ini: there is no such file; check the path",
              "--ini: nosuch.ini: такого файла нет; проверьте путь"},
        Wrong{{"convert", "--ini", "my.ini", "--defaults", "No", "rec.ZU"},
              2,
              "--defaults: 'my.ini' has no section [No]; it has [Default], [Vostochnaya]",
              "--defaults: в «my.ini» нет секции [No]; есть [Default], [Vostochnaya]"},
        Wrong{{"convert", "--ini", "my.ini", "--out", "rec.ZU", "rec.ZU"},
              2,
              "--out: 'rec.ZU' is a file; give a directory to write into",
              "--out: «rec.ZU» — файл; укажите каталог"},
        Wrong{{"convert", "--ini", "my.ini", "--out", "rec.ZU/a", "--make-out", "rec.ZU"},
              2,
              "--out: the directory 'rec.ZU/a' cannot be made, since 'rec.ZU' is a file; choose another one",
              "--out: каталог «rec.ZU/a» не создаётся: «rec.ZU» — файл; выберите другой"}));

INSTANTIATE_TEST_SUITE_P(
    Info, WrongTest,
    testing::Values(
        Wrong{{"info", "/etc/passwd"},
              1,
              "/etc/passwd: it is no recording: it does not start like a recorder's file; give a "
              "recording's first file (.ZU)",
              "/etc/passwd: это не осциллограмма: начало не такое, как у файлов регистратора; укажите первый "
              "файл осциллограммы (.ZU)"},
        Wrong{{"info", "in"},
              1,
              "in: it is a directory; give a file in it, such as 'in/b.ZU'",
              "in: это каталог; укажите файл в нём, например «in/b.ZU»"},
        Wrong{{"info", "empty"},
              1,
              "empty: it is a directory; give a file",
              "empty: это каталог; укажите файл"},
        Wrong{{"info", "x.dat"},
              1,
              "x.dat: it is a part of a COMTRADE record, not a recording (.ZU); 'zucmtr info' and 'zucmtr "
              "view' take its configuration 'x.cfg'",
              "x.dat: это часть записи COMTRADE, а не осциллограмма (.ZU); «zucmtr info» и «zucmtr view» "
              "принимают её конфигурацию «x.cfg»"},
        Wrong{{"info", "lone.dat"},
              1,
              "lone.dat: it is a part of a COMTRADE record, not a recording (.ZU); 'zucmtr info' and 'zucmtr "
              "view' take the record's .cfg file, which is not beside it",
              "lone.dat: это часть записи COMTRADE, а не осциллограмма (.ZU); «zucmtr info» и «zucmtr view» "
              "принимают файл .cfg этой записи, а рядом его нет"},
        Wrong{{"info", "fifo.ZU"},
              1,
              "fifo.ZU: it is a pipe; save what comes out of it in a file, and give that",
              "fifo.ZU: это канал; сохраните данные из него в файл и укажите этот файл"},
        Wrong{{"info", "/dev/zero"},
              1,
              "/dev/zero: it is a device or a socket; give a file",
              "/dev/zero: это устройство или сокет; укажите файл"},
        Wrong{{"info", "empty.ZU"},
              1,
              "empty.ZU: the file is empty; was the copy interrupted?",
              "empty.ZU: файл пуст; не прервано ли копирование?"},
        Wrong{{"info", "empty.cfg"},
              1,
              "empty.cfg: the file is empty; was the copy interrupted?",
              "empty.cfg: файл пуст; не прервано ли копирование?"},
        Wrong{{"info", "iscfg.ZU"},
              1,
              "iscfg.ZU: it is no recording: its content is a COMTRADE record's; give it the extension .cfg",
              "iscfg.ZU: это не осциллограмма: по содержимому это запись COMTRADE; дайте файлу расширение "
              ".cfg"},
        Wrong{{"info", "iszu.cfg"},
              1,
              "iszu.cfg: it is no COMTRADE record: its content is a recording's; give it the extension .ZU",
              "iszu.cfg: это не запись COMTRADE: по содержимому это осциллограмма; дайте файлу расширение "
              ".ZU"},
        Wrong{{"info", "number.cfg"},
              1,
              "number.cfg, line 2: channel count is 'x', which is no number",
              "number.cfg, строка 2: число каналов: «x» — не число"},
        Wrong{{"info", "bad.cfg"},
              1,
              "bad.cfg, line 2: 1 channels, but only 0 lines follow",
              "bad.cfg, строка 2: каналов 1, а строк следует только 0"}));

INSTANTIATE_TEST_SUITE_P(
    View, WrongTest,
    testing::Values(
        Wrong{{"view", "x.DAT"},
              1,
              "x.DAT: it is a part of a COMTRADE record, not a recording (.ZU); 'zucmtr info' and 'zucmtr "
              "view' take its configuration 'x.cfg'",
              "x.DAT: это часть записи COMTRADE, а не осциллограмма (.ZU); «zucmtr info» и «zucmtr view» "
              "принимают её конфигурацию «x.cfg»"},
        Wrong{{"view", "--svg", "X", "-o", "./X", "rec.ZU"},
              2,
              "--svg: 'X' is the file of --out, too; choose another name",
              "--svg: «X» — уже файл ключа --out; выберите другое имя"},
        Wrong{{"view", "--svg", "/dev/fd/1", "--png", "/dev/stdout", "rec.ZU"},
              2,
              "--png: '/dev/stdout' is the file of --svg, too; choose another name",
              "--png: «/dev/stdout» — уже файл ключа --svg; выберите другое имя"},
        Wrong{{"view", "in"},
              1,
              "in: it is a directory; give a file in it, such as 'in/b.ZU'",
              "in: это каталог; укажите файл в нём, например «in/b.ZU»"},
        Wrong{{"view", "bad.cfg"},
              1,
              "bad.cfg, line 2: 1 channels, but only 0 lines follow",
              "bad.cfg, строка 2: каналов 1, а строк следует только 0"},
        Wrong{{"view", "iszu.cfg"},
              1,
              "iszu.cfg: it is no COMTRADE record: its content is a recording's; give it the extension .ZU",
              "iszu.cfg: это не запись COMTRADE: по содержимому это осциллограмма; дайте файлу расширение "
              ".ZU"},
        Wrong{{"view", "rec.Z01"},
              1,
              "rec.Z01: it continues a recording; give the first file rec.ZU instead",
              "rec.Z01: файл продолжает осциллограмму; укажите вместо него первый файл rec.ZU"},
        Wrong{{"view", "--ini", "my.ini", "--device", "No", "rec.ZU"},
              2,
              "--device: 'my.ini' has no section [No]; it has [Default], [Vostochnaya]",
              "--device: в «my.ini» нет секции [No]; есть [Default], [Vostochnaya]"},
        Wrong{{"view", "--window", "nan", "rec.ZU"},
              2,
              "--window: 'nan' is wrong; give a number from 0.001 to 1000000",
              "--window: «nan» не годится; дайте число от 0.001 до 1000000",
              "zucmtr view"},
        Wrong{{"view", "rec.ZU", "x.cfg", "y.cfg"},
              2,
              "'y.cfg' is too much: 'zucmtr view' takes one FILE and one SECOND",
              "«y.cfg» — лишнее: у «zucmtr view» только два аргумента (ФАЙЛ и ВТОРОЙ)",
              "zucmtr view"},
        Wrong{{"view", "rec.ZU", "--align", "trigger"},
              2,
              "--align is given without SECOND; give both",
              "--align указан без ВТОРОЙ; укажите оба",
              "zucmtr view"},
        Wrong{{"view", "rec.ZU", "nosuch.cfg"},
              1,
              "nosuch.cfg: there is no such file; check the path",
              "nosuch.cfg: такого файла нет; проверьте путь"},
        Wrong{{"view", "rec.ZU", "bad.cfg", "-o", "-"},
              1,
              "bad.cfg, line 2: 1 channels, but only 0 lines follow",
              "bad.cfg, строка 2: каналов 1, а строк следует только 0"},
        Wrong{{"view", "--ini", "my.ini", "--device", "Vostochnaya", "--second-device", "No", "rec.ZU",
               "rec.ZU"},
              2,
              "rec.ZU: --second-device: 'my.ini' has no section [No]; it has [Default], [Vostochnaya]",
              "rec.ZU: --second-device: в «my.ini» нет секции [No]; есть [Default], [Vostochnaya]"}));

INSTANTIATE_TEST_SUITE_P(
    Check, WrongTest,
    testing::Values(
        Wrong{
            {"check"},
            2,
            "there is no ZuDrv.ini in the current directory; name the recorders' ini file by --ini, or have "
            "'zucmtr dictionary --complete' make one",
            "в текущем каталоге нет ZuDrv.ini; укажите ini-файл регистраторов ключом --ini или составьте "
            "его: «zucmtr dictionary --complete»"},
        Wrong{{"check", "nosuch.ini"},
              2,
              "nosuch.ini: there is no such file; check the path",
              "nosuch.ini: такого файла нет; проверьте путь"},
        Wrong{{"check", "--ini", "my.ini", "station/ZuDrv.ini"},
              2,
              "there are two ini files, 'my.ini' and 'station/ZuDrv.ini'; check one after the other",
              "даны два ini-файла, «my.ini» и «station/ZuDrv.ini»; проверьте их по одному"},
        Wrong{{"check", "my.ini", "in"},
              2,
              "in: it is a directory; give a file in it, such as 'in/b.ZU'",
              "in: это каталог; укажите файл в нём, например «in/b.ZU»"},
        Wrong{{"check", "my.ini", "fifo.ZU"},
              2,
              "fifo.ZU: it is a pipe; save what comes out of it in a file, and give that",
              "fifo.ZU: это канал; сохраните данные из него в файл и укажите этот файл"}));

INSTANTIATE_TEST_SUITE_P(
    Others, WrongTest,
    testing::Values(
        Wrong{{"dictionary", "x.cfg"},
              1,
              "x.cfg: it is a COMTRADE record, not a recording; 'zucmtr info' and 'zucmtr view' take it",
              "x.cfg: это запись COMTRADE, а не осциллограмма; её принимают «zucmtr info» и «zucmtr view»"},
        Wrong{{"dictionary", "in"},
              1,
              "in: it is a directory; give a file in it, such as 'in/b.ZU'",
              "in: это каталог; укажите файл в нём, например «in/b.ZU»"},
        Wrong{{"sample", "--out", "rec.ZU"},
              2,
              "--out: the directory 'rec.ZU' cannot be made, since 'rec.ZU' is a file; choose another one",
              "--out: каталог «rec.ZU» не создаётся: «rec.ZU» — файл; выберите другой"},
        Wrong{{"sample", "--out", ""},
              2,
              "--out: the value is empty; give one, or leave the option out",
              "--out: пустое значение; укажите его или уберите ключ",
              "zucmtr sample"},
        Wrong{{"watch", "--out", "empty", "nosuch"},
              1,
              "there is no directory 'nosuch'; make it first: mkdir -p nosuch",
              "каталога «nosuch» нет; создайте его: mkdir -p nosuch"},
        Wrong{{"watch", "--out", "empty", "rec.ZU"},
              2,
              "'rec.ZU' is no directory; give the one in which recordings arrive",
              "«rec.ZU» — не каталог; укажите каталог, в который поступают осциллограммы"},
        Wrong{{"watch", "--out", "empty", "in"},
              2,
              "there is no ZuDrv.ini in 'in' or in the current directory; name the recorders' ini file by "
              "--ini, or have 'zucmtr dictionary --complete' make one",
              "в «in» и в текущем каталоге нет ZuDrv.ini; укажите ini-файл регистраторов ключом --ini или "
              "составьте его: «zucmtr dictionary --complete»"}));
