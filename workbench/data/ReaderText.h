// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Error.h"

#include <QByteArray>
#include <QString>

#include <cstring>
#include <memory>
#include <string_view>

class QIODevice;
class QStringDecoder;

namespace Workbench {

/// What the readers of text files share: bounded reading, lines, and errors that name the place.
namespace ReaderText {

using Workbench::fail;

/// The whole of a regular file. A directory, a device or a file of more than `limit` bytes is an error.
QByteArray readFile(const QString &path, qint64 limit);
/// The same of a text: UTF-16 with a byte order mark becomes UTF-8.
QByteArray readText(const QString &path, qint64 limit);
/// The start of a regular file as readText() gives it; empty when the file cannot be read.
QByteArray readStart(const QString &path, qint64 length);

/// UTF-8 where the bytes are valid UTF-8, Latin-1 otherwise.
QString decoded(std::string_view bytes);
/// The same in quotes, cut to a length that fits a message.
QString excerpt(std::string_view bytes);
std::string_view trimmed(std::string_view text);
inline std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

/// Walks over lines that end in LF, CR LF or CR, mixed as they come. A byte order mark at the start is passed over.
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

/// The lines of a file of any size, which is never in memory as a whole. Lines end as with Lines; UTF-16 with a byte
/// order mark becomes UTF-8. A line of more than a megabyte is an error that names `source`.
class FileLines {
public:
    FileLines(QIODevice &device, const QString &source);
    ~FileLines();
    /// The line that was read before is gone.
    bool next()
    {
        for (;;) {
            const char *newline = static_cast<const char *>(std::memchr(m_at, '\n', size_t(m_end - m_at)));
            if (newline || (!fill() && m_at != m_end)) {
                const char *end = newline ? newline : m_end;
                m_line = {m_at, size_t(end - m_at)};
                m_at = newline ? newline + 1 : m_end;
                ++m_number;
                return true;
            }
            if (m_at == m_end)
                return false;
        }
    }
    std::string_view line() const { return m_line; }
    int number() const { return m_number; }
    /// Bytes of the device that are behind the current line, roughly.
    qint64 bytesLeft() const;

private:
    bool fill();

    QIODevice &m_device;
    QString m_source;
    QByteArray m_block;
    std::unique_ptr<QStringDecoder> m_decoder; ///< of UTF-16
    const char *m_at = nullptr;
    const char *m_end = nullptr;
    std::string_view m_line;
    int m_number = 0;
    bool m_started = false;
};

} // namespace ReaderText

} // namespace Workbench
