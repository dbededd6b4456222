// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QSet>
#include <QUuid>
#include <QVariantMap>

namespace Workbench {

/// Which atoms stand behind which peaks, as plug-ins note it in a molecule's map: the list "NMRAssignments", one map
/// per entry and dimension with "Origin" (the entry) and "Shifts", each with "Nums" (atoms, from 0 in the order of the
/// file) and "AssignedPeaks" (their ids).
class PeakAssignments {
public:
    /// What is damaged is left out.
    static PeakAssignments fromMolMap(const QVariantMap &molecule);

    const QSet<QUuid> &entries() const { return m_entries; }
    /// Of either dimension.
    QSet<int> atomsOf(const QList<QUuid> &peaks) const;
    /// Those of any of the atoms.
    QSet<QUuid> peaksOf(const QSet<int> &atoms) const;

    /// The notes on these entries alone, and a molecule's map with other notes on them.
    static QVariantList notesOn(const QList<QUuid> &entries, const QVariantMap &molecule);
    static QVariantMap withNotesOn(const QList<QUuid> &entries, const QVariantList &notes, QVariantMap molecule);

private:
    QSet<QUuid> m_entries;
    QHash<QUuid, QSet<int>> m_atoms; ///< by peak
    QHash<int, QSet<QUuid>> m_peaks; ///< by atom
};

} // namespace Workbench
