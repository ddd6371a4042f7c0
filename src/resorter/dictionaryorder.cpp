// The order of the dictionary, and the list of equipment that follows from it. Runs once a device.
#include "resorter/ResorterZuCmtrConv.h"

#include <QHash>

#include <array>
#include <functional>
#include <iterator>
#include <memory>

namespace {

using Indexes = std::vector<unsigned int>;

// One level of the order: a stable distribution of the indexes from first to last over the classes 0 to
// count - 1. Returns how many fell into each class.
std::vector<size_t> Distribute(Indexes::iterator first, Indexes::iterator last, size_t count,
                               const std::function<size_t(unsigned int)>& classOf)
{
    std::vector<Indexes> classes(count);
    for (auto index = first; index != last; ++index)
        classes.at(classOf(*index)).push_back(*index);
    std::vector<size_t> sizes;
    for (const Indexes& members : classes) {
        first = std::copy(members.begin(), members.end(), first);
        sizes.push_back(members.size());
    }
    return sizes;
}

// Numbers the equipment names from first to last by first appearance.
QHash<QString, size_t> NumberNames(const std::vector<DictionaryZuCmtr*>& dictionary,
                                   Indexes::const_iterator first, Indexes::const_iterator last,
                                   std::vector<QString>& names)
{
    QHash<QString, size_t> numbers;
    for (auto index = first; index != last; ++index) {
        const QString& name = dictionary[*index]->EquipmentName;
        if (numbers.contains(name))
            continue;
        numbers.insert(name, names.size());
        names.push_back(name);
    }
    return numbers;
}

std::ptrdiff_t Signed(size_t size)
{
    return static_cast<std::ptrdiff_t>(size);
}

QString Joined(const QString& list, const QString& item)
{
    if (list.isEmpty())
        return item;
    return list + QLatin1Char(',') + item;
}

int SlotOfLetter(QChar letter)
{
    return letter == QLatin1Char('a')   ? 0
           : letter == QLatin1Char('b') ? 1
           : letter == QLatin1Char('c') ? 2
                                        : -1;
}

// Slot of a voltage or current in the record of its equipment: phases a, b, c and the threefold zero
// sequence; -1 for any other signal.
int PhaseSlot(const QString& signal)
{
    if (signal.length() == 2)
        return SlotOfLetter(signal[1]);
    if (signal.length() == 3 && signal[0] == QLatin1Char('3') && signal[2] == QLatin1Char('0'))
        return 3;
    return -1;
}

// The channel numbers of one piece of equipment, collected channel by channel.
class ChannelNumberList
{
public:
    // Takes a channel; false if it is a voltage or current without a slot, which is left out of the record.
    bool Add(const DictionaryZuCmtrAn& entry, unsigned int number)
    {
        const QString& signal = entry.SignalName;
        if (entry.SignalGroup == SignalGroupVT || entry.SignalGroup == SignalGroupCT) {
            const int slot = PhaseSlot(signal);
            if (slot < 0)
                return false;
            phases.at(static_cast<size_t>(slot)) = number;
        } else if (entry.SignalGroup == SignalGroupF && signal.length() >= 2) {
            // Deliberate: a frequency of no phase goes to the slot of phase a.
            phases.at(static_cast<size_t>(std::max(0, SlotOfLetter(signal.back())))) = number;
        } else {
            plain = Joined(plain, QString::asprintf("%u", number));
        }
        return true;
    }

    // The list in the form for the signal group of the first channel.
    QString Text(quint32 firstSignalGroup) const
    {
        if (firstSignalGroup == SignalGroupVT || firstSignalGroup == SignalGroupCT)
            return QString::asprintf("%u,%u,%u,%u", phases[0], phases[1], phases[2], phases[3]);
        if (firstSignalGroup == SignalGroupF)
            return QString::asprintf("%u,%u,%u", phases[0], phases[1], phases[2]);
        return plain;
    }

private:
    // Deliberate: voltages and currents of one name share these; the last group wins.
    std::array<unsigned int, 4> phases{};
    QString plain;
};

} // namespace

