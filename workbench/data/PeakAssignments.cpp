// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/PeakAssignments.h"

namespace Workbench {

namespace {

const QString notesKey = QStringLiteral("NMRAssignments");

} // namespace

PeakAssignments PeakAssignments::fromMolMap(const QVariantMap &molecule)
{
    PeakAssignments assignments;
    for (const QVariant &note : molecule.value(notesKey).toList()) {
        for (const QVariant &shift : note.toMap().value(QStringLiteral("Shifts")).toList()) {
            const QVariantMap map = shift.toMap();
            const QVariantList atoms = map.value(QStringLiteral("Nums")).toList();
            for (const QVariant &id : map.value(QStringLiteral("AssignedPeaks")).toList()) {
                const QUuid peak = id.toUuid();
                for (const QVariant &atom : atoms) {
                    assignments.m_atoms[peak].insert(atom.toInt());
                    assignments.m_peaks[atom.toInt()].insert(peak);
                }
            }
        }
    }
    return assignments;
}

QSet<int> PeakAssignments::atomsOf(const QList<QUuid> &peaks) const
{
    QSet<int> atoms;
    for (const QUuid &peak : peaks)
        atoms.unite(m_atoms.value(peak));
    return atoms;
}

QSet<QUuid> PeakAssignments::peaksOf(const QSet<int> &atoms) const
{
    QSet<QUuid> peaks;
    for (int atom : atoms)
        peaks.unite(m_peaks.value(atom));
    return peaks;
}

QVariant PeakAssignments::notes(const QVariantMap &molecule)
{
    return molecule.value(notesKey);
}

QVariantMap PeakAssignments::withNotes(const QVariant &notes, QVariantMap molecule)
{
    if (notes.isValid())
        molecule.insert(notesKey, notes);
    else
        molecule.remove(notesKey);
    return molecule;
}

} // namespace Workbench
