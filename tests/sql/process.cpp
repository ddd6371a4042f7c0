#include "process.h"

#include "support/childend.h"
#include "text/error.h"

#include <QFile>

#include <gtest/gtest.h>

#include <array>
#include <unistd.h>

QString InAProcess(const std::function<QString()>& work)
{
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        QString said;
        try {
            said = work();
        } catch (const text::Error& error) {
            said = error.Message();
        }
        const QByteArray bytes = said.toUtf8();
        const ssize_t written = write(ends[1], bytes.constData(), static_cast<size_t>(bytes.size()));
        _exit(written == bytes.size() ? 0 : 1);
    }
    close(ends[1]);
    QFile from;
    EXPECT_TRUE(from.open(ends[0], QIODevice::ReadOnly, QFile::AutoCloseHandle));
    const QString said = QString::fromUtf8(from.readAll());
    EXPECT_EQ(EndOf(child), 0);
    return said;
}

void BecomeNobody()
{
    if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
        _exit(1);
}
