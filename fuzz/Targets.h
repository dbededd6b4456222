// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArrayView>

// Functions that must bear any bytes: no crash, no hang, no memory out of proportion. Messages for the user, that is
// exceptions derived from std::exception, are a right answer and caught here.
//
// A new target is a source of its own with one such function, a line below, one in fuzz/CMakeLists.txt and one in the
// table of tst_findings.cpp.

namespace Fuzz {

/// The text of a MAGRES file, read and assembled as for a document.
void magresText(QByteArrayView bytes);

/// The map forms of data and of parameters, changed in places that the bytes choose, made into a spectrum.
void magresMap(QByteArrayView bytes);

} // namespace Fuzz
