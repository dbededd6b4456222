// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/HostApplication.h"

namespace Workbench {

class WMainWindow;

/// The host with a window, in which changes can be undone.
class WindowApplication : public HostApplication {
public:
    WindowApplication();

    WMainWindow &window() const;
};

} // namespace Workbench
