// Trouble of the service itself, through no fault of a recording: a directory that is gone, a disk that is
// full, a journal that cannot be written. It is reported once, then waited for; no recording is blamed.
#pragma once

#include "text/error.h"

#include <QDateTime>
#include <QString>

#include <chrono>

class WatchTrouble
{
public:
    using Clock = std::chrono::steady_clock;

    /// What shows that a trouble is over.
    enum class Cure {
        Check, // its cause can be checked
        Work   // only a recording that succeeds, or that none is left to try
    };

    /// The first pause; pauses double up to a minute, or stay at the first one if that is longer.
    explicit WatchTrouble(std::chrono::milliseconds firstPause_);

    /// Prints the event, and a line on standard error, unless the trouble of this word is already known. The
    /// next try comes after a pause. file: the recording that ran into it, if there was one.
    void Meet(const char* word, const QString& text, Cure cure, const QString& file = QString());

    /// What was checked is in order again.
    void Checked();

    /// A recording succeeded.
    void Worked();

    /// No recording is left that could show whether it is over; the next one that arrives will.
    void NobodyWaits();

    bool IsOn() const { return on; }
    bool MayTry() const { return !on || Clock::now() >= next; }
    Clock::time_point Next() const { return next; }
    const QString& Message() const { return text; }

    /// The word of the one that is on; empty if none is. Since when it is on; null if none is.
    QString Word() const { return on ? word : QString(); }
    QDateTime Since() const { return on ? since : QDateTime(); }

private:
    void End();

    const std::chrono::milliseconds firstPause;
    std::chrono::milliseconds pause;
    bool on = false;
    Cure cure = Cure::Check;
    QString word;
    QString text;
    Clock::time_point begin{};
    QDateTime since;
    Clock::time_point next{};
};

/// Trouble with which the watch cannot start or go on, but which may have passed when the service manager
/// starts the program again.
class PassingTrouble : public text::Error
{
public:
    using text::Error::Error;
};

/// A directory that is written to and is missing, or cannot be written to at the moment.
class WatchPlaceError : public text::Error
{
public:
    WatchPlaceError(const char* word_, const QString& sentence) : text::Error(sentence), word(word_) {}
    const char* const word; // of reasons.h
};

/// Throws WatchPlaceError for such a directory. option: the option that names it.
void CheckPlace(const char* word, const QString& option, const QString& directory);
