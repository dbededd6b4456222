// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Checksum.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Workbench {

struct Checksum::State {
    XXH3_state_t xxh;
};

Checksum::Checksum() : m_state(std::make_unique<State>())
{
    XXH3_128bits_reset(&m_state->xxh);
}

Checksum::~Checksum() = default;

void Checksum::add(const char *data, qsizetype length)
{
    XXH3_128bits_update(&m_state->xxh, data, size_t(length));
}

QByteArray Checksum::result() const
{
    XXH128_canonical_t bytes;
    XXH128_canonicalFromHash(&bytes, XXH3_128bits_digest(&m_state->xxh));
    return QByteArray(reinterpret_cast<const char *>(bytes.digest), sizeof(bytes.digest));
}

} // namespace Workbench
