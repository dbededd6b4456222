// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/CustomPlot.h"

namespace Workbench {

/// A colour map that goes out as one opaque image of its cells: the library's own goes through a transparent buffer,
/// whose edges show as lines in PDF.
class IntensityMap : public QCPColorMap {
    Q_OBJECT

public:
    using QCPColorMap::QCPColorMap;

protected:
    void draw(QCPPainter *painter) override;
};

} // namespace Workbench
