// SPDX-License-Identifier: BSD-3-Clause
#include "Targets.h"

#include <cstddef>
#include <cstdint>

// The program of one target, FUZZ_TARGET, around libFuzzer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Fuzz::FUZZ_TARGET(QByteArrayView(data, qsizetype(size)));
    return 0;
}
