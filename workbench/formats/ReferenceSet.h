// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/ShiftCalibration.h"
#include "data/structure/CalculationMethod.h"

namespace Workbench {

/// A calibration of one nucleus with what it was made of, as it is kept in a JSON file.
struct ReferenceSet {
    struct Source {
        QString file;
        QString site;
        ShiftCalibration::Point point;
    };

    QString nucleus;
    CalculationMethod method;
    ShiftCalibration calibration;
    std::vector<Source> sources;

    /// What is not given is the set's.
    void fill(std::optional<double> &reference, std::optional<double> &slope) const;

    /// That the calculation of this name was made in another way; empty where it was not, or nobody knows.
    QString doubtAbout(const CalculationMethod &other, const QString &name) const;

    QByteArray toJson() const;
    /// The regression is made anew from the sources. Errors are std::runtime_error that name the file.
    static ReferenceSet read(const QString &fileName);
    /// The same from the text of a file.
    static ReferenceSet fromJson(const QByteArray &text, const QString &fileName);
};

} // namespace Workbench
