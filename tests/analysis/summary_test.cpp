#include "analysis/summary.h"

#include "made.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace {

using analysis::FaultKind;

constexpr double Pi = 3.14159265358979323846;

// A fault 5 ms after the trigger at noon, for 62 ms, with all that can be known of it.
analysis::Summary Known()
{
    const analysis::Oscillogram record =
        made::Record({{"Trip W1", "W1", "0000111111"}, {"52a", "W1", "1111111000"}}, 100, 2);
    analysis::Summary summary = analysis::Summarise(record, {}, QStringLiteral("lines.ini"));
    comtrade::AnalogChannel current;
    current.number = 1;
    current.name = QStringLiteral("Ia W1");
    summary.config.analog = {current};
    analysis::FaultPart part;
    part.kind = FaultKind::AG;
    part.onset = 0.005;
    part.clearing = 0.067;
    part.distances = {{analysis::DistanceMethod::Reactance, 33.1, 16.55, std::nan("")},
                      {analysis::DistanceMethod::Takagi, 34.2, 17.1, 2.1}};
    part.best = 1;
    analysis::Fault fault;
    fault.direction = analysis::Direction::Forward;
    fault.parts = {part};
    const analysis::Phasor none{std::nan(""), 0};
    fault.phasors = {{0, std::polar(100.0, -Pi / 6), std::polar(2500.5, -Pi / 2), none}};
    summary.findings.fault = fault;
    summary.findings.frequency = 49.98765432;
    summary.findings.hasWaves = true;
    summary.operating = OperatingOf(summary.events.events, summary.config, summary.circuits, fault);
    return summary;
}

QByteArray Compact(const QJsonValue& value)
{
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
}

TEST(Summary, JsonHasTheFaultWithItsPartsAndDistances)
{
    const QJsonObject object = analysis::JsonOf(Known());
    EXPECT_EQ(object["trigger"].toString(), QString("2024-01-31T12:00:00.020000+03:00"));
    EXPECT_EQ(object["frequency"].toDouble(), 49.9877);
    EXPECT_EQ(
        Compact(object["fault"]),
        QByteArray("[{\"best\":\"takagi\",\"circuit\":\"W1\",\"clearing\":0.067,\"direction\":\"forward\","
                   "\"distance\":{\"reactance\":{\"km\":16.55,\"percent\":33.1,\"resistance\":null},"
                   "\"takagi\":{\"km\":17.1,\"percent\":34.2,\"resistance\":2.1}},\"kind\":\"AG\","
                   "\"lack\":null,\"onset\":0.005,\"parts\":[{\"afterReclosing\":false,\"best\":\"takagi\","
                   "\"circuit\":\"W1\","
                   "\"clearing\":0.067,\"distance\":{\"reactance\":{\"km\":16.55,\"percent\":33.1,"
                   "\"resistance\":null},\"takagi\":{\"km\":17.1,\"percent\":34.2,\"resistance\":2.1}},"
                   "\"kind\":\"AG\",\"lack\":null,\"onset\":0.005,\"range\":null}],\"range\":null}]"));
    EXPECT_EQ(
        Compact(object["phasors"]),
        QByteArray("[{\"after\":{},\"before\":{\"Ia W1\":{\"angle\":-30,\"magnitude\":100,\"unit\":\"\"}},"
                   "\"during\":{\"Ia W1\":{\"angle\":-90,\"magnitude\":2500.5,\"unit\":\"\"}}}]"));
}

TEST(Summary, JsonHasTheEventsAndOperatingTimes)
{
    const QJsonObject object = analysis::JsonOf(Known());
    EXPECT_EQ(
        Compact(object["events"].toArray()[1]),
        QByteArray("[{\"active\":false,\"at\":\"2024-01-31T12:00:00.070000+03:00\",\"bounce\":false,"
                   "\"changes\":1,\"channel\":2,\"circuit\":\"W1\",\"kind\":\"breaker\",\"name\":\"52a\","
                   "\"since\":0.03,\"state\":0,\"time\":0.05}]"));
    EXPECT_EQ(object["events"].toArray()[0].toObject()["since"], QJsonValue());
    EXPECT_EQ(Compact(object["operating"]),
              QByteArray("[{\"breaker\":0.045,\"circuit\":\"W1\",\"clearing\":0.062,\"deadTime\":null,"
                         "\"from\":0.005,\"reclosed\":null,\"reference\":\"onset\",\"start\":null,"
                         "\"trip\":0.015}]"));
}

TEST(Summary, SentencesSayWhatIsKnown)
{
    EXPECT_EQ(analysis::SentencesOf(Known()),
              (QStringList{"Short circuit A to earth on W1 at 12:00:00.025; cleared after 62 ms.",
                           "It is ahead, in the direction of the circuit.",
                           "Distance 34.2 % (17.1 km), fault resistance 2.1 ohm (Takagi method).",
                           "From the onset: trip 15 ms, breaker open 45 ms."}));
}

TEST(Summary, EvolutionAndRangeAreSaid)
{
    analysis::Summary summary = Known();
    analysis::Fault& fault = *summary.findings.fault;
    analysis::FaultPart second = fault.parts.front();
    fault.parts.front().clearing = 0.0275;
    second.onset = 0.0275;
    second.kind = FaultKind::CAG;
    second.clearing.reset();
    second.range = analysis::DistanceRange{30, 38.44};
    fault.parts.push_back(second);
    summary.operating = OperatingOf(summary.events.events, summary.config, summary.circuits, fault);
    const QStringList sentences = analysis::SentencesOf(summary);
    EXPECT_EQ(sentences[0],
              QString("Short circuit A to earth on W1 at 12:00:00.025; it lasts to the end of the record."));
    EXPECT_EQ(sentences[1], QString("After 22.5 ms it became C-A to earth."));
    EXPECT_EQ(sentences[3], QString("Distance 34.2 % (17.1 km), between 30.0 and 38.4 %, fault resistance "
                                    "2.1 ohm (Takagi method)."));
    const QJsonObject object = analysis::JsonOf(summary)["fault"].toObject();
    EXPECT_EQ(object["kind"].toString(), QString("CAG"));
    EXPECT_EQ(object["clearing"], QJsonValue());
    EXPECT_EQ(Compact(object["range"]), QByteArray("[{\"from\":30,\"to\":38.44}]"));
}

