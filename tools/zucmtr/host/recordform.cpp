#include "zucmtr/host/recordform.h"

#include "explain/system.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"

#include <QDir>
#include <QTextCodec>

namespace {

QString Line(const char* key, const std::optional<bool>& value)
{
    return value ? QString::fromUtf8(key) + QLatin1Char('=') + QString::number(*value ? 1 : 0) +
                       QLatin1Char('\n')
                 : QString();
}

// As UTF-8, whatever the byte order mark of the file says.
QByteArray ReadWhole(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ConfigurationError(Tr("record form", "--ini: '%1' cannot be read: %2")
                                     .arg(path, explain::SystemText(file.errorString())));
    const QByteArray bytes = file.readAll();
    const QTextCodec* marked = QTextCodec::codecForUtfText(bytes, nullptr);
    return marked == nullptr ? bytes : marked->toUnicode(bytes).toUtf8();
}

} // namespace

QString RecordForm::Keys() const
{
    RecordForm form = *this;
    if (!is1999 && isContainer.value_or(false))
        form.is1999 = false;
    if (!isContainer && is1999.value_or(false))
        form.isContainer = false;
    return Line("Тип Comtrade CFF", form.isContainer) + Line("Тип Comtrade BIN", form.isBinary) +
           Line("Тип Comtrade 1999", form.is1999) + Line("Кодировка Comtrade UTF8", form.isUtf8);
}

ChangedIni::ChangedIni(const DeviceChoice& choice, const QString& keys) : own(choice.ini), changed(choice)
{
    if (keys.isEmpty())
        return;
    const QByteArray bytes = ReadWhole(own) + "\n[" + choice.device.toUtf8() + "]\n" + keys.toUtf8();
    copy = std::make_unique<output::TemporaryFile>(bytes);
    if (!copy->ErrorText().isEmpty())
        throw ConfigurationError(
            Tr("record form", "'%1' cannot be written: %2; free space in the directory for temporary files")
                .arg(copy->Path(), copy->ErrorText()));
    changed.ini = copy->Path();
}
