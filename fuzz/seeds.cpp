// Writes the initial inputs of the fuzzers, made with the recording builder: fuzz_seeds DIRECTORY.
#include "recorderfile/compress.h"
#include "recorderfile/recorderfile.h"
#include "station/station.h"

#include <QDir>
#include <QFile>

#include <cmath>
#include <cstdio>

using namespace recorderfile;

namespace {

QString root;

void Write(const char* fuzzer, const QString& name, const QByteArray& bytes)
{
    const QString folder = root + QLatin1Char('/') + QString::fromLatin1(fuzzer);
    if (!QDir().mkpath(folder) || !WriteFile(folder + QLatin1Char('/') + name, bytes)) {
        std::fprintf(stderr, "cannot write into %s\n", qPrintable(folder));
        std::exit(1);
    }
}

QByteArray Piece(const QByteArray& bytes)
{
    QByteArray piece;
    piece.append(static_cast<char>(bytes.size() & 0xff));
    piece.append(static_cast<char>(bytes.size() >> 8 & 0xff));
    return piece + bytes;
}

std::vector<int16_t> Wave(size_t count, double amplitude)
{
    std::vector<int16_t> samples(count);
    for (size_t i = 0; i < count; ++i)
        samples[i] = static_cast<int16_t>(std::lround(amplitude * std::sin(0.1309 * static_cast<double>(i))));
    return samples;
}

QByteArray SmallRecording(bool compressed, const char* comment, int segment)
{
    Recording recording;
    recording.comment = QString::fromUtf8(comment);
    AnalogChannel current;
    current.name = QStringLiteral("W1:Ia");
    current.unit = QStringLiteral("А");
    current.samples = Wave(120, 500);
    current.compressed = compressed ? 1 : 0;
    current.blockSamples = 16;
    AnalogChannel voltage = current;
    voltage.name = QStringLiteral("W1:Ua");
    voltage.unit = QStringLiteral("кВ");
    DiscreteChannel trip;
    trip.name = QStringLiteral("W1:Откл");
    trip.changes = {{0, 0}, {10000, static_cast<uint8_t>(segment + 1)}};
    return Encode(recording.Add(current).Add(voltage).Add(trip));
}

void WriteRecordings()
{
    const char* const comments[] = {"",
                                    "Пуск ДЗ (W1:Ia,2,1.5,t) y",
                                    "Пуск ПП(W1:U,50,48) y",
                                    "Пуск ДП(a,b) W1:Откл",
                                    "Пуск Ч(W1:Ua,49,48,47,46) x",
                                    "Пуск Г(W1:Ua,5,0.1,0.2) x",
                                    "внешний"};
    const QByteArray ini = "nAnMax=2\nnDiMax=1\nnBayMax=1\nA01=W1:Ia,V_L=110 E_G=L S_G=CT VL_IND=1\n"
                           "A02=W1:Ua,V_L=110 E_G=L S_G=VT\nD01=W1:Откл,V_L=110 E_G=L D_G=RP S_T=SBO\n"
                           "BAY01=W1,Line,W2\n";
    int number = 0;
    for (const char* comment : comments) {
        for (const bool compressed : {false, true}) {
            const QByteArray first = SmallRecording(compressed, comment, 0);
            Write("recorderfile", QStringLiteral("small-%1").arg(number), first);
            const char switches = static_cast<char>(number * 19 & 0x7f);
            Write("conversion", QStringLiteral("small-%1").arg(number),
                  QByteArray(1, switches) + Piece(ini) +
                      Piece(number % 3 == 0 ? SmallRecording(compressed, comment, 1) : QByteArray()) + first);
            ++number;
        }
    }
}

void WriteAreas()
{
    const std::vector<int16_t> samples = Wave(200, 300);
    QByteArray points;
    points.append(static_cast<char>(200)).append('\0').append('\0');
    for (const uint16_t block : std::vector<uint16_t>{1, 7, 16, 64, 200})
        Write("uncompress", QStringLiteral("block-%1").arg(block), points + CompressSamples(samples, block));
    for (int width = 0; width <= 15; ++width) {
        const std::vector<int16_t> gentle(200, width == 0 ? int16_t{5} : int16_t{0});
        Write("uncompress", QStringLiteral("width-%1").arg(width),
              points + CompressSamplesWithWidth(gentle, 16, width));
    }
}

void WriteComments()
{
    const QByteArray names =
        Piece("W1:Ia") + "\x0a" + Piece("W1:Ua") + "\x14" + Piece("F") + "\x01" + Piece("W1");
    const char* const comments[] = {"Пуск 31.01.24 12:00:00.250000 ДЗ (W1:Ia,2,1.5,t) y, z",
                                    "Пуск (GPS)ПП(W1:I,50,48) '",
                                    "Пуск ДП(a,b) W1:x",
                                    "Пуск Ч(F,49,48,47,46) x",
                                    "Пуск Г(W1:Ua,5,0.1,0.2) x",
                                    "Пуск ДЗ(F,1)",
                                    "Пуск )x( (y)"};
    int number = 0;
    for (const char* comment : comments)
        Write("startcomment", QStringLiteral("comment-%1").arg(number++), names + comment);
}

void WriteInis()
{
    station::StationOptions options;
    options.analogChannels = 12;
    options.discreteChannels = 8;
    QString ini = station::MakeIni(options);
    ini.replace(station::DefaultsSection(), QStringLiteral("D"));
    ini.replace(station::DeviceSection(), QStringLiteral("R"));
    Write("ini", QStringLiteral("station"), ini.toUtf8());
    Write("ini", QStringLiteral("no-line-end"),
          "[D]\nx=1\n[R]\nnAnMax=4000000000\nA01=a:b,V_L=110 E_G=L S_G=VT");
}

// A record of each form: the revision, how the data are stored, one file or several.
class RecordSeeds
{
public:
    void WriteAll()
    {
        for (const int revision : {1991, 1999, 2013})
            for (const char* type : {"ASCII", "BINARY", "BINARY32", "FLOAT32"})
                for (const char bits : {'\x00', '\x02', '\x04'})
                    WriteForm(revision, type, bits);
    }

private:
    static constexpr int Samples = 5;
    static constexpr int Analog = 9; // enough for the fast reader of lines
    static constexpr int States = 17;

