#include "zucmtr/watch/commandwords.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace {

class Splitter
{
public:
    explicit Splitter(const QString& command_) : command(command_) {}

    QStringList Words()
    {
        for (; at < command.size(); ++at)
            Take(command[at]);
        if (!quote.isNull())
            throw ConfigurationError(
                Tr("exec", "--exec: '%1' has a quotation mark (%2) without its second one")
                    .arg(command, QString(quote)));
        EndWord();
        if (words.isEmpty() || words.first().isEmpty())
            throw ConfigurationError(Tr("exec", "--exec: '%1' names no program").arg(command));
        return words;
    }

private:
    void Take(QChar character)
    {
        if (character == QLatin1Char('\\') && quote != QLatin1Char('\''))
            Append(Next());
        else if (!quote.isNull() && character == quote)
            quote = QChar();
        else if (quote.isNull() && (character == QLatin1Char('\'') || character == QLatin1Char('"')))
            Open(character);
        else if (quote.isNull() && character.isSpace())
            EndWord();
        else
            Append(character);
    }

    QChar Next()
    {
        if (++at == command.size())
            throw ConfigurationError(
                Tr("exec", "--exec: '%1' ends in a backslash; double it if it is meant").arg(command));
        return command[at];
    }

    void Open(QChar mark)
    {
        quote = mark;
        isInWord = true; // "" is a word
    }

    void Append(QChar character)
    {
        word += character;
        isInWord = true;
    }

    void EndWord()
    {
        if (isInWord)
            words << word;
        word.clear();
        isInWord = false;
    }

    const QString command;
    int at = 0;
    QChar quote;
    bool isInWord = false;
    QString word;
    QStringList words;
};

} // namespace

QStringList CommandWords(const QString& command)
{
    return Splitter(command).Words();
}

void CheckProgram(const QString& program)
{
    if (!program.contains(QLatin1Char('/'))) {
        if (QStandardPaths::findExecutable(program).isEmpty())
            throw ConfigurationError(
                Tr("exec", "--exec: there is no program '%1' in the directories of PATH; give its path")
                    .arg(program));
        return;
    }
    const QFileInfo info(program);
    if (!info.exists())
        throw ConfigurationError(Tr("exec", "--exec: there is no program '%1'; check the path").arg(program));
    if (!info.isFile() || !info.isExecutable())
        throw ConfigurationError(
            Tr("exec", "--exec: '%1' cannot be run; give an executable file, or make it one: chmod +x")
                .arg(program));
}
