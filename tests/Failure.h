// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

#include <exception>

/// The message with which the call fails; empty when it does not.
template <typename Call>
QByteArray failure(const Call &call)
{
    try {
        call();
    } catch (const std::exception &error) {
        return error.what();
    }
    return {};
}
