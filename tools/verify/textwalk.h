// A text file of a record, compared piece by piece from its begin to its end.
#pragma once

#include <QByteArray>
#include <QString>

namespace verify {

class Device;

class TextWalk
{
public:
    /// lineEnd is "\n" or "\r\n". The texts are in the device's code page.
    TextWalk(const QByteArray& bytes_, const QString& fileName_, const char* lineEnd_, const Device& device_);

    /// The next line must be this one; a text with line ends of its own takes several. Throws Mismatch.
    void Line(const QString& text);

    /// The next line must begin and end so. Throws Mismatch.
    void LineLike(const QString& begin, const QString& end = QString());

    /// There must be nothing more. Throws Mismatch.
    void End() const;

private:
    QString TakeLine();
    QString Place() const;

    const QByteArray& bytes;
    const QString fileName;
    const QByteArray lineEnd;
    const Device& device;
    int position = 0;
    int line = 0; // lines that were taken
};

} // namespace verify
