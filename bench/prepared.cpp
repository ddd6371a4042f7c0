#include "prepared.h"

#include <stdexcept>

namespace bench {

PreparedRecording::PreparedRecording(Device& device_, const QString& firstFile)
    : device(device_), chain(device_.Parameters())
{
    ZuCmtrDevParam& parameters = device.Parameters();
    if (!chain.Load(firstFile) || !chain.Check())
        throw std::runtime_error("the recording does not load: " + parameters.LastError.toStdString());
    chain.Prepare();
    unsigned int number = 0;
    for (AnChannelData* channel : First().AnChannels)
        channel->DoCfgDescription(++number);
}

void PreparedRecording::WriteDat(const QString& path)
{
    ZuCmtrDevParam& parameters = device.Parameters();
    parameters.FileDat.setFileName(path);
    if (!device.Converter().WriteDat(Files(), &parameters))
        throw std::runtime_error("the DAT file is not written");
}

} // namespace bench
