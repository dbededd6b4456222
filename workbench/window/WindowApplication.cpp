// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/WindowApplication.h"

#include "window/WMainWindow.h"

namespace Workbench {

WindowApplication::WindowApplication() : HostApplication(std::make_unique<WMainWindow>())
{
    window().setHost(this);
}

WMainWindow &WindowApplication::window() const
{
    return static_cast<WMainWindow &>(hostWindow());
}

} // namespace Workbench
