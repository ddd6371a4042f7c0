// Recordings whose file ends too early.
#include "program.h"

#include <gtest/gtest.h>

namespace {

using recorderfile::Encode;

recorderfile::Recording TwoChannels()
{
    recorderfile::Recording recording = ShortRecording();
    recording.sections.clear();
    recording.Add(recorderfile::DiscreteChannel{QStringLiteral("ВЛ 110:KQC"), 0, {{0, 1}}});
    recording.Add(recorderfile::AnalogChannel{QStringLiteral("ВЛ 110:Ia"), QStringLiteral("А"),
                                              std::vector<int16_t>(15000, 1)});
    return recording;
}

} // namespace

TEST(CutOff, SaysHowMuchIsMissingAndWhere)
{
    const Workplace place;
    const QByteArray whole = Encode(TwoChannels());
    ASSERT_EQ(whole.size(), 30479);
    const QString data = " [Ошибка загрузки параметров аналогового канала [чтение файла (данные AnChannel)]]";
    const QString section = " [Ошибка при чтении файла [ZuFileSectionHeader]]";
    const auto expect = [&](int size, const QString& text) {
        place.Write("a.ZU", whole.left(size));
        EXPECT_EQ(place.Convert({"a.ZU"}).err, "zucmtr: a.ZU: not converted: " + text + "\n") << size;
    };
    expect(30478, "cut off: 30,478 of 30,479 bytes, in channel 'ВЛ 110:Ia'" + data);
    expect(400, "cut off: 400 of at least 425 bytes, after 1 of its 2 channels" + section);
    expect(346, "cut off: 346 of at least 349 bytes, in channel 'ВЛ 110:KQC' [Ошибка загрузки параметров "
                "дискретного канала [чтение файла (данные DiChannel)]]");
    expect(200, "cut off: 200 of at least 263 bytes, in its header [Ошибка при чтении файла [ZuFileHeader]]");
}

TEST(CutOff, IsSaidByEachCommand)
{
    const Workplace place({{"Время ожидания", "1"}});
    place.Write("a.ZU", Encode(TwoChannels()).left(30000));
    const QString text = "cut off: 30,000 of 30,479 bytes, in channel 'ВЛ 110:Ia' [";
    for (const QStringList& command :
         {QStringList{"info", "a.ZU"}, QStringList{"check", "a.ZU"}, QStringList{"dictionary", "a.ZU"},
          QStringList{"view", "a.ZU"}, QStringList{"convert", "--dry-run", "a.ZU"},
          QStringList{"watch", "--once", "--out", "out", "."}}) {
        const Finished run = RunProgram(place.Path(), command);
        EXPECT_EQ(run.code, 1);
        EXPECT_TRUE((run.out + run.err).contains(text)) << command.join(' ') << run.out << run.err;
    }
}

TEST(CutOff, IsSaidInRussian)
{
    const Workplace place;
    const QByteArray whole = Encode(TwoChannels());
    const auto expect = [&](int size, const QString& text) {
        place.Write("a.ZU", whole.left(size));
        const Finished run = RunProgram(place.Path(), {"info", "a.ZU"}, {{"LC_ALL", "ru_RU.UTF-8"}});
        EXPECT_TRUE(run.err.startsWith("zucmtr: a.ZU: " + text + " [")) << run.err;
    };
    expect(30478, "файл обрезан: 30\u00A0478 байт из 30\u00A0479, в канале «ВЛ 110:Ia»");
    expect(346, "файл обрезан: 346 байт из не менее чем 349, в канале «ВЛ 110:KQC»");
    expect(400, "файл обрезан: 400 байт из не менее чем 425, каналов в нём: 1 из 2");
    expect(200, "файл обрезан: 200 байт из не менее чем 263, в заголовке");
}

TEST(CutOff, DamagedSizeIsNoEnd)
{
    const Workplace place;
    QByteArray bytes = Encode(TwoChannels());
    bytes[263 + 76 + 5 + 5 + 75] = 1; // highest byte of the second section's size
    place.Write("a.ZU", bytes);
    const QString err = place.Convert({"a.ZU"}).err;
    EXPECT_FALSE(err.contains("cut off")) << err;
    EXPECT_TRUE(err.contains("[Ошибка загрузки параметров аналогового канала")) << err;
}
