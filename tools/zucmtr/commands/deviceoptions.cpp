#include "zucmtr/commands/deviceoptions.h"

#include "text/texts.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/command.h"

#include <CLI/CLI.hpp>

std::vector<CLI::Option*> AddChoiceOptions(CLI::App& command, ChoiceOptions& options,
                                           const ChoiceTexts& texts)
{
    const std::string defaults =
        HelpText("device", "Section of the ini file with the defaults. Default: the section [Default]");
    return {command.add_option("--ini", options.ini, texts.ini)->type_name("FILE"),
            command.add_option("--defaults", options.defaults, defaults)->type_name("SECTION"),
            command.add_option("--device", options.device, texts.device)->type_name("SECTION")};
}

void AddLinesOption(CLI::App& command, std::string& path)
{
    command
        .add_option("--lines", path,
                    HelpText("device", "Data of the lines, for the distance to a fault. Default: lines.ini "
                                       "beside the ini file, else beside the recording or record"))
        ->type_name("FILE");
}

DeviceChoice ChoiceOf(const ChoiceOptions& options)
{
    return {FromUtf8(options.ini), FromUtf8(options.defaults), FromUtf8(options.device)};
}

void AddDeviceOptions(CLI::App& command, DeviceOptions& options)
{
    AddChoiceOptions(
        command, options,
        {HelpText("device", "The recorders' ini file. Default: ZuDrv.ini beside the recordings or above "
                            "them, else in the current directory"),
         HelpText("device", "Section of the ini file for this recorder. Default: the only other section")});
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

void CheckLog(const DeviceOptions& options)
{
    if (options.hasLog)
        CheckLogFile(FromUtf8(options.log));
}
