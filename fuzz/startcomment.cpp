// A start comment with channels and a dictionary. The first pieces are channel names and a bay, the rest is
// the comment, all in UTF-8.
#include "support.h"

#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"

#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Pieces pieces(data, size);
    ZuCmtrDevParam device;
    device.Resorter = new ResorterZuCmtrConv(&device);
    ZuFileFormat file;
    for (int i = 0; i < 3; ++i) {
        auto* channel = new AnChannelData;
        channel->Name = QString::fromUtf8(pieces.Piece());
        channel->Unit = QStringLiteral("А");
        channel->m_HeaderAn.Primary = static_cast<float>(pieces.Byte()) * 100.0F;
        file.AnChannels.push_back(channel);
        device.Resorter->Equipment.push_back(new RCE_AnalogChannelEquipmentZuCmtr{
            0, channel->Name.section(QLatin1Char(':'), 0, 0), 0, 0, QString(), QString()});
    }
    auto* bay = new BayOptionalParam;
    bay->BayName = QString::fromUtf8(pieces.Piece());
    bay->DisplayName = QStringLiteral("bay %1 %2 %3");
    bay->CircuitName = QStringLiteral("circuit");
    device.Resorter->BayParams.emplace(bay->BayName, bay);
    file.TrigMicroseconds = 250000;
    file.StartMicroseconds = 1;
    file.Comment = QString::fromUtf8(pieces.Rest());
    file.RenameAllChannelsName(&device);
    try {
        file.ParseComment(&device);
    } catch (const std::out_of_range&) {
        // two values where three belong
    }
    device.Clear();
    return 0;
}
