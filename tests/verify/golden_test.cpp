// The records of the whole conversions, which were not made for this, are verified against their recordings.
#include "support/files.h"
#include "verify/verifier.h"

#include <gtest/gtest.h>

#include <QDir>

#include <exception>

namespace {

const QString Root = QStringLiteral(ZUCMTR_CONVERSIONS);

// Verdicts on all first files of a folder, in order: empty for a right record.
QStringList Verdicts(const QString& folder)
{
    QStringList verdicts;
    const QDir inputs(Root + QLatin1Char('/') + folder + QStringLiteral("/inputs"));
    verify::Verifier verifier(inputs.filePath(QStringLiteral("ZuDrv.ini")), QStringLiteral("Defaults"),
                              QStringLiteral("Device"));
    for (const QString& name : inputs.entryList({QStringLiteral("*.ZU"), QStringLiteral("*.zu")},
                                                QDir::Files | QDir::CaseSensitive)) {
        try {
            verifier.Check(inputs.filePath(name),
                           Root + QLatin1Char('/') + folder + QStringLiteral("/expected"));
            verdicts << QString();
        } catch (const std::exception& error) {
            verdicts << QString::fromUtf8(error.what());
        }
    }
    return verdicts;
}

class Golden : public testing::TestWithParam<const char*>
{};

} // namespace

TEST_P(Golden, RecordsAreRight)
{
    const QStringList verdicts = Verdicts(QString::fromUtf8(GetParam()));
    EXPECT_FALSE(verdicts.isEmpty());
    for (const QString& verdict : verdicts)
        EXPECT_EQ(verdict, QString());
}

INSTANTIATE_TEST_SUITE_P(
    Folders, Golden,
    testing::Values("cff_ascii_replaces_its_pieces", "cff_binary_utf8", "chain_cut_at_a_different_segment",
                    "chain_cut_at_a_truncated_segment", "dictionary_and_bays_2013_ascii_cp1251",
                    "dictionary_and_bays_2013_binary_utf8", "discrete_channels_alone",
                    "one_segment_1999_ascii", "one_segment_1999_binary_with_17_states",
                    "recordings_share_a_device", "revision_1999_clears_earlier_hdr_and_inf",
                    "three_segments_compressed_binary"),
    [](const auto& test) { return std::string(test.param); });

TEST(GoldenFailures, GoodRecordAmongBadRecordingsIsRight)
{
    const QStringList verdicts = Verdicts(QStringLiteral("bad_files_and_a_good_one"));
    EXPECT_EQ(verdicts.count(QString()), 1);
    EXPECT_EQ(verdicts.size(), 5);
}

// Names with percent signs replace the revision in the configuration: the library intends that, but nobody
// can read the record.
TEST(GoldenFailures, RecordThatNoReaderTakesIsReported)
{
    const QStringList verdicts = Verdicts(QStringLiteral("odd_names_and_percent_signs"));
    ASSERT_EQ(verdicts.size(), 1);
    EXPECT_TRUE(verdicts[0].endsWith(".cfg, line 1: revision '%3' is none of 1991, 1999 and 2013"))
        << verdicts[0];
}