TEST(Summary, FaultThatComesBackIsSaid)
{
    analysis::Summary summary = Known();
    analysis::Fault& fault = *summary.findings.fault;
    fault.parts.push_back(fault.parts.front());
    fault.parts[1].afterReclosing = true;
    fault.parts[1].onset = 0.5671;
    fault.parts[1].clearing = 1.6;
    summary.operating.deadTime = 0.5;
    summary.operating.reclosed = false;
    const QStringList sentences = analysis::SentencesOf(summary);
    EXPECT_EQ(sentences[1], QString("Short circuit A to earth again at 12:00:00.587, for 1.03 s."));
    EXPECT_EQ(sentences.last(), QString("Closed again after 500 ms, without success."));
}

TEST(Summary, WhatLacksForADistanceIsSaid)
{
    analysis::Summary summary = Known();
    analysis::FaultPart& part = summary.findings.fault->parts.front();
    part.distances.clear();
    part.best.reset();
    part.lack = analysis::Lack::LineData;
    EXPECT_EQ(analysis::SentencesOf(summary)[2],
              QString("No distance: 'lines.ini' has no data of the line [W1]."));
    summary.lineFile.clear();
    EXPECT_EQ(analysis::SentencesOf(summary)[2],
              QString("No distance: there is no lines.ini with the data of the line."));
    part.lack = analysis::Lack::TooShort;
    EXPECT_EQ(analysis::SentencesOf(summary)[2], QString("No distance: the fault is too short for it."));
    const QJsonObject fault = analysis::JsonOf(summary)["fault"].toObject();
    EXPECT_EQ(fault["distance"], QJsonValue());
    EXPECT_EQ(fault["lack"].toString(), QString("tooShort"));
}

TEST(Summary, RecordWithoutCurrentsClaimsNothing)
{
    const analysis::Oscillogram record = made::Record({{"a", "", "0000"}});
    analysis::Summary summary = analysis::Summarise(record, {}, QString());
    summary.findings.hasWaves = false;
    EXPECT_EQ(analysis::SentencesOf(summary),
              (QStringList{"The record has no circuit with the currents of three phases, so that no short "
                           "circuit can be found in it.",
                           "No discrete signal changes."}));
    EXPECT_EQ(analysis::JsonOf(summary)["fault"], QJsonValue());
    EXPECT_EQ(analysis::JsonOf(summary)["frequency"], QJsonValue());
    EXPECT_TRUE(analysis::TableOf(summary).isEmpty());
    EXPECT_TRUE(analysis::CsvOf(summary, "a").isEmpty());
}

TEST(Summary, PartOfARecordIsSaid)
{
    analysis::Oscillogram record = made::Record({{"a", "", "0000"}});
    record.total = 4000;
    record.config.rates = {{1000, 4000}};
    record.axis = analysis::TimeAxis::FromRates(record.config);
    const analysis::Summary summary = analysis::Summarise(record, {}, QString());
    EXPECT_TRUE(analysis::SentencesOf(summary).contains(
        "Only 4 of 4000 samples, around the trigger, were looked at."));
}

TEST(Summary, TableIsAligned)
{
    const analysis::Oscillogram record =
        made::Record({{"Trip W1", "W1", "0000111111"}, {"52a", "W1 2", "1101011000"}}, 1000, 5);
    const analysis::Summary summary = analysis::Summarise(record, {}, QString());
    EXPECT_EQ(analysis::TableOf(summary),
              (QStringList{
                  "  Time             From trigger, s  Since previous, s  Circuit  Signal  Kind     State",
                  "  12:00:00.002000        -0.003000                     W1 2     52a     breaker  0 open "
                  "(bounce, 5 changes)",
                  "  12:00:00.004000        -0.001000           0.002000  W1       Trip    trip     1"}));
}

TEST(Summary, CsvQuotesWhatNeedsIt)
{
    const analysis::Oscillogram record = made::Record({{"say \"on\", W1", "W1", "011"}}, 1000, 1);
    const analysis::Summary summary = analysis::Summarise(record, {}, QString());
    EXPECT_EQ(analysis::CsvHead(),
              QByteArray("file,at,time,since,circuit,channel,name,kind,state,active,changes,bounce\r\n"));
    EXPECT_EQ(analysis::CsvOf(summary, "a,b.cfg"),
              QByteArray("\"a,b.cfg\",2024-01-31T12:00:00.001000+03:00,0.000000,,W1,1,\"say \"\"on\"\", W1\","
                         "other,1,1,1,0\r\n"));
}

TEST(Summary, DecimalsHaveNoNegativeZero)
{
    analysis::Summary summary = Known();
    summary.findings.fault->parts.front().onset = -1e-9;
    EXPECT_FALSE(Compact(analysis::JsonOf(summary)).contains(":-0"));
    EXPECT_EQ(analysis::Decimal(-0.04, 1), QString("0.0"));
    EXPECT_EQ(analysis::Decimal(-0.06, 1), QString("-0.1"));
}

} // namespace
