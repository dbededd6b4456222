// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QUuid>

namespace Workbench {

/// The label of peaks that lie at one place on the screen, such as those of equivalent sites.
class SharedLabel {
public:
    /// Peaks nearer than this, in pixels, share a label.
    static constexpr double distance = 1.0;

    /// An empty name, or one that is there already, adds the peak alone.
    void add(const QUuid &peak, const QString &name);
    void add(const SharedLabel &other);

    const QList<QUuid> &peaks() const { return m_peaks; }
    bool hasName() const { return !m_names.isEmpty(); }
    /// The first names and how many more there are, short enough to be drawn.
    QString text() const;
    /// All names.
    QString fullText() const;

private:
    QList<QUuid> m_peaks;
    QStringList m_names;
};

} // namespace Workbench
