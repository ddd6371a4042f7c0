// Randomly damaged records: they are read, or refused with a text, and nothing else happens.
#include "examples.h"

#include <gtest/gtest.h>

#include <random>

namespace {

QByteArray Spoilt(QByteArray bytes, std::mt19937& random)
{
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    const int changes = 1 + below(4);
    for (int i = 0; i < changes && !bytes.isEmpty(); ++i) {
        const int place = below(bytes.size());
        switch (below(4)) {
        case 0:
            bytes[place] = static_cast<char>(below(256));
            break;
        case 1:
            bytes.remove(place, 1 + below(20));
            break;
        case 2:
            bytes.insert(place, bytes.mid(below(bytes.size()), 1 + below(20)));
            break;
        default:
            bytes.truncate(place);
            break;
        }
    }
    return bytes;
}

} // namespace

namespace {

struct Form
{
    int revision;
    const char* type;
    bool isContainer;
};

QByteArray Configuration(const Form& form)
{
    if (form.revision == 1991)
        return QByteArray("S,D\r\n3,2A,1D\r\n1,Ia,A,Q,A,0.5,-1,0,-99999,99998\r\n2,Ub,B,Q,kV,1,0,0,-9,9\r\n1,"
                          "T,0\r\n50\r\n"
                          "1\r\n2400,4\r\n01/31/91,11:59:59.75\r\n01/31/91,12:00:00.25\r\n") +
               form.type + "\r\n";
    QByteArray text = ExampleConfiguration().replace("ASCII", form.type);
    if (form.revision == 1999)
        text = text.replace(",2013", ",1999").replace("+3h00,+3h00\n0,3\n", "");
    return text;
}

QByteArray Data(const QByteArray& type)
{
    if (type == "ASCII")
        return "1,0,-5,32767,1\r\n2,417,6,7,0\r\n3,833,,8,1\r\n4,1250,1,2,0\r\n";
    const int bytes = type == "BINARY" ? 2 : 4;
    QByteArray data;
    for (char i = 1; i <= 4; ++i)
        data += QByteArray(1, i) + QByteArray(4, '\0') + QByteArray(3, i) + QByteArray(2 * bytes, i) +
                QByteArray(1, '\x01') + '\0';
    return data;
}

std::vector<Form> AllForms()
{
    std::vector<Form> forms;
    for (const int revision : {1991, 1999, 2013})
        for (const char* type : {"ASCII", "BINARY", "BINARY32", "FLOAT32"})
            for (const bool isContainer : {false, true})
                forms.push_back({revision, type, isContainer});
    return forms;
}

// One file to spoil; without a container it is cut again where the data start, wherever that is now.
QByteArray Whole(const Form& form)
{
    const QByteArray data = Data(form.type);
    const QByteArray length =
        QByteArray(form.type) == "ASCII" ? QByteArray("ASCII") : "BINARY: " + QByteArray::number(data.size());
    return (form.isContainer ? "--- file type: CFG ---\r\n" : "") + Configuration(form) +
           (form.isContainer ? "--- file type: HDR ---\r\nreport\r\n--- file type: DAT " + length + " ---\r\n"
                             : "") +
           data;
}

QString WriteRecord(const TestDirectory& directory, const Form& form, const QByteArray& bytes)
{
    if (form.isContainer)
        return directory.Write("rec.cff", bytes);
    const int size = std::max(0, int(bytes.size() - Data(form.type).size()));
    directory.Write("rec.dat", bytes.mid(size));
    return directory.Write("rec.cfg", bytes.left(size));
}

// Reads forgivingly or not, by rows or blocks, and counts the records.
int CountRecords(const QString& path, int way)
{
    comtrade::Record reader(path, way % 2 == 0 ? comtrade::ReadingOptions() : comtrade::Strict());
    comtrade::Row row;
    comtrade::Block block;
    int records = 0;
    if (way < 2)
        while (reader.Next(row))
            ++records;
    else
        while (reader.Next(block))
            records += static_cast<int>(block.count);
    return records;
}

} // namespace

TEST(ComtradeMutations, AreReadOrRefusedWithAText)
{
    const TestDirectory directory;
    std::mt19937 random(20240131);
    for (const Form& form : AllForms()) {
        const QByteArray record = Whole(form);
        int refused = 0;
        for (int i = 0; i < 150; ++i) {
            const QByteArray bytes = Spoilt(record, random);
            const QString path = WriteRecord(directory, form, bytes);
            int records = 0;
            const QString error = ErrorOf([&] { records = CountRecords(path, i % 4); });
            refused += error.isEmpty() ? 0 : 1;
            ASSERT_LE(records, bytes.size());
            ASSERT_TRUE(error.isEmpty() || error.contains("rec.")) << error;
        }
        EXPECT_GT(refused, 0) << form.revision << form.type;
        EXPECT_LT(refused, 150) << form.revision << form.type;
    }
}
