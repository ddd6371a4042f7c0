// The re-sorter: its lifetime and its look-ups.
#include "resorter/ResorterZuCmtrConv.h"

#include "device/zucmtrdevparam.h"

#include <QStringList>

ResorterZuCmtrConv::ResorterZuCmtrConv(ZuCmtrDevParam* device)
    : Prepared(false), StatusChannelCount(0), Device(device),
      PowerObject{device->PowerSystem, device->Subject, device->Object}, PrevFileAnMatched(0),
      PrevFileDiMatched(0), InfCodec(nullptr)
{}

ResorterZuCmtrConv::~ResorterZuCmtrConv()
{
    Clear();
}

void ResorterZuCmtrConv::Clear()
{
    Prepared = false;
    qDeleteAll(AnDictionary);
    AnDictionary.clear();
    qDeleteAll(DiDictionary);
    DiDictionary.clear();
    StatusChannelCount = 0;
    AnSorted.clear();
    DiSorted.clear();
    AnUnsorted.clear();
    DiUnsorted.clear();
    GroupSizes.clear();
    ClearRCE();
    for (const auto& bay : BayParams)
        delete bay.second;
    BayParams.clear();
}

void ResorterZuCmtrConv::ClearRCE()
{
    qDeleteAll(Equipment);
    Equipment.clear();
}

bool ResorterZuCmtrConv::FindOptBayParams(QString name, BayOptionalParam** param)
{
    const auto bay = BayParams.find(name);
    if (bay == BayParams.end())
        return false;
    *param = bay->second;
    return true;
}

void ResorterZuCmtrConv::SetEqNameIfExist(const QString& fullName, QString& equipmentName,
                                          QString& displayName)
{
    const QStringList parts = fullName.split(QLatin1Char(':'));
    if (parts.size() != 2)
        return;
    const QString left = parts[0].trimmed();
    bool known = false;
    for (const RCE_AnalogChannelEquipmentZuCmtr* equipment : Equipment)
        known = known || equipment->EquipmentName == left;
    if (!known)
        return;
    equipmentName = left;
    displayName = QLatin1String("");
    BayOptionalParam* bay = nullptr;
    if (!FindOptBayParams(left, &bay))
        return;
    // Deliberate: the test is on the circuit name and the copy is of the display text.
    if (!bay->CircuitName.isEmpty())
        displayName = bay->DisplayName;
}
