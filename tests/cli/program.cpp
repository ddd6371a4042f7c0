#include "program.h"

#include "station/station.h"

#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>

namespace {

Finished Run(const QString& directory, const QString& program, const QStringList& arguments,
             const QProcessEnvironment& environment)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    Finished result;
    if (!process.waitForFinished(-1))
        return result;
    if (process.exitStatus() == QProcess::NormalExit)
        result.code = process.exitCode();
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

QString Program()
{
    return QStringLiteral(ZUCMTR_PROGRAM);
}

} // namespace

Finished RunProgram(const QString& directory, const QStringList& arguments,
                    const QMap<QString, QString>& environment)
{
    QProcessEnvironment whole = QProcessEnvironment::systemEnvironment();
    for (auto variable = environment.begin(); variable != environment.end(); ++variable)
        whole.insert(variable.key(), variable.value());
    return Run(directory, Program(), arguments, whole);
}

Finished RunShell(const QString& directory, const QString& command)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), QFileInfo(Program()).path() + QLatin1Char(':') +
                                                   environment.value(QStringLiteral("PATH")));
    return Run(directory, QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command}, environment);
}

QString Untimed(QString text)
{
    static const QRegularExpression seconds(QStringLiteral("; \\d+\\.\\d\\d s\n"));
    return text.replace(seconds, QStringLiteral("; # s\n"));
}

QString Summary(int total, const QString& counts)
{
    return QStringLiteral("zucmtr: %1 recordings: %2; # s\n").arg(total).arg(counts);
}

QByteArray PlainIni(const QMap<QString, QString>& deviceKeys)
{
    station::StationOptions options;
    options.analogChannels = 0;
    options.discreteChannels = 0;
    options.deviceKeys = deviceKeys;
    return station::MakeIni(options).toUtf8();
}

recorderfile::Recording ShortRecording(int minutes)
{
    recorderfile::Recording recording;
    recording.trigTime += static_cast<uint32_t>(minutes) * 60;
    recording.startTime =
        recording.trigTime; // three samples do not reach from the usual start to the trigger
    recording.startMicroseconds = recording.trigMicroseconds;
    recording.Add(recorderfile::AnalogChannel{QStringLiteral("Q1:Ia"), QStringLiteral("А"), {1, -2, 3}});
    recording.Add(recorderfile::DiscreteChannel{QStringLiteral("Q1:x"), 0, {{0, 1}}});
    return recording;
}

QString ShortRecordName(int minutes)
{
    return QString::asprintf("240131,12%02d00.2,+3t,ПС Узловая,РАС-1.Восточные сети", minutes);
}

Workplace::Workplace(const QMap<QString, QString>& deviceKeys)
{
    Write(QStringLiteral("ZuDrv.ini"), PlainIni(deviceKeys));
    MakeDirectory(QStringLiteral("out"));
}

Finished Workplace::Convert(const QStringList& arguments) const
{
    const QStringList settings = {
        QStringLiteral("convert"),     QStringLiteral("--ini"),   QStringLiteral("ZuDrv.ini"),
        QStringLiteral("--defaults"),  QStringLiteral("Default"), QStringLiteral("--device"),
        QStringLiteral("Vostochnaya"), QStringLiteral("--out"),   QStringLiteral("out")};
    return RunProgram(Path(), settings + arguments);
}
