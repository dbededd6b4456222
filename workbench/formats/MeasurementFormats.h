// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace Workbench {

/// A form in which measurements lie in files. What is written is the matter of SpectrumExport.
struct MeasurementFormat {
    QString name;
    QStringList suffixes; ///< usual ones, lower case
    QStringList fileNames; ///< fixed names of files
    /// By the path and the start of the file.
    bool (*recognises)(const QString &path, const QByteArray &start);
    Measurement (*read)(const QString &path, const ReadOptions &options);
};

/// In the order in which they are tried on a file. Readers, file dialogs and the drop of a file go by this table.
const std::vector<MeasurementFormat> &measurementFormats();

} // namespace Workbench
