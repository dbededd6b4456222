// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gsl/gsl_errno.h>

namespace Workbench {

/// To be called before anything of the library: its errors come back as values, instead of ending the program.
inline void returnGslErrors()
{
    static const auto before = gsl_set_error_handler_off();
    static_cast<void>(before);
}

} // namespace Workbench
