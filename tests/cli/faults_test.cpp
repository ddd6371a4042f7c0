// Files that could not be opened or read for a moment.
#include "program.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using recorderfile::Encode;

QMap<QString, QString> Fault(const QString& call, const QString& name, int nth, int error)
{
    return {{"LD_PRELOAD", FILE_FAULTS_LIBRARY},
            {"FAULT_CALL", call},
            {"FAULT_NAME", name},
            {"FAULT_NTH", QString::number(nth)},
            {"FAULT_ERROR", QString::number(error)}};
}

QMap<QString, QString> LastingFault(const QString& call, const QString& name, int nth, int error)
{
    QMap<QString, QString> fault = Fault(call, name, nth, error);
    fault["FAULT_ONWARDS"] = "1";
    return fault;
}

QStringList Arguments(const QStringList& more)
{
    return QStringList{"convert",  "--ini",       "ZuDrv.ini", "--defaults", "Default",
                       "--device", "Vostochnaya", "--out",     "out",        "--json"} +
           more;
}

} // namespace

TEST(Faults, SystemsReasonIsInTheUsersLanguage)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    QMap<QString, QString> environment = LastingFault("open", "a.ZU", 1, ENFILE);
    environment["LC_ALL"] = "ru_RU.UTF-8";
    environment["LANGUAGE"] = "";
    const Finished run = RunProgram(place.Path(), Arguments({"a.ZU"}), environment);
    EXPECT_EQ(run.code, 1);
    const QJsonObject object = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(object["reason"].toString(), "sourceUnreadable");
    EXPECT_EQ(object["error"].toString(),
              "не преобразована: «a.ZU» не удалось прочитать: слишком много открытых файлов в системе; "
              "преобразуйте меньше осциллограмм одновременно (--jobs)");
}
