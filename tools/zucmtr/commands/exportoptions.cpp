#include "zucmtr/commands/exportoptions.h"

#include "text/texts.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

void AddExportFormOptions(CLI::App& command, forms::FormWords& options)
{
    const auto add = [&command](const char* name, std::string& word, const std::vector<std::string>& words,
                                const std::string& help) {
        AddValue(command, name, word, "KIND", help)->check(values::OneOf(words));
    };
    add("--form", options.form, forms::FormNames(),
        HelpText("export",
                 "cfg, a COMTRADE record of several files; cff, one of a single file; csv, a table; "
                 "mat, variables of MATLAB. Default: by the ending of --out, else cfg"));
    add("--data", options.data, forms::DataNames(),
        HelpText("export", "Samples of a COMTRADE record. Default: as in the record"));
    add("--revision", options.revision, forms::RevisionNames(),
        HelpText("export", "Revision of COMTRADE. Default: as in the record, if it allows the form"));
    add("--out-encoding", options.encoding, forms::EncodingNames(),
        HelpText("export", "Encoding of the texts of a COMTRADE record. Default: utf8"));
    add("--side", options.side, forms::SideNames(),
        HelpText("export", "Values of the primary or the secondary circuit. Default: as in the record"));
    add("--time", options.time, forms::TimeNames(),
        HelpText("export", "Times of a table: seconds from the trigger (the default), or date and time "
                           "(ISO 8601)"));
    command.add_flag("--decimal-comma", options.decimalComma,
                     HelpText("export", "Numbers of a table with a decimal comma, columns separated by "
                                        "semicolons"));
}

void AddExportPartOptions(CLI::App& command, forms::PartWords& options)
{
    CLI::Option* from = AddValue(command, "--from", options.from, "TIME",
                                 HelpText("export", "Start with this moment: seconds from the trigger (-0.2, "
                                                    "200ms), or a date and time (2024-01-31T12:00:00.25)"));
    CLI::Option* to =
        AddValue(command, "--to", options.to, "TIME", HelpText("export", "End with this moment"));
    AddValue(command, "--window", options.window, "SECONDS",
             HelpText("export", "Keep this many seconds around the trigger, a third of them before it; or, "
                                "with 'fault', from 0.1 s before the fault to 0.1 s after it"))
        ->excludes(from)
        ->excludes(to);
    AddValue(command, "--channels", options.channels, "NAME",
             HelpText("export", "Keep these channels, and no others: by name, circuit or number (A3,D5); * "
                                "and ? stand for any letters"));
    command.add_flag("--changing-only", options.changingOnly,
                     HelpText("export", "Leave out discrete channels that never change"));
    CLI::Option* every = AddValue(command, "--every", options.every, "N",
                                  HelpText("export", "Keep one sample of N, as it is: without a filter"))
                             ->transform(values::WholeNumber(forms::LeastEvery, forms::MostEvery));
    AddValue(command, "--rate", options.rate, "HZ",
             HelpText("export", "Compute samples of this rate, with a filter against aliasing"))
        ->check(values::Number(forms::LeastRate, forms::MostRate))
        ->excludes(every);
}
