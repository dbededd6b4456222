// SPDX-License-Identifier: BSD-3-Clause
#include "operations/PeakAssignment.h"

#include "parameters/Nuclei.h"
#include "support/WrBaseGraphicsItem.h"

#include <QHash>

namespace Magres {
namespace {

using AtomsByLabel = QHash<QByteArray, QVariantList>; // positions in the file

/// Of the labels that the peaks name.
AtomsByLabel atomsByLabel(const MagresData &data, const QList<SpectrumPeak> &peaks)
{
    AtomsByLabel atoms;
    for (const SpectrumPeak &peak : peaks)
        for (const QByteArray &label : peak.labelsF2 + peak.labelsF1)
            atoms.insert(label, {});
    for (const MagresAtom *atom : atomsInFileOrder(data))
        for (const QByteArray &label : atom->labels)
            if (const auto found = atoms.find(label); found != atoms.end())
                found->append(atom->recordNo);
    return atoms;
}

/// The atoms behind the peaks of one dimension, with their shift.
QVariantList shifts(const QList<SpectrumPeak> &peaks, QByteArrayList SpectrumPeak::*labels,
                    double SpectrumPeak::*position, const AtomsByLabel &atoms)
{
    struct Shift {
        QVariantList atoms;
        double value = 0.0;
        QVariantList peaks;
    };
    QList<Shift> found;
    QHash<QByteArrayList, qsizetype> known;
    for (const SpectrumPeak &peak : peaks) {
        if (!known.contains(peak.*labels)) {
            known.insert(peak.*labels, found.size());
            Shift &shift = found.emplaceBack();
            shift.value = peak.*position;
            for (const QByteArray &label : peak.*labels)
                shift.atoms += atoms.value(label);
        }
        found[known.value(peak.*labels)].peaks.append(peak.id);
    }
    QVariantList list;
    for (const Shift &shift : found)
        list.append(QVariantMap{{QStringLiteral("Nums"), shift.atoms},
                                {QStringLiteral("ACount"), int(shift.atoms.size())},
                                {QStringLiteral("Value"), shift.value},
                                {QStringLiteral("Value.Method"), QStringLiteral("MAGRES")},
                                {QStringLiteral("Value.Error"), 0.0},
                                {QStringLiteral("AssignedPeaks"), shift.peaks}});
    return list;
}

} // namespace

void assignPeaks(const WrMainScene &scene, const MagresData &data, const MagresSpecParams &parameters,
                 const QUuid &entry)
{
    const WrBaseGraphicsItem molecule(scene.itemWithId(data.molItemID));
    if (data.molItemID.isNull() || !molecule.object())
        return;
    const QString key = QStringLiteral("NMRAssignments");
    QVariantMap map = molecule.molMap();
    QVariantList notes = map.value(key).toList();
    notes.removeIf(
        [&](const QVariant &note) { return note.toMap().value(QStringLiteral("Origin")).toUuid() == entry; });

    const AtomsByLabel atoms = atomsByLabel(data, parameters.peaks);
    const QVariantList nuclei = nucleides(parameters.nucF2.toLatin1(), parameters.nucF1.toLatin1());
    const auto note = [&](int dimension, const QVariantList &shiftList) {
        notes.append(QVariantMap{{QStringLiteral("Origin"), entry},
                                 {QStringLiteral("Nucleus"), nuclei[dimension]},
                                 {QStringLiteral("SpecType"), parameters.specType},
                                 {QStringLiteral("Shifts"), shiftList}});
    };
    note(0, shifts(parameters.peaks, &SpectrumPeak::labelsF2, &SpectrumPeak::positionF2, atoms));
    if (parameters.isTwoD())
        note(1, shifts(parameters.peaks, &SpectrumPeak::labelsF1, &SpectrumPeak::positionF1, atoms));
    map.insert(key, notes);
    molecule.setMolMap(map);
}

} // namespace Magres
