#include "zucmtr/commands/deviceoptions.h"

#include "text/texts.h"
#include "zucmtr/terminal/checks.h"

#include <CLI/CLI.hpp>

void AddDeviceOptions(CLI::App& command, DeviceOptions& options)
{
    command
        .add_option("--ini", options.ini,
                    HelpText("device",
                             "The recorders' ini file. Default: ZuDrv.ini beside the recordings or above "
                             "them, else in the current directory"))
        ->type_name("FILE");
    command
        .add_option(
            "--defaults", options.defaults,
            HelpText("device", "Section of the ini file with the defaults. Default: the section [Default]"))
        ->type_name("SECTION");
    command
        .add_option(
            "--device", options.device,
            HelpText("device", "Section of the ini file for this recorder. Default: the only other section"))
        ->type_name("SECTION");
    command
        .add_option_function<std::string>(
            "--log",
            [&options](const std::string& path) {
                options.log = path;
                options.hasLog = true;
            },
            HelpText("device", "File to which loading the ini file appends its log"))
        ->type_name("FILE");
}

DeviceChoice ChoiceOf(const DeviceOptions& options)
{
    return {QString::fromStdString(options.ini), QString::fromStdString(options.defaults),
            QString::fromStdString(options.device)};
}

void CheckLog(const DeviceOptions& options)
{
    if (options.hasLog)
        CheckLogFile(QString::fromStdString(options.log));
}
