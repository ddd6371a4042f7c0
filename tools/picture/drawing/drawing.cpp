// What the module gives to the program.
#include "picture/drawing/overview.h"
#include "picture/module.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <cstring>

namespace picture {

namespace {

class Drawing final : public Module
{
public:
    std::unique_ptr<QCoreApplication> MakeApplication(int& count, char** arguments) const override
    {
        return std::make_unique<QGuiApplication>(count, arguments);
    }

    void FindFonts() const override { QFontDatabase().families(); }

    QByteArray Draw(const analysis::Oscillogram& oscillogram, const analysis::Summary& summary,
                    Format format) const override
    {
        return DrawOverview(oscillogram, summary, format);
    }
};

} // namespace

} // namespace picture

/// The module, for the program of the same version; otherwise null.
extern "C" __attribute__((visibility("default"))) const picture::Module* ZuCmtrPicture(const char* version)
{
    static const picture::Drawing drawing;
    return std::strcmp(version, ZUCMTR_VERSION) == 0 ? &drawing : nullptr;
}
