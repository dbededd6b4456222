// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

/// The host's tables of nuclear properties, by nucleus name ("27Al").
class WrNMRDataTables : public WrObject<QObject> {
public:
    using WrObject::WrObject;

    /// As text: "3/2".
    QString spin(const QString &nucleus) const { return call<QString>(HostContract::spin, nucleus); }
    /// fm^2.
    double quadrupoleMoment(const QString &nucleus) const
    {
        return call<double>(HostContract::quadrupoleMoment, nucleus);
    }
    /// Percent.
    double naturalAbundance(const QString &nucleus) const
    {
        return call<double>(HostContract::naturalAbundance, nucleus);
    }
};
