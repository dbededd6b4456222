// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

class DocumentItem;
class MainScene;
class NmrItem;
class QIODevice;

/// Pictures of the document page and of single spectra.
namespace PageExport {

enum class Format { Png, Svg, Pdf };

/// By the suffix, whatever its case; nothing for other suffixes.
std::optional<Format> formatOfSuffix(const QString &suffix);
/// By the file name. Throws std::runtime_error for suffixes that stand for no picture.
Format formatOf(const QString &fileName);

/// All pages: one after the other in a PDF file, below one another in a picture. Vectors except for molecules' and
/// maps' shading.
void writePage(MainScene &scene, QIODevice &device, Format format);

/// The spectrum without the page around it.
void writePlot(NmrItem &item, QIODevice &device, Format format);

} // namespace PageExport
