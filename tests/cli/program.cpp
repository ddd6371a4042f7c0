#include "program.h"

#include "station/station.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

Finished Run(const QString& directory, const QString& program, const QStringList& arguments,
             const QProcessEnvironment& environment)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.waitForFinished(-1);
    return {CodeOf(process), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString Program()
{
    return QStringLiteral(ZUCMTR_PROGRAM);
}

} // namespace

int CodeOf(const QProcess& process)
{
    const bool ended = process.state() == QProcess::NotRunning && process.error() != QProcess::FailedToStart;
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QProcessEnvironment EnvironmentWith(const QMap<QString, QString>& variables)
{
    QProcessEnvironment whole = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        whole.insert(variable.key(), variable.value());
    return whole;
}

Finished RunProgram(const QString& directory, const QStringList& arguments,
                    const QMap<QString, QString>& environment)
{
    return Run(directory, Program(), arguments, EnvironmentWith(environment));
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
        recording.trigTime; // three samples are too short for the usual time from start to trigger
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