bool ResorterZuCmtrConv::SortChannelsCommon(std::vector<DictionaryZuCmtr*> dictionary,
                                            std::vector<unsigned int>& sorted)
{
    constexpr size_t Levels = std::size(gst_vl);
    constexpr size_t Groups = std::size(gst_eg);
    for (size_t i = 0; i < dictionary.size(); ++i) {
        if (dictionary[i]->HasSortParams)
            sorted.push_back(static_cast<unsigned int>(i));
    }
    GroupSizes.clear();
    GroupNames.clear();
    const std::vector<size_t> runs =
        Distribute(sorted.begin(), sorted.end(), Levels * Groups, [&](unsigned int index) {
            const DictionaryZuCmtr& entry = *dictionary[index];
            return (Levels - 1 - entry.VoltageLevel) * Groups + entry.EquipmentGroup; // highest level first
        });
    auto first = sorted.begin();
    for (const size_t run : runs) {
        const auto last = first + Signed(run);
        std::vector<QString> names;
        const QHash<QString, size_t> numbers = NumberNames(dictionary, first, last, names);
        const std::vector<size_t> sizes = Distribute(first, last, names.size(), [&](unsigned int index) {
            return numbers.value(dictionary[index]->EquipmentName);
        });
        for (const size_t size : sizes)
            GroupSizes.push_back(static_cast<unsigned int>(size));
        GroupNames.insert(GroupNames.end(), names.begin(), names.end());
        first = last;
    }
    return true;
}

bool ResorterZuCmtrConv::SortChannelsAn()
{
    AnSorted.clear();
    const std::vector<DictionaryZuCmtr*> dictionary(AnDictionary.begin(), AnDictionary.end());
    if (!SortChannelsCommon(dictionary, AnSorted))
        return false;
    size_t start = 0;
    for (size_t run = 0; run < GroupSizes.size(); ++run) {
        const auto first = AnSorted.begin() + Signed(start);
        Distribute(first, first + Signed(GroupSizes[run]), std::size(gst_sg),
                   [this](unsigned int index) { return AnDictionary[index]->SignalGroup; });
        AddEquipment(start, GroupSizes[run], GroupNames[run]);
        start += GroupSizes[run];
    }
    AnUnsorted.clear();
    return true;
}

// Appends the record of the equipment whose size entries start at place start of AnSorted.
void ResorterZuCmtrConv::AddEquipment(size_t start, size_t size, const QString& name)
{
    const DictionaryZuCmtrAn& first = *AnDictionary.at(AnSorted.at(start));
    ChannelNumberList numbers;
    QString cimIds;
    for (size_t place = start; place < start + size; ++place) {
        const DictionaryZuCmtrAn& entry = *AnDictionary.at(AnSorted.at(place));
        // The output number that the channel has if the recording holds every sorted signal.
        const auto number = static_cast<unsigned int>(place + 1);
        if (numbers.Add(entry, number) && !entry.CimChannelId.isEmpty())
            cimIds = Joined(cimIds, entry.CimChannelId);
    }
    auto equipment = std::make_unique<RCE_AnalogChannelEquipmentZuCmtr>(
        RCE_AnalogChannelEquipmentZuCmtr{first.EquipmentGroup, name, first.VoltageLevel, first.SignalGroup,
                                         numbers.Text(first.SignalGroup), cimIds});
    Equipment.push_back(equipment.get());
    equipment.release(); // the list owns it from here
}

bool ResorterZuCmtrConv::SortChannelsDi()
{
    DiSorted.clear();
    const std::vector<DictionaryZuCmtr*> dictionary(DiDictionary.begin(), DiDictionary.end());
    if (!SortChannelsCommon(dictionary, DiSorted))
        return false;
    auto first = DiSorted.begin();
    for (const unsigned int size : GroupSizes) {
        // Deliberate: the status type does not affect the order; a device group stays in ini order.
        Distribute(first, first + Signed(size), std::size(gst_dg),
                   [this](unsigned int index) { return DiDictionary[index]->DeviceGroup; });
        first += Signed(size);
    }
    StatusChannelCount = static_cast<quint32>(DiSorted.size());
    DiUnsorted.clear();
    return true;
}

bool ResorterZuCmtrConv::PreResort()
{
    ClearRCE();
    if (!SortChannelsAn())
        return false;
    GroupSizes.clear();
    if (!SortChannelsDi())
        return false;
    GroupSizes.clear();
    AnResorted.clear();
    DiResorted.clear();
    for (const unsigned int index : AnSorted)
        AnResorted.push_back(AnDictionary[index]);
    for (const unsigned int index : DiSorted)
        DiResorted.push_back(DiDictionary[index]);
    Prepared = true;
    return true;
}
