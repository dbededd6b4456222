// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The plotting library's header needs Qt's keywords, which are off in this tree: on for its sake, and off again.
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define foreach Q_FOREACH
#include <qcustomplot.h>
#undef signals
#undef slots
#undef foreach
