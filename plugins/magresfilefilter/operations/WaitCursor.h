// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QGuiApplication>

namespace Magres {

/// The wait cursor for as long as the object lives.
class WaitCursor {
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(WaitCursor)
};

} // namespace Magres
