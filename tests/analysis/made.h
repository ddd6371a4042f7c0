// Records for the tests, without files.
#pragma once

#include "analysis/oscillogram.h"

#include <QString>

#include <vector>

namespace made {

/// A discrete channel with its states, one character ('0', '1') a sample.
struct State
{
    QString name;
    QString circuit;
    QString states;
    bool normalState = false;
};

/// A record at a rate (Hz), its trigger at a sample, first sample at noon, of zone +3.
inline analysis::Oscillogram Record(const std::vector<State>& states, double hertz = 1000, qint64 trigger = 0)
{
    analysis::Oscillogram record;
    record.total = states.empty() ? 0 : states.front().states.size();
    record.config.rates = {{hertz, record.total}};
    record.config.lineFrequency = 50;
    record.config.timeCode = QStringLiteral("+3");
    record.config.start.date = record.config.trigger.date = QDate(2024, 1, 31);
    record.config.start.decimals = record.config.trigger.decimals = 6;
    record.config.start.nanoseconds = qint64{43200} * 1'000'000'000;
    record.config.trigger.nanoseconds =
        record.config.start.nanoseconds + qRound64(static_cast<double>(trigger) * 1e9 / hertz);
    record.axis = analysis::TimeAxis::FromRates(record.config);
    for (const State& state : states) {
        comtrade::StateChannel channel;
        channel.number = static_cast<int>(record.config.states.size()) + 1;
        channel.name = state.name;
        channel.circuit = state.circuit;
        channel.normalState = state.normalState;
        record.config.states.push_back(channel);
        record.states.emplace_back();
        for (const QChar one : state.states)
            record.states.back().Add(one == QLatin1Char('1'));
    }
    return record;
}

} // namespace made
