// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Nuclides.h"

#include <QObject>

namespace Workbench {

/// The properties of nuclei, by nucleus name ("13C"), as plug-ins ask for them.
class NucleusTables : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The spin as text, "1/2" or "3"; empty for a nucleus that is not in the table.
    Q_INVOKABLE QString spin(QString nucleus) const { return Nuclides::table()[nucleus].spin; }
    /// In fm²; 0 for spin 1/2 and for a nucleus that is not in the table.
    Q_INVOKABLE double quadrupoleMoment(QString nucleus) const { return Nuclides::table()[nucleus].quadrupoleMoment; }
    /// In percent; 0 for a nucleus that is not in the table.
    Q_INVOKABLE double naturalAbundance(QString nucleus) const { return Nuclides::table()[nucleus].abundance; }
};

} // namespace Workbench
