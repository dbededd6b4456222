// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/ReaderText.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <stdexcept>

namespace Workbench {

namespace ReaderText {

QByteArray readFile(const QString &path, qint64 limit)
{
    const QFileInfo info(path);
    if (!info.exists())
        fail(path, tr("there is no such file"));
    // Pipes and devices have no size and may never end.
    if (!info.isFile())
        fail(path, tr("this is not a regular file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(path, tr("the file cannot be opened (%1)").arg(file.errorString()));
    if (file.size() > limit)
        fail(path, tr("the file has %1 bytes, at most %2 were expected").arg(file.size()).arg(limit));
    const QByteArray bytes = file.read(file.size());
    if (bytes.size() != file.size())
        fail(path, tr("only %1 of %2 bytes could be read").arg(bytes.size()).arg(file.size()));
    return bytes;
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
    const size_t end = m_rest.find_first_of("\r\n");
    m_line = m_rest.substr(0, end);
    if (end == std::string_view::npos)
        m_rest = {};
    else
        m_rest.remove_prefix(end + (m_rest.substr(end).starts_with("\r\n") ? 2 : 1));
    return true;
}

} // namespace ReaderText

} // namespace Workbench
