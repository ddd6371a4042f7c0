// What the page shows of the entries of a catalogue.
#pragma once

#include "catalogue/catalogue.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace archivepage {

/// Of one entry; texts are empty and numbers without a value where there is none.
struct Row
{
    qint64 id = 0;
    bool isRecord = false;
    QString path; ///< as the catalogue stores it
    QString print;
    qint64 bytes = 0;
    QString gone;
    QString reason;
    QString error;
    QString station;
    QString recorder;
    QString trigger;
    std::optional<qint64> offset; ///< minutes
    std::optional<qint64> moment; ///< microseconds
    QString circuit;
    QString cause;
    QString setting;
    std::optional<double> duration;
    std::optional<qint64> samples;
    QString rates;
    qint64 analog = 0;
    qint64 digital = 0;
    qint64 events = 0;
    QString verified;
    qint64 forgiven = 0;

    QString faultKind;
    QString faultCircuit;
    QString direction;
    std::optional<double> clearing; ///< how long it lasts, s
    std::optional<double> current;
    std::optional<double> kilometres;
    std::optional<double> percent;
    std::optional<double> resistance;
    std::optional<double> startAfter;
    std::optional<double> tripAfter;
    std::optional<double> breakerAfter;
    std::optional<double> deadTime;
    std::optional<qint64> reclosed;

    std::optional<double> pictureFrom; ///< none: there is no picture
    std::optional<double> pictureTo;
    std::optional<double> peakCurrent;
    std::optional<double> peakVoltage;
    QString waves;

    bool IsFault() const { return !faultKind.isEmpty(); }

    /// Whether its files are there and could be read.
    bool IsThere() const { return gone.isEmpty() && reason.isEmpty(); }

    /// Name of the file with its page; the same contents under the same name have the same.
    QString PageName() const;
};

/// Gives the entries with a time, the oldest first, then those without.
void ForEachRow(catalogue::Catalogue& catalogue, const std::function<void(const Row& row)>& take);

/// The names of the digital channels that change in each entry, by its id.
QHash<qint64, QStringList> ChangedChannels(catalogue::Catalogue& catalogue);

/// Has all that the work reads be of one state of the catalogue, whoever is writing.
void AtOneMoment(catalogue::Catalogue& catalogue, const std::function<void()>& work);

} // namespace archivepage