    static void WriteForm(int revision, const QByteArray& type, char bits)
    {
        const QByteArray configuration = Configuration(revision, type);
        const QByteArray data = type == "ASCII" ? AsciiData() : BinaryData(type);
        const QString name =
            QStringLiteral("%1-%2-%3").arg(revision).arg(QString(type).toLower()).arg(bits + 0);
        Write("comtrade", name, QByteArray(1, bits) + Piece(configuration) + Piece("report\r\n") + data);
        const QByteArray mark = type == "ASCII" ? "ASCII" : "BINARY: " + QByteArray::number(data.size());
        Write("comtrade", name + QStringLiteral("-cff"),
              QByteArray(1, static_cast<char>(bits | 1)) + "--- file type: CFG ---\r\n" + configuration +
                  "--- file type: HDR ---\r\nreport\r\n--- file type: DAT " + mark + " ---\r\n" + data);
    }

    static QByteArray Configuration(int revision, const QByteArray& type)
    {
        const bool isOld = revision == 1991;
        QByteArray text = isOld ? "S,D\r\n" : "S,D," + QByteArray::number(revision) + "\r\n";
        text += QByteArray::number(Analog + States) + ',' + QByteArray::number(Analog) + "A," +
                QByteArray::number(States) + "D\r\n";
        for (int i = 1; i <= Analog; ++i)
            text +=
                QByteArray::number(i) + ",Ia,A,Q,kA,0.5,-1,0,-32767,32767" + (isOld ? "\r\n" : ",10,1,S\r\n");
        for (int i = 1; i <= States; ++i)
            text += QByteArray::number(i) + (isOld ? ",T,0\r\n" : ",T,,Q,0\r\n");
        text += "50\r\n2\r\n1000,2\r\n2000," + QByteArray::number(Samples) + "\r\n";
        const QByteArray moment = isOld ? "01/31/91,12:00:00.25\r\n" : "31/01/2024,12:00:00.25\r\n";
        text += moment + moment + type + "\r\n";
        return text + (isOld ? "" : "1\r\n") + (revision == 2013 ? "+3h00,+3h00\r\n0,3\r\n" : "");
    }

    static QByteArray AsciiData()
    {
        QByteArray data;
        for (int sample = 1; sample <= Samples; ++sample) {
            data += QByteArray::number(sample) + ',' + QByteArray::number(417 * sample);
            for (int i = 0; i < Analog; ++i)
                data += ',' + QByteArray::number((i % 2 == 0 ? 37 : -4111) * sample * i);
            for (int i = 0; i < States; ++i)
                data += (i + sample) % 3 == 0 ? ",1" : ",0";
            data += "\r\n";
        }
        return data;
    }

    static QByteArray BinaryData(const QByteArray& type)
    {
        QByteArray data;
        const int bytes = type == "BINARY" ? 2 : 4;
        for (int sample = 1; sample <= Samples; ++sample) {
            data += Word(sample, 4) + Word(417 * sample, 4);
            for (int i = 0; i < Analog; ++i)
                data += Word(type == "FLOAT32" ? 0x3F800000 + 4096 * i : 100 * sample - i, bytes);
            data += Word(sample, 2) + Word(1, 2);
        }
        return data;
    }

    static QByteArray Word(int value, int bytes)
    {
        QByteArray word;
        for (int i = 0; i < bytes; ++i)
            word.append(static_cast<char>(value >> (8 * i) & 0xff));
        return word;
    }
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: fuzz_seeds DIRECTORY\n");
        return 2;
    }
    root = QFile::decodeName(argv[1]);
    WriteRecordings();
    WriteAreas();
    WriteComments();
    WriteInis();
    RecordSeeds().WriteAll();
    return 0;
}
