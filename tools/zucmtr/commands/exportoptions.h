// The options of what is exported, and in which form.
#pragma once

#include "forms/export.h"

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Words; empty ones are not given.
struct ExportFormOptions
{
    std::string form;
    std::string data;
    std::string revision;
    std::string encoding;
    std::string side;
    std::string time;
    bool decimalComma = false;
};

struct ExportPartOptions
{
    std::string from;
    std::string to;
    std::string window;
    std::vector<std::string> channels;
    bool changingOnly = false;
    int64_t every = 0; // 0: not given
    double rate = 0;
};

/// Adds them to a subcommand; options must live as long as it.
void AddExportFormOptions(CLI::App& command, ExportFormOptions& options);
void AddExportPartOptions(CLI::App& command, ExportPartOptions& options);

/// The request but for the span, which depends on the record. out: the path of --out, whose ending names the
/// form where --form does not. Throws UsageError for options that contradict each other.
forms::Request RequestOf(const ExportFormOptions& options, const ExportPartOptions& part, const QString& out);

/// The form as convert names its own: "cfg 2013 binary utf8"; "csv", "mat".
QString FormText(const forms::Request& request, const comtrade::Configuration& written);

/// The ending of the file that stands for a form: ".cfg".
QString EndingOf(forms::Form form);
