// SPDX-License-Identifier: BSD-3-Clause
#include "FakeHost.h"

#include "moc_FakeHost.cpp"
