// The output directory disappears in the middle of a conversion.
#include "forms.h"
#include "shim.h"

#include <gtest/gtest.h>

#include <QDir>

namespace {

QString outDirectory;

void RemoveOutput()
{
    QDir(outDirectory).removeRecursively();
}

TEST(VanishingDirectory, NeitherCrashesNorTouchesTheSourcesAndTheNextConversionWorks)
{
    for (const Form& form : AllForms()) {
        Scene scene(form);
        outDirectory = scene.Root() + QStringLiteral("/out");
        shim::Plan plan;
        plan.action = RemoveOutput;
        for (plan.nth = 1;; ++plan.nth) {
            SCOPED_TRACE(testing::Message() << form.name << " at call " << plan.nth);
            scene.Reset();
            shim::Arm(scene.Root().toUtf8().constData(), plan);
            const bool converted = scene.Convert();
            shim::Disarm();
            if (*shim::Struck() == '\0')
                break;
            if (!converted) {
                EXPECT_EQ(scene.Sources().size(), 2);
            }
            scene.Reset();
            ASSERT_TRUE(scene.Convert()) << scene.Device().LastError;
            ASSERT_TRUE(scene.Output() == scene.Whole());
        }
    }
}

} // namespace
