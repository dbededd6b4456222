// SPDX-License-Identifier: BSD-3-Clause
#include "operations/PeakAssignment.h"

#include "parameters/Nuclei.h"
#include "support/WrBaseGraphicsItem.h"

namespace Magres {
namespace {

/// The atoms behind each peak in one dimension, with their shift.
QVariantList shifts(const QList<SpectrumPeak> &peaks, QList<qint32> SpectrumPeak::*atoms,
                    double SpectrumPeak::*position)
{
    QVariantList list;
    list.reserve(peaks.size());
    for (const SpectrumPeak &peak : peaks) {
        const QList<qint32> &recordNos = peak.*atoms;
        list.append(QVariantMap{{QStringLiteral("Nums"), QVariantList(recordNos.begin(), recordNos.end())},
                                {QStringLiteral("ACount"), int(recordNos.size())},
                                {QStringLiteral("Value"), peak.*position},
                                {QStringLiteral("Value.Method"), QStringLiteral("MAGRES")},
                                {QStringLiteral("Value.Error"), 0.0},
                                {QStringLiteral("AssignedPeaks"), QVariantList{peak.id}}});
    }
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
    if (map.isEmpty())
        return; // not to be had from this host, so not to be replaced either
    QVariantList notes = map.value(key).toList();
    notes.removeIf(
        [&](const QVariant &note) { return note.toMap().value(QStringLiteral("Origin")).toUuid() == entry; });

    const QVariantList nuclei = nucleides(parameters.nucF2.toLatin1(), parameters.nucF1.toLatin1());
    const auto note = [&](int dimension, const QVariantList &shiftList) {
        notes.append(QVariantMap{{QStringLiteral("Origin"), entry},
                                 {QStringLiteral("Nucleus"), nuclei[dimension]},
                                 {QStringLiteral("SpecType"), parameters.specType},
                                 {QStringLiteral("Shifts"), shiftList}});
    };
    note(0, shifts(parameters.peaks, &SpectrumPeak::atomsF2, &SpectrumPeak::positionF2));
    if (parameters.isTwoD())
        note(1, shifts(parameters.peaks, &SpectrumPeak::atomsF1, &SpectrumPeak::positionF1));
    map.insert(key, notes);
    molecule.setMolMap(map);
}

} // namespace Magres
