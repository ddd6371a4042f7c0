// The sorting dictionary of a device, the output order of the channels, and the INF file.
#pragma once

#include "resorter/bayoptionalparam.h"
#include "resorter/dictionary.h"
#include "resorter/rcetables.h"

#include <QMutex>
#include <QObject>
#include <QString>

#include <map>
#include <vector>

class QFile;
class QTextCodec;
class ZuCmtrDevParam;
class ZuFileFormat;

class ResorterZuCmtrConv : public QObject
{
    Q_OBJECT

public:
    bool Prepared;                                            // PreResort has run
    std::vector<DictionaryZuCmtrAn*> AnDictionary;            // analog entries in ini order; owned
    std::vector<DictionaryZuCmtrDi*> DiDictionary;            // discrete entries in ini order; owned
    std::vector<unsigned int> AnSorted;                       // indexes into AnDictionary in dictionary order
    std::vector<unsigned int> DiSorted;                       // indexes into DiDictionary in dictionary order
    std::vector<unsigned int> AnUnsorted;                     // ordinals of entries without good parameters,
    std::vector<unsigned int> DiUnsorted;                     // until the sort
    std::vector<unsigned int> GroupSizes;                     // of the sort: lengths of the equipment runs
    std::vector<QString> GroupNames;                          // of the sort: their equipment names
    quint32 StatusChannelCount;                               // sorted discrete entries
    QString ErrorText;                                        // of the last failed load
    ZuCmtrDevParam* Device;                                   // not owned
    RCE_PowerObjectParamZuCmtr PowerObject;                   // taken from the device once
    std::vector<RCE_AnalogChannelEquipmentZuCmtr*> Equipment; // created by PreResort; owned
    std::vector<DictionaryZuCmtrAn*> AnResorted;              // sorted entries of AnDictionary, not owned
    std::vector<DictionaryZuCmtrDi*> DiResorted;              // sorted entries of DiDictionary, not owned
    std::vector<unsigned int> PrevFileAnIndexes;     // output order of the recording's analog channels
    std::vector<unsigned int> PrevFileDiIndexes;     // output order of its discrete channels
    std::vector<unsigned int> PrevFileAnDictIndexes; // for each one found: its index in AnResorted
    std::vector<unsigned int> PrevFileDiDictIndexes; // for each one found: its index in DiResorted
    quint32 PrevFileAnMatched;                       // analog channels found in the dictionary
    quint32 PrevFileDiMatched;                       // discrete channels found in the dictionary
    QTextCodec* InfCodec;                            // of the INF file; not owned
    std::map<QString, BayOptionalParam*> BayParams;  // by BayName; values owned
    QMutex Mutex;                                    // never locked

    /// Takes the power object's names from device as they are now.
    explicit ResorterZuCmtrConv(ZuCmtrDevParam* device);
    ~ResorterZuCmtrConv() override;

    /// Reads the dictionary and the bays from section group. What is odd goes to the log and to the device's
    /// queue. False at a bad maximum or an entry without a name: ErrorText and log say why.
    bool LoadFromIni(const QString& fileName, const QString& group);

    /// Releases dictionary, equipment and bays.
    void Clear();

    /// The value after key (or spacedKey) in the parameter string text, up to the next blank. False if
    /// neither is there, with value unchanged, or if the value is empty.
    bool LoadOneParam(const QString& text, const QString& key, const QString& spacedKey, QString& value);

    /// Reads V_L and E_G of a parameter string as table rows. False if one is absent or unknown; what was
    /// read before stays.
    bool LoadParamCommon(const QString& text, unsigned int& voltageLevel, unsigned int& equipmentGroup);

    /// The same with S_G of an analog entry.
    bool LoadParamAn(const QString& text, unsigned int& voltageLevel, unsigned int& equipmentGroup,
                     unsigned int& signalGroup);

    /// The same with D_G and S_T of a discrete entry.
    bool LoadParamDi(const QString& text, unsigned int& voltageLevel, unsigned int& equipmentGroup,
                     unsigned int& deviceGroup, unsigned int& statusType);

    /// Stores the bay of that name in *param. False if there is none; *param is then unchanged.
    bool FindOptBayParams(QString name, BayOptionalParam** param);

    /// If fullName is "equipment:signal" of a known equipment: its name, and the display text of its bay if
    /// the bay has a circuit name (an empty text otherwise). Else nothing changes.
    void SetEqNameIfExist(const QString& fullName, QString& equipmentName, QString& displayName);

    /// Orders the dictionary and makes the list of equipment.
    bool PreResort();

    /// Parts of PreResort: order of the analog entries with the equipment, order of the discrete entries.
    bool SortChannelsAn();
    bool SortChannelsDi();

    /// Appends to sorted (empty before) the indexes of all entries with parameters, by voltage level (highest
    /// first), equipment group and equipment name (first appearance first). GroupSizes and GroupNames
    /// describe the runs of equal equipment.
    bool SortChannelsCommon(std::vector<DictionaryZuCmtr*> dictionary, std::vector<unsigned int>& sorted);

    /// Makes the output order of file's channels: those of the dictionary in its order, then the others in
    /// file order; then inserts the additional indexes into the CFG names. Keeps the order of the previous
    /// recording where it fits.
    bool SortZuFile(ZuFileFormat* file);
    bool SortZuFileAn(ZuFileFormat* file);
    bool SortZuFileDi(ZuFileFormat* file);

    /// Inserts VL_IND of the dictionary into the CFG names of the analog channels that were found in it.
    void AddAdditionalIndexes(ZuFileFormat* file);

    /// Forget the order of the previous recording.
    void ClearPrevFileAnIndexes();
    void ClearPrevFileDiIndexes();

    /// Releases the equipment records.
    void ClearRCE();

    /// Writes text in InfCodec up to its first NUL. A failed write sets err and throws std::runtime_error.
    void WriteString(QFile& file, const QString& text, bool& err);

    /// The same with the bytes of text unchanged.
    void WriteString(QFile& file, const char* text, bool& err);

    /// The same with text taken as UTF-8 and written in InfCodec.
    void WriteStringUtf8(QFile& file, const char* text, bool& err);

    /// The public sections: file description, one for each analog and one for each discrete channel, from
    /// the texts that the CFG writer left on zufile. False for a failed write and for a CFG line with the
    /// wrong number of fields, which leaves its section without keys.
    bool DoInfSec_File_Description(QFile& file, ZuFileFormat* zufile);
    bool DoInfSec_Analog_Channels(QFile& file, ZuFileFormat* zufile);
    bool DoInfSec_Status_Channels(QFile& file, ZuFileFormat* zufile);

    /// Writes the whole INF file, public and Russian sections. False only for a failed write.
    bool WriteInf(QFile& file, ZuFileFormat* zufile);

private:
    void AddEquipment(size_t start, size_t size, const QString& name);

    // Reads a code parameter as its row of table; false if it is absent or unknown, row then stays.
    template <size_t Rows>
    bool LoadCode(const QString& text, const QString& key, const QString& spacedKey,
                  const char* const (&table)[Rows], unsigned int& row)
    {
        QString code;
        if (!LoadOneParam(text, key, spacedKey, code))
            return false;
        for (size_t i = 0; i < Rows; ++i) {
            if (code == QLatin1String(table[i])) {
                row = static_cast<unsigned int>(i);
                return true;
            }
        }
        return false;
    }
};
