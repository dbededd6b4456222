// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArrayView>
#include <QtGlobal>

// Functions that must bear any bytes: no crash, no hang, no memory out of proportion. Messages for the user, that is
// exceptions derived from std::exception, are a right answer and caught in them.
//
// FUZZ_TARGETS is TARGET(name) for each; CMakeLists.txt has the list.
namespace Fuzz {

#define TARGET(name) void name(QByteArrayView bytes);
FUZZ_TARGETS
#undef TARGET

/// Ends the program when a result cannot be right.
inline void require(bool holds, const char *what)
{
    if (!holds)
        qFatal("%s", what);
}

} // namespace Fuzz
