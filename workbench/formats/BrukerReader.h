// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/ExperimentalSpectrum.h"

#include <array>

namespace Workbench {

/// Processed spectra in Bruker folders, EXPNO/pdata/PROCNO: real data in `1r` or `2rr`, 32-bit integers or doubles in
/// either byte order, described by `procs` (F2) and `proc2s` (F1). Nuclei come from EXPNO's `acqus` and `acqu2s`, or
/// from the processing parameters where these are missing. Values are scaled by 2^NC_proc.
namespace BrukerReader {

/// A folder with processed data in it or below, or a file by the name of one of those above.
bool recognises(const QString &path);

/// `path` is the data file, the folder it lies in, or one above up to EXPNO; of several PROCNO the lowest one with
/// data counts. Errors are std::runtime_error that name the file and the parameter.
ExperimentalSpectrum read(const QString &path);

/// The folder that read() takes the data from; empty where it finds none.
QString dataFolder(const QString &path);

/// What the data set that a file lies in says of itself; empty where it says nothing.
struct Description {
    QString title;
    std::array<QString, 2> nuclei; ///< F2, F1
};
Description describe(const QString &path);

} // namespace BrukerReader

} // namespace Workbench
