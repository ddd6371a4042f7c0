// Every file call of a conversion fails once, in every possible way, and what must remain is checked.
#include "forms.h"
#include "shim.h"

#include <gtest/gtest.h>

#include <QFileInfo>

#include <cerrno>

namespace {

struct Failure
{
    const char* name;
    unsigned kinds;
    int error;
    bool shortCount;
    bool harmless; // the system asks to try again or took a part: nothing may come of it
};

const Failure Failures[] = {
    {"ENOSPC", shim::Open | shim::Write | shim::Rename | shim::Sync, ENOSPC, false, false},
    {"EIO", shim::All, EIO, false, false},
    {"EACCES", shim::Open | shim::Rename | shim::Unlink, EACCES, false, false},
    {"EINTR", shim::Open | shim::Read | shim::Write, EINTR, false, true},
    {"short count", shim::Read | shim::Write, 0, true, true},
};

class Faults : public testing::TestWithParam<int>
{
protected:
    Faults() : form(AllForms().at(static_cast<size_t>(GetParam()))), scene(form) {}

    // Makes the nth call fail. False if the conversion has no such call.
    bool RunWithFault(const Failure& failure, long nth)
    {
        scene.Reset();
        shim::Plan plan;
        plan.kinds = failure.kinds;
        plan.nth = nth;
        plan.error = failure.error;
        plan.shortCount = failure.shortCount;
        shim::Arm(scene.Root().toUtf8().constData(), plan);
        result = scene.Convert();
        shim::Disarm();
        struck = QString::fromUtf8(shim::Struck());
        return !struck.isEmpty();
    }

    bool DeletesSources() const { return form.deviceLines.contains("Удалять исходные=1"); }

    void CheckFailed()
    {
        // The final names were not touched, and the sources are all there.
        for (auto file = scene.Earlier().begin(); file != scene.Earlier().end(); ++file)
            EXPECT_TRUE(scene.Output().value(file.key()) == file.value()) << file.key();
        EXPECT_EQ(scene.Sources(), QStringList({QStringLiteral("rec.Z01"), QStringLiteral("rec.ZU")}));
        const QString text = scene.Device().LastError;
        if (IsTemporary(struck)) {
            EXPECT_EQ(text, QStringLiteral("Ошибка записи в [%1]").arg(QFileInfo(struck).fileName()));
        } else {
            EXPECT_TRUE(text.startsWith(QStringLiteral("Ошибка"))) << text;
        }
    }

    void CheckSucceeded()
    {
        const Tree output = scene.Output();
        const bool cut = scene.Device().LogMessages.size() > 1; // the continuation could not be read
        const Tree& expected = cut ? scene.WholeOfFirst() : scene.Whole();
        for (auto file = expected.begin(); file != expected.end(); ++file) {
            const QByteArray found = output.value(file.key());
            const bool whole = found == file.value() || found == scene.Earlier().value(file.key());
            // A failed write of a text line counts as done, so the line may be missing in the file itself.
            const bool mayLackLines = shim::StruckKind() == shim::Write && IsTemporary(struck);
            EXPECT_TRUE(whole || mayLackLines) << file.key();
        }
        if (!DeletesSources()) {
            EXPECT_EQ(scene.Sources().size(), 2);
        }
        EXPECT_EQ(scene.Device().LastError, QString());
    }

    void CheckNextConversion(const Failure& failure)
    {
        if (failure.harmless) {
            EXPECT_TRUE(result);
            EXPECT_TRUE(scene.Output() == scene.Whole());
        }
        scene.ResetSources();
        EXPECT_TRUE(scene.Convert()) << scene.Device().LastError;
        EXPECT_TRUE(scene.Output() == scene.Whole());
    }

    const Form form;
    Scene scene;
    bool result = false;
    QString struck;
};

TEST_P(Faults, LeaveWholeFilesAndANextConversionThatWorks)
{
    int points = 0;
    for (const Failure& failure : Failures) {
        for (long nth = 1; RunWithFault(failure, nth); ++nth) {
            SCOPED_TRACE(testing::Message() << form.name << ", " << failure.name << " at call " << nth << ", "
                                            << struck.toStdString());
            ++points;
            if (result)
                CheckSucceeded();
            else
                CheckFailed();
            CheckNextConversion(failure);
            if (HasFailure())
                return;
        }
    }
    EXPECT_GT(points, 30);
    std::printf("%s: %d fault points\n", form.name, points);
}

INSTANTIATE_TEST_SUITE_P(OutputForms, Faults, testing::Range(0, static_cast<int>(AllForms().size())));

} // namespace
