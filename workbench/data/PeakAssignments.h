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

    /// Whether there are atoms behind the peak.
    bool knows(const QUuid &peak) const { return m_atoms.contains(peak); }
    /// Of either dimension.
    QSet<int> atomsOf(const QList<QUuid> &peaks) const;
    /// Those of any of the atoms.
    QSet<QUuid> peaksOf(const QSet<int> &atoms) const;

    /// All notes as they stand in a molecule's map (invalid: none), and the map with others.
    static QVariant notes(const QVariantMap &molecule);
    static QVariantMap withNotes(const QVariant &notes, QVariantMap molecule);

private:
    QHash<QUuid, QSet<int>> m_atoms; ///< by peak
    QHash<int, QSet<QUuid>> m_peaks; ///< by atom
};

} // namespace Workbench
