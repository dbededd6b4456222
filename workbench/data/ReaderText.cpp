// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/ReaderText.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <stdexcept>

namespace Workbench {

namespace ReaderText {

namespace {

constexpr qsizetype blockSize = 1 << 20;

/// The decoder of a text that begins with the byte order mark of UTF-16; null for another one.
std::unique_ptr<QStringDecoder> wideDecoder(const QByteArray &start)
{
    const bool little = start.startsWith("\xFF\xFE"), big = start.startsWith("\xFE\xFF");
    return little || big ? std::make_unique<QStringDecoder>(little ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE)
                         : nullptr;
}

QByteArray narrowed(const QByteArray &bytes)
{
    const auto decoder = wideDecoder(bytes);
    return decoder ? QString(decoder->decode(bytes)).toUtf8() : bytes;
}

} // namespace

QByteArray readFile(const QString &path, qint64 limit)
{
    const QFileInfo info(path);
    if (!info.exists())
        fail(path, Texts::tr("there is no such file"));
    // Pipes and devices have no size and may never end.
    if (!info.isFile())
        fail(path, Texts::tr("this is not a regular file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(path, Texts::tr("the file cannot be opened (%1)").arg(file.errorString()));
    if (file.size() > limit)
        fail(path, Texts::tr("the file has %1 bytes, at most %2 were expected").arg(file.size()).arg(limit));
    const QByteArray bytes = file.read(file.size());
    if (bytes.size() != file.size())
        fail(path, Texts::tr("only %1 of %2 bytes could be read").arg(bytes.size()).arg(file.size()));
    return bytes;
}

QByteArray readText(const QString &path, qint64 limit)
{
    return narrowed(readFile(path, limit));
}

QByteArray readStart(const QString &path, qint64 length)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? narrowed(file.read(length)) : QByteArray();
}

QString decoded(std::string_view bytes)
{
    const QByteArrayView byteView(bytes.data(), qsizetype(bytes.size()));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(byteView);
    return decoder.hasError() ? QString::fromLatin1(byteView) : text;
}

QString excerpt(std::string_view bytes)
{
    constexpr qsizetype longest = 40;
    QString text = decoded(trimmed(bytes.substr(0, 400)));
    if (text.size() > longest)
        text = text.left(longest) + QChar(u'…');
    return u'"' + text + u'"';
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n\f\v";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

Lines::Lines(std::string_view text, int number) : m_rest(text), m_number(number)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (m_rest.starts_with(byteOrderMark))
        m_rest.remove_prefix(byteOrderMark.size());
}

bool Lines::next()
{
    if (m_rest.empty())
        return false;
    ++m_number;
    const auto isEnd = [](char c) { return c == '\r' || c == '\n'; };
    const size_t end = size_t(std::find_if(m_rest.begin(), m_rest.end(), isEnd) - m_rest.begin());
    m_line = m_rest.substr(0, end);
    if (end == m_rest.size())
        m_rest = {};
    else
        m_rest.remove_prefix(end + (m_rest.substr(end).starts_with("\r\n") ? 2 : 1));
    return true;
}

FileLines::FileLines(QIODevice &device, const QString &source) : m_device(device), m_source(source)
{
    m_at = m_end = m_block.constData();
}

FileLines::~FileLines() = default;

qint64 FileLines::bytesLeft() const
{
    return m_device.bytesAvailable() + (m_end - m_at);
}

bool FileLines::fill()
{
    QByteArray block(m_at, m_end - m_at);
    if (block.size() > blockSize)
        fail(m_source, m_number + 1, Texts::tr("this line is longer than %1 bytes").arg(blockSize));
    QByteArray more = m_device.read(blockSize);
    const bool atEnd = more.isEmpty();
    if (!std::exchange(m_started, true)) {
        m_decoder = wideDecoder(more);
        if (more.startsWith("\xEF\xBB\xBF"))
            more.remove(0, 3);
    }
    if (m_decoder)
        more = QString(m_decoder->decode(more)).toUtf8();
    // A carriage return alone ends a line; whether the last one is alone the next block tells.
    const qsizetype from = std::max<qsizetype>(block.size() - 2, 0);
    block += more;
    char *const end = block.data() + block.size();
    for (char *at = block.data() + from; at != end; ++at) {
        at = static_cast<char *>(std::memchr(at, '\r', size_t(end - at)));
        if (!at)
            break;
        if (at + 1 == end ? atEnd : at[1] != '\n')
            *at = '\n';
    }
    // Blanks that do not break, as tables are pasted from print.
    for (char *at = block.data() + from; at != end; ++at) {
        at = static_cast<char *>(std::memchr(at, '\xC2', size_t(end - at)));
        if (!at)
            break;
        if (at + 1 != end && at[1] == '\xA0')
            at[0] = at[1] = ' ';
    }
    for (char *at = block.data() + from; at != end; ++at) {
        at = static_cast<char *>(std::memchr(at, '\xE2', size_t(end - at)));
        if (!at)
            break;
        // The figure space, the thin space and the narrow one.
        if (end - at > 2 && at[1] == '\x80' && (at[2] == '\x87' || at[2] == '\x89' || at[2] == '\xAF'))
            at[0] = at[1] = at[2] = ' ';
    }
    m_block = block;
    m_at = m_block.constData();
    m_end = m_at + m_block.size();
    // At the end a carriage return may have become that of a last line.
    return !atEnd || m_block.endsWith('\n');
}

} // namespace ReaderText

} // namespace Workbench
