// The discrete states of one record.
#include "writers/staterow.h"

#include "recording/zufileformat.h"

static size_t RowSize(StateRow::Form form, size_t channels)
{
    return form == StateRow::Form::Ascii ? 2 * channels : 2 * ((channels + 15) / 16);
}

StateRow::StateRow(Form form_, size_t count)
    : form(form_), bytes(RowSize(form, count), '\0'), channels(count), changes(count)
{
    if (form == Form::Ascii) {
        for (size_t i = 0; i < count; ++i) {
            bytes[2 * i] = ',';
            bytes[2 * i + 1] = '0';
        }
    }
}

void StateRow::Enter(const ZuFileFormat& segment, const std::vector<unsigned int>& order)
{
    for (size_t i = 0; i < channels.size(); ++i)
        channels[i] = segment.DiChannels.at(order.at(i));
    std::fill(changes.begin(), changes.end(), 0);
    nextChange = 0;
    lastTime = 0;
}

void StateRow::Update(quint32 segmentTime)
{
    if (segmentTime < lastTime) // all are asked again
        std::fill(changes.begin(), changes.end(), 0);
    nextChange = DiChannelData::NoChange;
    for (size_t i = 0; i < channels.size(); ++i) {
        if (segmentTime >= changes[i]) {
            Set(i, channels[i]->GetVal(segmentTime));
            changes[i] = channels[i]->NextChange(segmentTime);
        }
        nextChange = std::min(nextChange, changes[i]);
    }
}

void StateRow::Set(size_t channel, bool state)
{
    if (form == Form::Ascii) {
        bytes[2 * channel + 1] = state ? '1' : '0';
        return;
    }
    char& byte = bytes[channel / 8]; // words are little-endian, so bit k lies in byte k / 8
    const auto bit = static_cast<unsigned char>(1U << channel % 8);
    const auto old = static_cast<unsigned char>(byte);
    byte = static_cast<char>(state ? old | bit : old & ~bit);
}
