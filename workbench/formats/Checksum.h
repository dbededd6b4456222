// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <memory>

namespace Workbench {

/// A 128-bit checksum (XXH3) against damage, not against forgery: one that is as fast as memory, so that opening a
/// document costs little more than reading it. A CRC of zlib or a cryptographic hash takes several times as long as
/// everything else.
class Checksum {
public:
    static constexpr qsizetype size = 16; ///< bytes

    Checksum();
    ~Checksum();

    void add(const char *data, qsizetype length);
    QByteArray result() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace Workbench
