// Command lines that the program cannot take, used as tables by several test files.
#pragma once

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

/// A command line, and all of its standard error but "zucmtr: " and the last line.
struct Wrong
{
    QStringList arguments;
    int code;
    QString english;
    QString russian;
    QString helpOf = QString(); // the command that the last line names; empty if there is no such line
};

inline void PrintTo(const Wrong& wrong, std::ostream* out)
{
    QString words = wrong.arguments.join(' ').left(80);
    for (QChar& character : words)
        if (character < QLatin1Char(' '))
            character = QLatin1Char('?');
    *out << "zucmtr " << words.toStdString();
}

/// Runs each in a directory with files of all kinds, in English and in Russian (errors_test.cpp).
class WrongTest : public testing::TestWithParam<Wrong>
{};
