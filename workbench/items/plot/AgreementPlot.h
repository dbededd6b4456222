// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/NucleusComparison.h"
#include "items/plot/CustomPlot.h"

namespace Workbench {

/// Measured against calculated shifts with the line of equality, and the differences below: a column for each nucleus.
/// The sites that are farthest off are named.
class AgreementPlot : public QCustomPlot {
    Q_OBJECT

public:
    /// Compact: without headings, for where they stand beside it.
    enum Looks { Full, Compact };
    explicit AgreementPlot(Looks looks = Full, QWidget *parent = nullptr);

    void setComparisons(const std::vector<NucleusComparison> &comparisons);
    /// Of the first comparison; -1 for none.
    void setMarkedSite(int site);
    /// The size at which everything is readable.
    QSize fullSize() const;

private:
    void addColumn(int column, const NucleusComparison &comparison);
    void placeNames();

    const Looks m_looks;
    std::vector<SitePair> m_pairs; ///< of the first comparison
    std::vector<QPointer<QCPAxisRect>> m_rects; ///< its shifts and its differences
    std::vector<QCPGraph *> m_marks;
    std::vector<QCPItemText *> m_names; ///< of sites, the most important ones first
};

} // namespace Workbench
