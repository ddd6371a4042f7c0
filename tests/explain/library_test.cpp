// The library's texts and the system's, as the program words them.
#include "explain/library.h"
#include "explain/pattern.h"
#include "explain/system.h"

#include "support/files.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cerrno>

namespace {

// The texts in a source of the library that fit an expression with two groups: which failure, and its detail.
QStringList TextsIn(const QString& source, const QRegularExpression& expression)
{
    const QString code = QString::fromUtf8(ReadBytes(QStringLiteral(LIBRARY_SOURCES "/") + source));
    QStringList texts;
    auto matches = expression.globalMatch(code);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        texts << match.captured(1);
    }
    return texts;
}

} // namespace

// A new text of the library must be known here, too.
TEST(LibraryText, IsKnownForEveryFailureInTheSources)
{
    const QRegularExpression literal("\"([^\"]*[А-я][^\"]*)\"");
    QStringList texts;
    for (const char* source : {"recording/anchanneldata.cpp", "recording/dichanneldata.cpp",
                               "preparation/segmentchain.cpp", "service/conversion.cpp"})
        texts << TextsIn(source, literal);
    const char* const loader = "recording/zufileformat.cpp";
    for (const auto& [name, text] : {std::make_pair("ReadFailure", "Ошибка при чтении файла"),
                                     std::make_pair("FormatFailure", "Ошибка формата файла"),
                                     std::make_pair("ValueFailure", "Ошибка значения параметра")}) {
        const QRegularExpression detail(QStringLiteral("Fail\\(%1, QStringLiteral\\(\"([^\"]+)").arg(name));
        for (const QString& one : TextsIn(loader, detail))
            texts << QStringLiteral("%1 [%2]").arg(QString::fromUtf8(text), one);
    }
    texts << TextsIn(loader, QRegularExpression("ErrorText = QStringLiteral\\(\"([^\"]+)"));
    for (const QString& kind : TextsIn(loader, QRegularExpression("Channels, \"([^\"]+)\"")))
        texts << kind + " [чтение файла, ошибка выделения памяти]";
    ASSERT_EQ(texts.size(), 41);
    for (const QString& text : texts) {
        const bool isSuccess = text.startsWith("Преобразование в Comtrade выполнено успешно");
        EXPECT_EQ(explain::LibraryText(text) == text, isSuccess) << text;
    }
}

TEST(LibraryText, TakesPathsAsTheyAre)
{
    EXPECT_EQ(
        explain::LibraryText("Ошибка обработки файла a.ZU [Ошибка загрузки параметров аналогового канала "
                             "[канал Q[1]:%2 не содержит данных]], окончание осциллограммы некорректно"),
        "the recording of 'a.ZU' ends early, a continuation file cannot be read: an analog channel cannot "
        "be read: 'Q[1]:%2' has no data [Ошибка обработки файла a.ZU [Ошибка загрузки параметров аналогового "
        "канала [канал Q[1]:%2 не содержит данных]], окончание осциллограммы некорректно]");
    EXPECT_EQ(explain::LibraryText("Ошибка записи в [%1/%2.cfgtmp]"),
              "'%1/%2.cfgtmp' cannot be written; check the free space and the permissions "
              "[Ошибка записи в [%1/%2.cfgtmp]]");
    EXPECT_EQ(explain::LibraryText("что-то новое"), "что-то новое");
}

TEST(PlacesOf, FitsTheWholeTextAlone)
{
    EXPECT_EQ(explain::PlacesOf("--out is required", "%1 is required"), QStringList{"--out"});
    EXPECT_FALSE(explain::PlacesOf("--out is required now", "%1 is required"));
    EXPECT_EQ(explain::PlacesOf("--a: b: c\nd", "%1: %2"), (QStringList{"--a", "b: c\nd"}));
}

TEST(SystemText, IsFoundByNumberAndByText)
{
    EXPECT_EQ(explain::SystemText(ENOSPC), "No space left on device");
    EXPECT_EQ(explain::SystemText(QStringLiteral("Permission denied")), "Permission denied");
    EXPECT_EQ(explain::SystemText(QStringLiteral("Unable to rename")), "Unable to rename");
}

TEST(SystemText, NamesTheDirectoryOfAFullDiskAndOfNothingElse)
{
    EXPECT_EQ(explain::SystemText(ENOSPC, "out"), "no room left on the disk of out");
    EXPECT_EQ(explain::SystemText(EDQUOT, "out"), "no room left on the disk of out");
    EXPECT_EQ(explain::SystemText(ENFILE, "out"), "Too many open files in system");
}

TEST(SystemText, IsNeverAnUnknownError)
{
    const QString unknown = "the system gives no reason";
    EXPECT_EQ(explain::SystemText(QStringLiteral("Unknown error")), unknown); // Qt's text
    EXPECT_EQ(explain::SystemText(QString()), unknown);
    EXPECT_EQ(explain::SystemText(0), unknown);
    EXPECT_EQ(explain::SystemText(ENOSPC), "No space left on device");
}
