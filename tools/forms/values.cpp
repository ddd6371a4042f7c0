#include "forms/values.h"

namespace forms {

namespace {

comtrade::Configuration WithoutCodes(comtrade::Configuration configuration)
{
    for (comtrade::AnalogChannel& channel : configuration.analog) {
        channel.a = 1;
        channel.b = 0;
    }
    configuration.revision = comtrade::Revision::R2013; // which has nanoseconds
    configuration.start.decimals = 9;
    configuration.timeMultiplier = 1;
    return configuration;
}

} // namespace

Values::Values(Stream& source_)
    : source(source_), clock(source.Config()), configuration(WithoutCodes(source.Config()))
{}

bool Values::Next(comtrade::Block& block)
{
    if (!source.Next(block))
        return false;
    const std::vector<comtrade::AnalogChannel>& channels = source.Config().analog;
    double* value = block.analog.data();
    for (size_t i = 0; i < block.count; ++i) {
        block.times[i] = clock.At(sample++, block.times[i]);
        block.numbers[i] = static_cast<quint32>(sample);
        for (const comtrade::AnalogChannel& channel : channels) {
            *value = channel.a * *value + channel.b;
            ++value;
        }
    }
    return true;
}

} // namespace forms
