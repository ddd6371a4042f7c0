// Conversions for the fault tests: every output form, an earlier result in place, and what a complete result
// is.
#pragma once

#include "support/device.h"

#include <QMap>

#include <memory>

/// Name of a file to its bytes.
using Tree = QMap<QString, QByteArray>;

/// An output form: a name for messages and the device's ini lines.
struct Form
{
    const char* name;
    QByteArray deviceLines;
};

/// All output forms, with and without deletion of the sources.
std::vector<Form> AllForms();

/// A recording of two segments in a directory of its own, an earlier result of the same output name, and the
/// device.
class Scene
{
public:
    explicit Scene(const Form& form);

    /// Puts sources and output directory back as they were before.
    void Reset();
    void ResetSources();

    /// Converts the sources; returns the result.
    bool Convert();

    /// What is in the output directory, temporary files included.
    Tree Output() const;
    QStringList Sources() const;

    const QString& Root() const { return root; }
    ZuCmtrDevParam& Device() { return station.Device(); }

    const Tree& Earlier() const { return earlier; }      // final files before
    const Tree& Whole() const { return whole; }          // final files of a conversion of both segments
    const Tree& WholeOfFirst() const { return ofFirst; } // of the first segment alone

private:
    Tree ConvertWith(const QByteArray& first, const QByteArray& second);

    TestStation station;
    QString root;
    QByteArray firstFile, secondFile;
    Tree earlier, whole, ofFirst;
};

/// Whether name is a temporary file's.
bool IsTemporary(const QString& name);
