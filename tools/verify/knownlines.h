// Lines of a record that were found right before.
//
// The recordings of a device have the same channels, so that most lines of a configuration or an INF file are
// those of the record before. Whether lines are right depends on their bytes and on what they are made from
// alone: where both are as they were, the answer is, too.
#pragma once

#include "recording/zufilelayout.h"
#include "verify/textwalk.h"

#include <QByteArray>
#include <QString>

#include <cstring>
#include <vector>

namespace verify {

/// All that the lines of a channel, or another part of a record, are made from. A part without texts or
/// scaling leaves them empty.
struct LineInputs
{
    QString name;
    QString phase;
    QString circuit;
    QString bay;
    QString unit;
    ZuAnChannelHeader scaling = {};

    bool operator==(const LineInputs& other) const
    {
        return name == other.name && phase == other.phase && circuit == other.circuit && bay == other.bay &&
               unit == other.unit &&
               // Nothing lies between the fields, and a factor is the same only bit by bit.
               // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
               std::memcmp(&scaling, &other.scaling, sizeof scaling) == 0;
    }
};

/// The lines of one kind: a part of them for each channel.
class KnownLines
{
public:
    /// Passes the part with this number, from 0, whose inputs are given: by comparing it with the known one,
    /// or else by check(), which goes through the lines and throws Mismatch.
    template <class Check>
    void Pass(size_t number, const LineInputs& inputs, TextWalk& text, const Check& check)
    {
        if (number >= parts.size())
            parts.resize(number + 1);
        Part& part = parts[number];
        if (part.lines > 0 && part.inputs == inputs && text.Skip(part.bytes, part.lines))
            return;
        const TextWalk::Mark before = text.Here();
        check();
        part = {inputs, text.Since(before), text.LinesSince(before)};
    }

private:
    struct Part
    {
        LineInputs inputs;
        QByteArray bytes;
        int lines = 0;
    };

    std::vector<Part> parts;
};

/// What is known of the records of one device.
struct KnownTexts
{
    KnownLines analogLines, stateLines;           // of the configuration
    KnownLines analogSections, stateSections;     // of the INF file: public ones
    KnownLines equipmentSections, signalSections; // and those of its Russian edition
};

} // namespace verify
