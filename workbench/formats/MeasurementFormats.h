// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

class QIODevice;

namespace Workbench {

struct SpectrumEntry;

/// A form in which measurements and spectra lie in files: the one place that tells what is read and what is written.
struct MeasurementFormat {
    QString name;
    QStringList suffixes; ///< lower case; the first one is the usual one
    QString mediaType;
    QStringList fileNames; ///< fixed names of files
    /// By the path and the start of the file. Null: the format is written only.
    bool (*recognises)(const QString &path, const QByteArray &start) = nullptr;
    Measurement (*read)(const QString &path, const ReadOptions &options) = nullptr;
    /// Null: the format is read only.
    void (*write)(const SpectrumEntry &entry, QIODevice &device) = nullptr;
    QString content = {}; ///< what a written file holds, for help texts
    int written = 1; ///< so many of the suffixes, from the first one on, are for writing
};

/// In the order in which they are tried on a file.
const std::vector<MeasurementFormat> &measurementFormats();

/// The suffixes of all formats that are written, in the alphabet's order.
const QStringList &suffixesToWrite();
/// The format that a file with the suffix (lower case) is written in; null for none.
const MeasurementFormat *formatToWrite(const QString &suffix);

} // namespace Workbench
