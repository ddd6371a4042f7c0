// COMTRADE records written: separate files, or the sections of a container.
#pragma once

#include "forms/dataencoder.h"
#include "forms/export.h"
#include "forms/fileerror.h"
#include "forms/stream.h"

#include <QFile>

namespace forms {

/// The texts of a record beside its configuration, as stored; empty ones are not written.
struct Texts
{
    QByteArray header;
    QByteArray information;
};

class ComtradeWriter : public Writer
{
public:
    /// Writes base.cfg, base.dat and, if there are texts, base.hdr and base.inf, or base.cff. config: of the
    /// record; its last sample is the number of records that will come. Throws FormError or FileError.
    ComtradeWriter(const QString& base, bool isContainer, const comtrade::Configuration& config_,
                   const QByteArray& encoding, const Texts& texts);

    void Write(const comtrade::Block& block) override;
    void Finish() override;

    /// Writes records that are bytes of the form already.
    void WriteBytes(const QByteArray& records) { Put(records); }

    /// Bytes of the data so far.
    qint64 DataSize() const { return size; }

private:
    void Put(const QByteArray& bytes);
    void WriteContainerHead(const QByteArray& configuration, const Texts& texts);

    const comtrade::Configuration config;
    DataEncoder encoder;
    QFile data;      // the .dat or .cff file
    qint64 size = 0; // of it
};

/// The endings of the files that a record with these texts has, the configuration first.
QStringList EndingsOf(bool isContainer, const Texts& texts);

} // namespace forms
