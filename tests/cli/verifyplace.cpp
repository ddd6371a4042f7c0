#include "verifyplace.h"

namespace {

constexpr int Samples = 40;

} // namespace

recorderfile::Recording VerifiedRecording(int minutes)
{
    recorderfile::Recording recording;
    recording.trigTime += static_cast<uint32_t>(minutes) * 60;
    recording.startTime = recording.trigTime;
    recording.startMicroseconds = recording.trigMicroseconds;
    for (int channel = 0; channel < 3; ++channel) {
        recorderfile::AnalogChannel analog{
            QStringLiteral("Q%1:Ia").arg(channel + 1), QStringLiteral("А"), {}};
        analog.primary = 100.0F * static_cast<float>(channel + 1);
        analog.offset = channel == 1 ? 2.5F : 0.0F;
        for (int i = 0; i < Samples; ++i)
            analog.samples.push_back(static_cast<int16_t>((i * (37 + channel) + 7 * minutes) % 500 - 250));
        recording.Add(analog);
    }
    recording.Add(recorderfile::DiscreteChannel{QStringLiteral("Q1:x"), 0, {{0, 0}, {4000, 1}}});
    recording.Add(recorderfile::DiscreteChannel{QStringLiteral("Q2:y"), 0, {{0, 1}, {9000, 0}}});
    recording.Add(recorderfile::DiscreteChannel{QStringLiteral("Q3:z"), 0, {{0, 1}}});
    return recording;
}
