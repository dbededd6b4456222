// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlotContent.h"
#include "items/plot/SharedLabel.h"

namespace Workbench {

/// The peaks' labels above a 1D spectrum: written upwards in one row, each joined to its peak by a line. Where there is
/// no room for all, the lowest peaks go without. They take at most a third of the plot's height: longer ones are cut.
class PeakLabelBand : public QCPLayoutElement {
    Q_OBJECT

public:
    struct Peak {
        double ppm = 0.0;
        double top = 0.0; ///< of the curve there, on the value axis
        QString label;
        QColor color;
        QUuid id;
    };

    PeakLabelBand(QCustomPlot *plot, QCPAxis *ppmAxis, QCPAxis *intensityAxis);

    void setPeaks(const QList<Peak> &peaks);
    /// Texts, in the order from left to right, that are drawn at the present size and range.
    QStringList visibleTexts() const;
    /// Where they are.
    QList<LabelArea> areas() const;
    /// Sets the height for the texts of the present range.
    void fitHeight();

protected:
    void draw(QCPPainter *painter) override;
    void applyDefaultAntialiasingHint(QCPPainter *painter) const override;
    QRect clipRect() const override;

private:
    struct Label {
        double x = 0.0; ///< pixels: of the peak, then of the text
        double placed = 0.0;
        double top = 0.0;
        SharedLabel shared;
        double ppm = 0.0;
        QColor color;
    };

    QString text(const Label &label) const;
    QString ppmText(const Label &label) const;
    double longestText() const;
    QList<Label> labels() const;

    QPointer<QCPAxis> m_ppmAxis;
    QPointer<QCPAxis> m_intensityAxis;
    QList<Peak> m_peaks;
};

} // namespace Workbench
