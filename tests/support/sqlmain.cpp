// Qt wants an application object for its drivers; whatever it warns of fails the test.
#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int count, char** arguments)
{
    const QCoreApplication application(count, arguments);
    testing::InitGoogleTest(&count, arguments);
    qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { ADD_FAILURE() << qPrintable(text); });
    return RUN_ALL_TESTS();
}
