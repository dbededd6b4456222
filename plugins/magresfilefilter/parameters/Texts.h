// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QCoreApplication>

namespace Magres {

/// What operations tell the user, from the parser's messages to the report of a fit, in the translation context of the
/// plug-in's class, which shows it.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(TMagresFileFilterPlugin)
};

} // namespace Magres
