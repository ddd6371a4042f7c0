// The output order of a recording's channels. Runs once a conversion, on its first segment.
#include "resorter/ResorterZuCmtrConv.h"

#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"

#include <functional>
#include <memory_resource>
#include <unordered_map>

namespace {

struct HashOfName
{
    size_t operator()(const QString& name) const { return qHash(name); }
};

// Places by name. The names are not copied, and all nodes come from one piece of memory: with a copy and an
// allocation each, 4000 names cost more than ten times as much as 400.
struct NameMap
{
    explicit NameMap(size_t count) : memory(count * BytesOfEntry), places(count, &memory) {}

    static constexpr size_t BytesOfEntry = 64; // node and bucket
    std::pmr::monotonic_buffer_resource memory;
    std::pmr::unordered_map<std::reference_wrapper<const QString>, unsigned int, HashOfName,
                            std::equal_to<QString>>
        places;
};

// One kind of channel: what determines its order, and where that is stored.
template <class Channel, class Entry>
struct Matching
{
    const std::vector<Channel*>& channels;
    const std::vector<Entry*>& dictionary; // in dictionary order
    std::vector<unsigned int>& order;
    std::vector<unsigned int>& found; // for each channel found, its index in dictionary
    quint32& matched;

    void Clear()
    {
        order.clear();
        found.clear();
        matched = 0;
    }

    // Whether the order of the previous recording can be kept. Clears it if the names differ.
    bool IsKept()
    {
        if (channels.size() != order.size()) {
            Clear();
            return false;
        }
        // Deliberate: the names are compared by place in the file, so that only a recording that starts with
        // the dictionary's channels in its order keeps the previous one.
        for (size_t i = 0; i < matched; ++i) {
            if (channels.at(i)->Name != dictionary.at(found.at(i))->FullName) {
                Clear();
                return false;
            }
        }
        return true;
    }

    // Looks up the dictionary's signals in the recording and puts the other channels after them.
    void Build()
    {
        NameMap firstOfName(channels.size());
        for (size_t j = 0; j < channels.size(); ++j)
            firstOfName.places.emplace(channels[j]->Name, static_cast<unsigned int>(j)); // keeps the first
        std::vector<bool> known(channels.size(), false);
        for (size_t i = 0; i < dictionary.size(); ++i) {
            const auto channel = firstOfName.places.find(dictionary[i]->FullName);
            if (channel == firstOfName.places.end())
                continue;
            order.push_back(channel->second);
            found.push_back(static_cast<unsigned int>(i));
            known[channel->second] = true;
        }
        matched = static_cast<quint32>(found.size());
        for (size_t j = 0; j < channels.size(); ++j) {
            if (!known[j])
                order.push_back(static_cast<unsigned int>(j));
        }
    }
};

} // namespace

bool ResorterZuCmtrConv::SortZuFile(ZuFileFormat* file)
{
    if (!SortZuFileAn(file) || !SortZuFileDi(file))
        return false;
    AddAdditionalIndexes(file);
    return true;
}

bool ResorterZuCmtrConv::SortZuFileAn(ZuFileFormat* file)
{
    Matching<AnChannelData, DictionaryZuCmtrAn> matching{file->AnChannels, AnResorted, PrevFileAnIndexes,
                                                         PrevFileAnDictIndexes, PrevFileAnMatched};
    if (file->AnChannels.empty() || matching.IsKept())
        return true;
    matching.Build();
    if (PrevFileAnMatched != AnResorted.size())
        Device->LogMessages.push_back(
            QStringLiteral("В исходном файле найдены не все сигналы с параметрами сортировки из файла "
                           "конфигурации, файл inf недостоверен"));
    return true;
}

bool ResorterZuCmtrConv::SortZuFileDi(ZuFileFormat* file)
{
    Matching<DiChannelData, DictionaryZuCmtrDi> matching{file->DiChannels, DiResorted, PrevFileDiIndexes,
                                                         PrevFileDiDictIndexes, PrevFileDiMatched};
    // Deliberate: a discrete signal that the recording lacks is not reported.
    if (!file->DiChannels.empty() && !matching.IsKept())
        matching.Build();
    return true;
}

void ResorterZuCmtrConv::AddAdditionalIndexes(ZuFileFormat* file)
{
    if (PrevFileAnMatched != PrevFileAnDictIndexes.size() || PrevFileAnMatched > PrevFileAnIndexes.size())
        return;
    if (file->AnChannels.empty())
        return; // the order is that of an earlier recording
    for (size_t i = 0; i < PrevFileAnMatched; ++i) {
        const DictionaryZuCmtrAn& entry = *AnResorted.at(PrevFileAnDictIndexes[i]);
        AnChannelData& channel = *file->AnChannels.at(PrevFileAnIndexes[i]);
        if (channel.AddIndexPos != -1 && !entry.VlInd.isEmpty() &&
            channel.AddIndexPos <= channel.CfgName.length())
            channel.CfgName.insert(channel.AddIndexPos, entry.VlInd);
    }
}

void ResorterZuCmtrConv::ClearPrevFileAnIndexes()
{
    PrevFileAnIndexes.clear();
    PrevFileAnDictIndexes.clear();
    PrevFileAnMatched = 0;
}

void ResorterZuCmtrConv::ClearPrevFileDiIndexes()
{
    PrevFileDiIndexes.clear();
    PrevFileDiDictIndexes.clear();
    PrevFileDiMatched = 0;
}
