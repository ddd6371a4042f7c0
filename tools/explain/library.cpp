#include "explain/library.h"

#include "explain/pattern.h"
#include "text/texts.h"

#include <QStringList>

namespace explain {

namespace {

// A text of the library, and what it means. What stands at %1 may be such a text itself.
struct Meaning
{
    const char* library;
    const char* text;
};

const Meaning Meanings[] = {
    {"Файл не существует [%1]", QT_TRANSLATE_NOOP("library", "there is no such file; check the path")},
    {"Файл не найден", QT_TRANSLATE_NOOP("library", "there is no such file; check the path")},
    {"Каталог не существует [%1]",
     QT_TRANSLATE_NOOP("library", "the directory for the record is gone; make it again")},
    {"Плохое имя файла [%1]",
     QT_TRANSLATE_NOOP("library", "the name of a recording ends in .ZU or .zu; rename the file")},
    {"Ошибка открытия файла",
     QT_TRANSLATE_NOOP("library", "the file cannot be opened; check its permissions")},
    {"Ошибка записи в [%1]",
     QT_TRANSLATE_NOOP("library", "'%1' cannot be written; check the free space and the permissions")},
    {"чтение файла, ошибка выделения памяти",
     QT_TRANSLATE_NOOP(
         "library",
         "there is not enough memory; give more by --max-memory, or convert fewer recordings at once")},

    {"Ошибка при чтении файла [ZuFileHeader]",
     QT_TRANSLATE_NOOP("library", "the file ends within its header; was the copy interrupted?")},
    {"Ошибка при чтении файла [ZuFileSectionHeader]",
     QT_TRANSLATE_NOOP(
         "library",
         "the file ends before all the channels that its header promises; was the copy interrupted?")},
    {"Ошибка формата файла [Ver]",
     QT_TRANSLATE_NOOP("library", "it is no recording: it does not start like a recorder's file; give a "
                                  "recording's first file (.ZU)")},
    {"Ошибка формата файла [не определить TextCodec]",
     QT_TRANSLATE_NOOP("library", "it is no recording: its title is not a recorder's in either code page")},
    {"Ошибка формата файла [не определить TimeZone]",
     QT_TRANSLATE_NOOP("library", "the header is damaged: its time zone is out of range")},
    {"Ошибка формата файла [плохой m_SecHeader.descrLength]",
     QT_TRANSLATE_NOOP("library", "the file is damaged: the header of a channel has a wrong length")},
    {"Ошибка значения параметра [время начала данных]",
     QT_TRANSLATE_NOOP("library", "the header is damaged: the time of the first sample is out of range")},
    {"Ошибка значения параметра [время начала аварии]",
     QT_TRANSLATE_NOOP("library", "the header is damaged: the time of the trigger is out of range")},
    {"Ошибка значения параметра [продолжительность процесса в микросекундах]",
     QT_TRANSLATE_NOOP("library", "the header is damaged: the duration is out of range")},
    {"Ошибка значения параметра [количество каналов]",
     QT_TRANSLATE_NOOP("library", "the header is damaged: it promises too many channels")},
    {"Ошибка значения параметра [hdrSize]",
     QT_TRANSLATE_NOOP("library", "the header is damaged: it gives a wrong size for itself")},
    {"Ошибка значения параметра [тип секции (канала)]",
     QT_TRANSLATE_NOOP("library", "the file is damaged: it has a channel of an unknown kind")},

    {"Ошибка загрузки параметров аналогового канала [%1]",
     QT_TRANSLATE_NOOP("library", "an analog channel cannot be read: %1")},
    {"Ошибка загрузки параметров дискретного канала [%1]",
     QT_TRANSLATE_NOOP("library", "a discrete channel cannot be read: %1")},
    {"канал %1 не содержит данных", QT_TRANSLATE_NOOP("library", "'%1' has no data")},
    {"чтение файла (AnChannelHeader)", QT_TRANSLATE_NOOP("library", "the file ends within its header")},
    {"чтение файла (DiChannelHeader)", QT_TRANSLATE_NOOP("library", "the file ends within its header")},
    {"чтение файла (данные AnChannel)",
     QT_TRANSLATE_NOOP("library", "the file ends within its data; was the copy interrupted?")},
    {"чтение файла (данные DiChannel)",
     QT_TRANSLATE_NOOP("library", "the file ends within its data; was the copy interrupted?")},
    {"чтение файла (дискреты, ошибка длины данных)",
     QT_TRANSLATE_NOOP("library", "the number of its changes does not fit the size of its data")},
    {"плохой формат AnChannel (sizeof(WORD)*m_HeaderAn.points!=m_DataLength)",
     QT_TRANSLATE_NOOP("library", "the number of its samples does not fit the size of its data")},
    {"ошибка распаковки сжатых данных", QT_TRANSLATE_NOOP("library", "its compressed data are damaged")},

    {"Разные частоты дискретизации в файле [%1]",
     QT_TRANSLATE_NOOP("library", "the analog channels of '%1' have different sampling rates")},
    {"Разное количество точек в аналоговых каналах в файле [%1]",
     QT_TRANSLATE_NOOP("library", "the analog channels of '%1' have different numbers of samples")},
    {"Разные частоты дискретизации в разных файлах",
     QT_TRANSLATE_NOOP("library", "its files have different sampling rates")},
    {"Плохое значение rate (==0)",
     QT_TRANSLATE_NOOP("library", "its sampling rate is 0, so it cannot be converted")},
    {"Плохое значение fullTime (==0)",
     QT_TRANSLATE_NOOP("library", "its duration is 0, so it cannot be converted")},

    {"Ошибка обработки файла %1 [%2], окончание осциллограммы некорректно",
     QT_TRANSLATE_NOOP("library",
                       "the recording of '%1' ends early, a continuation file cannot be read: %2")},
    {"Параметры файлов [%1] и [%2] различны, окончание осциллограммы некорректно",
     QT_TRANSLATE_NOOP("library", "the recording ends early, '%1' does not continue '%2': they differ")},
};

// Empty for an unknown text.
QString MeaningOf(const QString& text)
{
    for (const Meaning& meaning : Meanings) {
        const std::optional<QStringList> places = PlacesOf(text, QString::fromUtf8(meaning.library));
        if (!places)
            continue;
        QStringList values;
        for (const QString& place : *places) {
            const QString inner = MeaningOf(place);
            values << (inner.isEmpty() ? place : inner);
        }
        return Filled(Tr("library", meaning.text), values);
    }
    return QString();
}

} // namespace

QString WithLibraryText(const QString& sentence, const QString& text)
{
    return text.isEmpty() ? sentence : QStringLiteral("%1 [%2]").arg(sentence, text);
}

QString LibraryText(const QString& text)
{
    const QString meaning = MeaningOf(text);
    return meaning.isEmpty() ? text : WithLibraryText(meaning, text);
}

} // namespace explain
