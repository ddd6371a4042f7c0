// Options of zucmtr sample as rows of tables, used by several test files.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <ostream>

/// Options of the command line, and the same settings made directly.
template <class Options>
struct GoodOption
{
    QStringList arguments;
    std::function<void(Options&)> set;
};

/// Options that cannot be taken, and what the program says of them.
struct WrongOption
{
    QStringList arguments;
    QString error;
};

template <class Options>
void PrintTo(const GoodOption<Options>& option, std::ostream* out)
{
    *out << "sample " << option.arguments.join(' ').toStdString();
}

inline void PrintTo(const WrongOption& option, std::ostream* out)
{
    *out << "sample " << option.arguments.join(' ').toStdString();
}

/// The line that follows when the command line cannot be understood.
inline QString Hint()
{
    return QStringLiteral("\nRun 'zucmtr sample --help' for the options and an example.");
}
