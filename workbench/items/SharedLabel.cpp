// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/SharedLabel.h"

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

QString SharedLabel::text() const
{
    // Names of cross peaks hold commas themselves.
    const bool compound = m_names.join(QString()).contains(u',');
    QString text = m_names.mid(0, mostNames).join(compound ? QStringLiteral("; ") : QStringLiteral(","));
    if (m_names.size() > mostNames)
        text += QStringLiteral(" +%1").arg(m_names.size() - mostNames);
    return text.size() > longestText ? text.left(longestText - 1) + QChar(0x2026) : text;
}
