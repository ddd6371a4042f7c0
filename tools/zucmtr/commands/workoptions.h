// The options of what is done with each recording: verification, a page, putting away.
#pragma once

#include "zucmtr/archive/scribes.h"
#include "zucmtr/run/worker.h"

#include <memory>
#include <string>

namespace CLI {
class App;
}

struct WorkOptions
{
    bool noVerify = false;
    bool view = false;
    bool events = false;
    std::string lines; // path of lines.ini, if it is named
    bool removeSource = false;
    std::string archive;
    std::string catalogue; // address; empty: none
};

/// Adds --view, --events, --lines, --verify, --no-verify, --remove-source, --archive and --catalogue to a
/// subcommand; options must live as long as it does.
void AddWorkOptions(CLI::App& command, WorkOptions& options);

/// Whether recordings are put away.
bool PutsAway(const WorkOptions& options);

/// The order given by the options, for records that go to out. Throws ConfigurationError if the archive is no
/// directory, or if recordings are to be put away unverified.
WorkOrder OrderOf(const WorkOptions& options, const QString& out);

/// Those that write what so many workers convert into the catalogue, with the completed choice; none without
/// one. To be called before there is a Host. Throws text::Error.
std::unique_ptr<archive::Scribes> ScribesOf(const WorkOptions& options, const DeviceChoice& choice,
                                            size_t count);

/// Has what happened found out for the report, too, if `summary`, and reads the data of the lines if they are
/// needed: those that are named, or the ones beside the ini file. Throws ConfigurationError.
void AddSummary(WorkOrder& order, const WorkOptions& options, bool summary, const QString& ini);
