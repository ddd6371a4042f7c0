#include "child.h"

#include <unistd.h>

PreparedProcess::PreparedProcess(std::function<void()> prepare)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    prepareChild = std::move(prepare);
#else
    setChildProcessModifier(std::move(prepare));
#endif
    setProcessChannelMode(ForwardedChannels);
    setInputChannelMode(ForwardedInputChannel);
}

Child::Child(const QString& directory, const QStringList& arguments, int output, int error)
    : process([output, error] {
          dup2(output, STDOUT_FILENO);
          dup2(error, STDERR_FILENO);
      })
{
    process.setWorkingDirectory(directory);
    process.start(QStringLiteral(ZUCMTR_PROGRAM), arguments);
    process.waitForStarted(-1);
}

Child::~Child()
{
    process.kill();
    process.waitForFinished(-1);
}

void Child::Send(int number) const
{
    if (process.processId() > 0)
        kill(static_cast<pid_t>(process.processId()), number);
}

bool Child::HasEnded()
{
    return process.state() == QProcess::NotRunning || process.waitForFinished(0);
}

int Child::Code() const
{
    return CodeOf(process);
}
