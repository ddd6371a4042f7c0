#include "writers/infsection.h"

#include "resorter/ResorterZuCmtrConv.h"

#include <QDebug>
#include <QFile>
#include <QTextCodec>

#include <cstring>
#include <stdexcept>

static void CheckWritten(const QFile& file, qint64 written, bool& err)
{
    if (written >= 0)
        return;
    QMessageLogger(nullptr, 0, nullptr, "default").debug() << file.errorString();
    err = true;
    throw std::runtime_error("WriteString error!");
}

namespace zu {

InfSection::InfSection(const ResorterZuCmtrConv& resorter, QFile& file_, bool& err_)
    : text(resorter.InfCodec), file(file_), err(err_)
{}

void InfSection::Head(const char* name)
{
    Raw("[");
    Raw(name);
    Raw("]\r\n");
}

void InfSection::Head(const char* name, size_t number)
{
    Raw("[");
    Raw(name);
    text.AddNumber(number);
    Raw("]\r\n");
}

void InfSection::Key(const char* key, QStringView value)
{
    Raw(key);
    const int start = text.Size();
    text.Add(value);
    const auto length = static_cast<size_t>(text.Size() - start);
    if (const void* nul = std::memchr(text.Data() + start, '\0', length); nul != nullptr)
        text.Truncate(static_cast<int>(static_cast<const char*>(nul) - text.Data()));
    else
        Raw("\r\n");
}

void InfSection::Key(const char* key, size_t value)
{
    Raw(key);
    text.AddNumber(value);
    Raw("\r\n");
}

void InfSection::Write()
{
    const int size = text.Size();
    text.Truncate(0);
    CheckWritten(file, file.write(text.Data(), size), err);
}

} // namespace zu

void ResorterZuCmtrConv::WriteString(QFile& file, const QString& text, bool& err)
{
    const QByteArray bytes = InfCodec->fromUnicode(text);
    CheckWritten(file, file.write(bytes.constData()), err); // up to the first NUL
}

void ResorterZuCmtrConv::WriteString(QFile& file, const char* text, bool& err)
{
    CheckWritten(file, file.write(text), err);
}

void ResorterZuCmtrConv::WriteStringUtf8(QFile& file, const char* text, bool& err)
{
    WriteString(file, QString::fromUtf8(text), err);
}
