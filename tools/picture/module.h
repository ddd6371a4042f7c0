// The module that draws: a shared object of its own, loaded when a picture is wanted. The libraries for
// drawing take longer to load than most commands to run.
#pragma once

#include "analysis/summary.h"
#include "text/error.h"

#include <QByteArray>
#include <QCoreApplication>

#include <memory>

namespace picture {

/// Format of a still picture.
enum class Format { Svg, Png };

/// The module is not there or not of this version; the message says what to do.
class ModuleError : public text::Error
{
public:
    using text::Error::Error;
};

/// What the module does. The program and the module are built and installed together.
class Module
{
public:
    /// Makes an application that can paint, from arguments that live as long. Whoever calls it has set the
    /// environment that it is to see.
    virtual std::unique_ptr<QCoreApplication> MakeApplication(int& count, char** arguments) const = 0;

    /// Searches for the fonts, which the first letter would otherwise do. Needs that application.
    virtual void FindFonts() const = 0;

    /// The picture's file. Needs that application.
    virtual QByteArray Draw(const analysis::Oscillogram& oscillogram, const analysis::Summary& summary,
                            Format format) const = 0;

protected:
    ~Module() = default; // it lives in the module
};

/// The module; it is loaded by the first call and stays. Throws ModuleError.
const Module& Loaded();

/// The one function that the module gives away.
constexpr const char* ModuleFunction = "ZuCmtrPicture";

} // namespace picture
