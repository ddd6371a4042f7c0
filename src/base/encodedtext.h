// Text put together piece by piece in its encoding, in one buffer.
#pragma once

#include <QByteArray>
#include <QStringView>

class QTextCodec;

namespace zu {

class CodeTable;

class EncodedText
{
public:
    /// With room for as many bytes as room says; it grows as needed.
    explicit EncodedText(const QTextCodec* codec_, int room = 1024);

    /// Appends text, in the bytes that the codec gives for it. False if there are none for a text that is not
    /// empty.
    bool Add(QStringView text);

    /// Appends bytes as they stand.
    void AddBytes(const char* text, int length);
    void AddBytes(const char* text) { AddBytes(text, static_cast<int>(qstrlen(text))); }

    /// Appends a number in decimal.
    void AddNumber(quint64 number);

    const char* Data() const { return buffer.constData(); }
    int Size() const { return size; }

    /// Shortens it to that many bytes.
    void Truncate(int length) { size = length; }

private:
    char* Room(int length); // at the end, for that many bytes more
    bool AddUtf8(QStringView text);
    bool AddByTable(QStringView text);

    const QTextCodec* codec;
    const bool isUtf8;
    const CodeTable* table;
    QByteArray buffer;
    int size = 0;
};

} // namespace zu
