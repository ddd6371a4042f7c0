// Compares a text file of a record with what is expected, piece by piece from start to end.
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

    /// The next line must be this text; one with line ends of its own takes several lines. Throws Mismatch.
    void Line(const QString& text);

    /// The next line must start and end with these texts. Throws Mismatch.
    void LineLike(const QString& begin, const QString& end = QString());

    /// The next line, whatever it says. Throws Mismatch if there is no whole one.
    QString TakeLine();

    /// How many lines are taken: the number of the last one.
    int LinesTaken() const { return line; }

    /// A place between two lines.
    struct Mark
    {
        int position;
        int line;
    };
    Mark Here() const { return {position, line}; }
    QByteArray Since(const Mark& mark) const { return bytes.mid(mark.position, position - mark.position); }
    int LinesSince(const Mark& mark) const { return line - mark.line; }

    /// Takes whole lines, so many of them, if they come next.
    bool Skip(const QByteArray& lines, int count);

    /// There must be nothing more. Throws Mismatch.
    void End() const;

private:
    QString Place() const;

    const QByteArray& bytes;
    const QString fileName;
    const QByteArray lineEnd;
    const Device& device;
    int position = 0;
    int line = 0; // lines taken so far
};

} // namespace verify
