// The times of a record's samples against its rates.
#pragma once

#include "comtrade/record.h"

#include <QString>

namespace verify {

/// Takes the samples one by one. Writers round their times or cut them off, and write their rates with six
/// digits or more: what this explains is right.
class TimeCheck
{
public:
    explicit TimeCheck(const comtrade::Configuration& configuration_);

    /// False if the sample has another time than the rate gives it. Samples without a time are right.
    bool Take(const comtrade::Row& row);

    /// The time that the sample taken last should have, in the units of the record.
    double Expected() const { return expected; }

    /// If nearly all times are rounded exactly, those that are not are wrong, however little. They are known
    /// only at the end: how many there are, with the first one (its number from 1, what is there and what
    /// should be).
    struct Inexact
    {
        qint64 count = 0;
        qint64 sample = 0;
        qint64 found = 0;
        qint64 expected = 0;
    };
    Inexact NearlyRight() const;

private:
    void EnterRate(qint64 time);
    qint64 Unwrapped(qint64 time) const;

    const comtrade::Configuration& configuration;
    size_t rate = 0;
    double step = 0;   // units of time; 0: not constant
    qint64 sample = 0; // from 1
    qint64 first = 0;  // sample of the rate
    qint64 start = 0;  // its time
    qint64 last = 0;   // sample whose time was right
    qint64 before = 0; // its time
    double expected = 0;
    Inexact inexact;
};

} // namespace verify
