// No changed or missing byte of the configuration and the data goes unnoticed, whatever the form of the
// record.
#include "scene.h"

#include <gtest/gtest.h>

namespace {

class EveryByte : public testing::TestWithParam<size_t>
{
protected:
    EveryByte() : form(AllForms()[GetParam()]), scene(form.lines, SmallRecording()) {}

    QStringList Extensions() const { return form.cff ? QStringList{"cff"} : QStringList{"cfg", "dat"}; }

    const Form form;
    const Scene scene;
};

// Whether the byte belongs to a part of a CFF file whose values are compared by their form only.
bool IsLoose(const QByteArray& bytes, int position)
{
    const int begin = bytes.indexOf("--- file type: INF");
    const int end = bytes.indexOf("--- file type: DAT");
    return begin >= 0 && position >= begin && position < end;
}

// Whether the byte holds bits of a binary record's states after the last of three, which no reader uses.
bool IsSpare(const QByteArray& bytes, int position, const Form& form)
{
    constexpr int recordSize = 8 + 3 * 2 + 2;
    const int fromEnd = bytes.size() - 1 - position;
    return form.binary && fromEnd < 10 * recordSize && fromEnd % recordSize == 0;
}

} // namespace

TEST_P(EveryByte, RecordOfTheLibraryIsRight)
{
    EXPECT_EQ(scene.Verdict(), QString());
}

TEST_P(EveryByte, ChangedByteIsSeen)
{
    for (const QString& extension : Extensions()) {
        const QByteArray bytes = scene.Bytes(extension);
        const bool data = extension != QLatin1String("cfg");
        for (int i = 0; i < bytes.size(); ++i) {
            QByteArray changed = bytes;
            changed[i] = static_cast<char>(changed.at(i) ^ 1);
            if (!IsLoose(bytes, i) && !(data && IsSpare(bytes, i, form))) {
                EXPECT_NE(scene.VerdictWith(extension, changed), QString())
                    << extension << ", byte " << i << " after " << bytes.left(i).right(30).toStdString();
            }
        }
    }
}

TEST_P(EveryByte, CutIsSeen)
{
    QStringList extensions = Extensions();
    if (form.hasReport && !form.cff)
        extensions << QStringList{"hdr", "inf"};
    for (const QString& extension : extensions) {
        const QByteArray bytes = scene.Bytes(extension);
        const int step = bytes.size() > 1000 ? 11 : 1; // a text's lines are of any length
        for (int size = bytes.size() - 1; size >= 0; size -= step)
            EXPECT_NE(scene.VerdictWith(extension, bytes.left(size)), QString())
                << extension << " of " << size;
    }
}

TEST_P(EveryByte, AppendedBytesAreSeen)
{
    for (const QString& extension : Extensions()) {
        const QByteArray bytes = scene.Bytes(extension);
        EXPECT_NE(scene.VerdictWith(extension, bytes + bytes.right(40)), QString()) << extension;
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, EveryByte, testing::Range(size_t{0}, AllForms().size()),
                         [](const auto& test) { return std::string(AllForms()[test.param].name); });
