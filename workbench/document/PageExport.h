// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QUuid>

#include <functional>
#include <optional>

class QIODevice;
class QPainter;
class QRectF;
class QSizeF;

namespace Workbench {

class DocumentItem;
class MainScene;
class NmrItem;

/// Pictures of the document page and of single spectra.
namespace PageExport {

enum class Format { Png, Svg, Pdf };

/// By the suffix, whatever its case; nothing for other suffixes.
std::optional<Format> formatOfSuffix(const QString &suffix);
/// By the file name. Throws std::runtime_error for suffixes that stand for no picture.
Format formatOf(const QString &fileName);

/// Whether the notes of items are in the picture.
enum class Notes { Hidden, Shown };

/// All pages: one after the other in a PDF file, below one another in a picture. Vectors except for molecules' and
/// maps' shading.
void writePage(MainScene &scene, QIODevice &device, Format format, Notes notes = Notes::Hidden);

/// The spectrum without the page around it.
void writePlot(NmrItem &item, QIODevice &device, Format format);

/// What `paint` draws in a rectangle of this size, in 1/96 inch.
void writePicture(const std::function<void(QPainter *, const QRectF &)> &paint, const QSizeF &size, QIODevice &device,
                  Format format);

/// The suffixes of pictures.
const QStringList &suffixes();
/// One entry of the item in the format of the suffix (lower case, without the dot): a data file, or a picture of the
/// whole plot. Another suffix is an error (std::runtime_error).
void writeSpectrum(NmrItem &item, const QUuid &entry, const QString &suffix, QIODevice &device);

} // namespace PageExport

} // namespace Workbench
