// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/SharedLabel.h"

#include "data/NaturalOrder.h"

#include <algorithm>

namespace Workbench {

namespace {

constexpr int mostNames = 3;
constexpr int longestText = 24;

} // namespace

void SharedLabel::add(const QUuid &peak, const QString &name)
{
    m_peaks.append(peak);
    if (!name.isEmpty() && !m_names.contains(name))
        m_names.append(name);
}

void SharedLabel::add(const SharedLabel &other)
{
    m_peaks += other.m_peaks;
    for (const QString &name : other.m_names)
        if (!m_names.contains(name))
            m_names.append(name);
}

QString SharedLabel::fullText() const
{
    QStringList names = m_names;
    std::sort(names.begin(), names.end(), naturalOrder());
    return names.join(QStringLiteral(", "));
}

QString SharedLabel::text() const
{
    // Names of cross peaks, and of groups, hold commas themselves and are long: one stands for all.
    const bool compound = m_names.join(QString()).contains(u',');
    const qsizetype named = compound ? 1 : mostNames;
    const QString more = m_names.size() > named ? QStringLiteral(" +%1").arg(m_names.size() - named) : QString();
    QStringList names = m_names;
    std::sort(names.begin(), names.end(), naturalOrder());
    const QString text = names.mid(0, named).join(u',');
    const qsizetype room = longestText - more.size();
    return (text.size() > room ? text.left(room - 1) + QChar(0x2026) : text) + more;
}

} // namespace Workbench
