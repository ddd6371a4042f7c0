// The options that set the form of the records over the ini file.
#pragma once

#include "zucmtr/host/recordform.h"

#include <string>

namespace CLI {
class App;
}

/// Words; empty ones are not given.
struct FormOptions
{
    std::string files;    // --form
    std::string data;     // --data
    std::string revision; // --revision
    std::string encoding; // --encoding
};

/// Adds them to a subcommand; options must live as long as it.
void AddFormOptions(CLI::App& command, FormOptions& options);

/// Throws UsageError for a form that there is not.
RecordForm FormOf(const FormOptions& options);
