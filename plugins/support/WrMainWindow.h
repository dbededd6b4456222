// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

#include <QMainWindow>

/// The host's main window, the way to what is current.
class WrMainWindow : public WrObject<QMainWindow> {
public:
    using WrObject::WrObject;

    QObject *dataEngine() const { return call<QObject *>(HostContract::dataEngine); }
    /// Of the current NMR item.
    QObject *getNMRData() const { return call<QObject *>(HostContract::getNMRData); }
    QObject *nmrPlot() const { return call<QObject *>(HostContract::nmrPlot); }
    bool checkProductLicense(const QString &product) const
    {
        return call<bool>(HostContract::checkProductLicense, product);
    }
};
