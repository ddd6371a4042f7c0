// The tests start processes, for which Qt wants an application object.
#include <QCoreApplication>
#include <QTextCodec>

#include <gtest/gtest.h>

int main(int count, char** arguments)
{
    const QCoreApplication application(count, arguments);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); // of arguments and file names
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
