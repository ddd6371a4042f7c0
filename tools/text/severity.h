// How much a finding about a file matters.
#pragma once

enum class Severity {
    Note,    // worth knowing; the author may well have meant it
    Warning, // not what it looks like, or not what every reader understands
    Error    // something is lost, or is read wrongly, or not at all
};
