// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <system_error>

namespace Workbench {

/// Numbers as text that no locale changes.
namespace NumberText {

/// The whole text must be one finite number; a leading plus sign is allowed, blanks are not.
template <typename Number>
std::optional<Number> parse(std::string_view text)
{
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    if constexpr (std::is_floating_point_v<Number>) {
        if (!std::isfinite(value))
            return std::nullopt;
    }
    return value;
}

/// Appends the number with 17 significant digits, which any reader turns back into the same double.
template <typename Text>
void append17(Text &text, double value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17);
    text.append(buffer, result.ptr - buffer);
}

} // namespace NumberText

} // namespace Workbench
