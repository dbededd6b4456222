// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"

#include <QUuid>
#include <QVariantMap>

/// What the MAGRES table asks of the plug-in around it.
class MagresCommands {
public:
    virtual ~MagresCommands() = default;

    virtual const NuclearProperties &nuclearProperties() const = 0;

    /// The map form of a data set in the document; empty if it is gone.
    virtual QVariantMap dataMap(const QUuid &dataId) const = 0;
    /// Lets the user make a spectrum from a data set. Reports failures itself.
    virtual void createSpectrum(const QUuid &dataId) = 0;
    /// Lets the user choose an element's quadrupolar isotope and keeps the choice with the data set. True if it
    /// changed.
    virtual bool chooseQuadrupolarIsotope(const QUuid &dataId) = 0;
};
