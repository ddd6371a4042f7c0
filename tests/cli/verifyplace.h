// A recording and its record for the tests of zucmtr verify.
#pragma once

#include "program.h"

#include "zucmtr/commands/recordpair.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

/// Three analog and three discrete channels of 40 samples, whose values are all different.
recorderfile::Recording VerifiedRecording(int minutes = 0);

/// A place with the recording rec.ZU.
class Verify : public testing::Test
{
protected:
    void SetUp() override { place.Write("rec.ZU", recorderfile::Encode(VerifiedRecording())); }

    /// Converts, and returns the path of the record relative to the place.
    QString Convert(const QStringList& options = {}) const
    {
        const Finished run = place.Convert(options + QStringList{"rec.ZU"});
        EXPECT_EQ(run.code, 0) << run.err;
        return RecordIn("out");
    }

    QString RecordIn(const QString& directory) const
    {
        const QStringList names =
            QDir(place.Path(directory)).entryList({"*.cfg", "*.cff"}, QDir::Files, QDir::Name);
        return names.isEmpty() ? QString() : directory + '/' + names.first();
    }

    Finished Run(const QStringList& arguments) const
    {
        return RunProgram(place.Path(), QStringList{"verify"} + arguments);
    }

    QString PieceOf(const QString& record, const char* extension) const
    {
        return QFileInfo(record).path() + '/' + QFileInfo(record).completeBaseName() +
               QLatin1String(extension);
    }

    QByteArray Bytes(const QString& name) const { return ReadBytes(place.Path(name)); }

    void Write(const QString& name, const QByteArray& bytes) const
    {
        QFile::remove(place.Path(name));
        place.Write(name, bytes);
    }

    /// What is wrong with the record as the recording's, empty if it is good.
    QString Verdict(const QString& record, bool isPlain = false) const
    {
        try {
            const PairVerdict verdict = ComparePair(
                place.Path("rec.ZU"), place.Path(record),
                isPlain ? DeviceChoice() : DeviceChoice{place.Path("ZuDrv.ini"), "Default", "Vostochnaya"},
                isPlain);
            QStringList texts;
            for (const comtrade::Finding& finding : verdict.wrong.All())
                texts << finding.text;
            return texts.join('\n');
        } catch (const text::Error& error) {
            return error.Message();
        }
    }

    QString WithoutPlace(QString text) const { return text.replace(place.Path() + '/', QString()); }

    const Workplace place;
};
