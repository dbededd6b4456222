// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Error.h"

#include <QByteArray>
#include <QString>

#include <string_view>

namespace Workbench {

/// What the readers of text files share: bounded reading, lines, and errors that name the place.
namespace ReaderText {

inline QString tr(const char *text)
{
    return Texts::tr(text);
}
using Workbench::fail;

/// The whole of a regular file. A directory, a device or a file of more than `limit` bytes is an error.
QByteArray readFile(const QString &path, qint64 limit);

/// UTF-8 where the bytes are valid UTF-8, Latin-1 otherwise.
QString decoded(std::string_view bytes);
/// The same in quotes, cut to a length that fits a message.
QString excerpt(std::string_view bytes);
std::string_view trimmed(std::string_view text);
inline std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

/// Walks over lines that end in \n, \r\n or \r, mixed as they come. A byte order mark at the start is passed over.
class Lines {
public:
    /// `number` is that of the line before the first one.
    explicit Lines(std::string_view text, int number = 0);
    bool next();
    std::string_view line() const { return m_line; }
    int number() const { return m_number; }

private:
    std::string_view m_rest;
    std::string_view m_line;
    int m_number;
};

} // namespace ReaderText

} // namespace Workbench
