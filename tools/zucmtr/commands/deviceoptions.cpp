#include "zucmtr/commands/deviceoptions.h"

#include "comtrade/record.h"
#include "text/texts.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

static std::string SectionText()
{
    return HelpText("device", "Section of the ini file for this recorder. Default: the only other section");
}

std::vector<CLI::Option*> AddChoiceOptions(CLI::App& command, ChoiceOptions& options,
                                           const ChoiceTexts& texts)
{
    const std::string defaults =
        HelpText("device", "Section of the ini file with the defaults. Default: the section [Default]");
    return {AddValue(command, "--ini", options.ini, "FILE", texts.ini),
            AddValue(command, "--defaults", options.defaults, "SECTION", defaults),
            AddValue(command, "--device", options.device, "SECTION", texts.device)};
}

void AddLinesOption(CLI::App& command, std::string& path)
{
    AddValue(command, "--lines", path, "FILE",
             HelpText("device", "Data of the lines, for the distance to a fault. Default: lines.ini "
                                "beside the ini file, else beside the recording or record"));
}

void AddEncodingOption(CLI::App& command, std::string& encoding)
{
    AddValue(command, "--encoding", encoding, "NAME",
             HelpText("device", "Encoding of a COMTRADE record's texts, such as CP866, KOI8-R or GBK. "
                                "Default: found out"))
        ->check(values::Encoding());
}

QString EncodingOf(const std::string& encoding, const QString& file)
{
    return comtrade::IsRecordFile(file) ? FromUtf8(encoding) : QString();
}

void AddReadingOptions(CLI::App& command, ReadingOptions& options, const std::string& plainText)
{
    CLI::Option* plain = command.add_flag("--plain", options.plain, plainText);
    const ChoiceTexts texts{
        HelpText("device",
                 "The recorders' ini file. Default: ZuDrv.ini beside the recording or in the current "
                 "directory, if there is one"),
        SectionText()};
    for (CLI::Option* option : AddChoiceOptions(command, options.choice, texts))
        option->excludes(plain);
    AddLinesOption(command, options.lines);
    AddEncodingOption(command, options.encoding);
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
         SectionText()});
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
