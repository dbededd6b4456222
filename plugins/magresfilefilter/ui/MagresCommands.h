// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"
#include "reading/MagresData.h"

#include <QIcon>
#include <QUuid>

#include <optional>

namespace Magres {

/// What the MAGRES table asks of the plug-in around it.
class MagresCommands {
public:
    virtual ~MagresCommands() = default;

    /// What carries the commands: they go with it.
    virtual QObject *object() = 0;

    /// Of the plug-in's menus.
    virtual QIcon icon() const = 0;
    virtual const NuclearProperties &nuclearProperties() const = 0;

    /// A data set in the document; without atoms if it is gone.
    virtual MagresData data(const QUuid &dataId) const = 0;
    /// Lets the user make a spectrum from a data set. Reports failures itself.
    virtual void createSpectrum(const QUuid &dataId) = 0;
    /// Lets the user choose an element's quadrupolar isotope and keeps the choice with the data set. The data set with
    /// the choice; nothing if there was none.
    virtual std::optional<MagresData> chooseQuadrupolarIsotope(const QUuid &dataId) = 0;
};

} // namespace Magres
