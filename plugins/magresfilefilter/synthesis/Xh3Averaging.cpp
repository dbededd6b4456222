// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/Xh3Averaging.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace Magres {
namespace {

QByteArrayList labelsOf(const Xh3Group &group)
{
    QByteArrayList labels;
    for (const MagresAtom *atom : group)
        labels += atom->labels;
    return labels;
}

/// A peak list from which peaks are taken out by label and to which merged ones are appended.
class MergingList {
public:
    using Labels = QByteArrayList SpectrumPeak::*;

    MergingList(const QList<SpectrumPeak> &peaks, Labels labels) : m_labels(labels)
    {
        for (const SpectrumPeak &peak : peaks)
            append(peak);
    }

    void append(const SpectrumPeak &peak)
    {
        for (const QByteArray &label : peak.*m_labels)
            m_byLabel[label].append(m_peaks.size());
        m_peaks.append(peak);
        m_taken.push_back(false);
    }

    /// In list order.
    QList<SpectrumPeak> take(const QByteArrayList &labels)
    {
        QList<qsizetype> found;
        for (const QByteArray &label : labels)
            found += m_byLabel.take(label);
        std::sort(found.begin(), found.end());
        QList<SpectrumPeak> peaks;
        for (qsizetype i : std::as_const(found)) { // a peak with several of the labels more than once
            if (!m_taken[size_t(i)])
                peaks.append(m_peaks[i]);
            m_taken[size_t(i)] = true;
        }
        return peaks;
    }

    QList<SpectrumPeak> remaining() const
    {
        QList<SpectrumPeak> peaks;
        for (qsizetype i = 0; i < m_peaks.size(); ++i)
            if (!m_taken[size_t(i)])
                peaks.append(m_peaks[i]);
        return peaks;
    }

private:
    Labels m_labels;
    QList<SpectrumPeak> m_peaks;
    std::vector<bool> m_taken;
    QHash<QByteArray, QList<qsizetype>> m_byLabel;
};

/// Each once, in the order in which they come.
QList<qint32> atomsOf(const QList<SpectrumPeak> &peaks, QList<qint32> SpectrumPeak::*atoms)
{
    if (peaks.size() == 1) // which may have very many by now
        return peaks.first().*atoms;
    QList<qint32> all;
    QSet<qint32> known;
    for (const SpectrumPeak &peak : peaks) {
        for (qint32 atom : peak.*atoms) {
            known.insert(atom);
            if (known.size() > all.size())
                all.append(atom);
        }
    }
    return all;
}

/// A fresh peak that takes the place of others: their heights come on top of its own 1.0.
SpectrumPeak mergedPeak(const QList<SpectrumPeak> &members)
{
    SpectrumPeak merged = members.first();
    merged.id = QUuid::createUuid();
    merged.height = 1.0;
    for (const SpectrumPeak &member : members)
        merged.height += member.height;
    merged.atomsF2 = atomsOf(members, &SpectrumPeak::atomsF2);
    merged.atomsF1 = atomsOf(members, &SpectrumPeak::atomsF1);
    return merged;
}

/// Peaks with equal labels together, in the order of the first of each.
QList<QList<SpectrumPeak>> byLabels(const QList<SpectrumPeak> &peaks, MergingList::Labels labels)
{
    QList<QList<SpectrumPeak>> bundles;
    QHash<QByteArrayList, qsizetype> positions;
    for (const SpectrumPeak &peak : peaks) {
        const auto known = positions.constFind(peak.*labels);
        if (known != positions.constEnd()) {
            bundles[*known].append(peak);
        } else {
            positions.insert(peak.*labels, bundles.size());
            bundles.append({peak});
        }
    }
    return bundles;
}

} // namespace

QList<Xh3Group> xh3Groups(const MagresData &data, AveragingMode mode)
{
    QList<Xh3Group> groups;
    if (mode != AveragingMode::Ch3Only && mode != AveragingMode::AllXh3)
        return groups;
    QHash<qint32, const MagresAtom *> byRecord;
    for (const MagresAtom &atom : data.atoms)
        byRecord.insert(atom.recordNo, &atom);
    for (const MagresAtom *centre : atomsInFileOrder(data)) {
        if (mode == AveragingMode::Ch3Only ? centre->type != "C" : centre->type == "H")
            continue;
        Xh3Group hydrogens;
        for (qint32 bonded : centre->bonds)
            if (const MagresAtom *atom = byRecord.value(bonded); atom && atom->type == "H")
                hydrogens.append(atom);
        if (hydrogens.size() == 3)
            groups.append(hydrogens);
    }
    return groups;
}

QList<SpectrumPeak> averagedSitePeaks(const QList<SpectrumPeak> &peaks, const QList<Xh3Group> &groups)
{
    MergingList list(peaks, &SpectrumPeak::labelsF2);
    for (const Xh3Group &group : groups) {
        const QByteArrayList labels = labelsOf(group);
        const QList<SpectrumPeak> members = list.take(labels);
        if (members.isEmpty())
            continue;
        SpectrumPeak merged = mergedPeak(members);
        merged.labelsF2 = labels;
        double sum = 0.0;
        for (const SpectrumPeak &member : members)
            sum += member.positionF2;
        merged.positionF2 = sum / double(members.size());
        list.append(merged);
    }
    return list.remaining();
}

QList<SpectrumPeak> averagedCrossPeaks(const QList<SpectrumPeak> &peaks, const QList<Xh3Group> &groups, int dimension,
                                       const QList<Site> &sites, const std::vector<double> &shifts)
{
    QHash<const MagresAtom *, double> shiftOf;
    for (qsizetype i = 0; i < sites.size(); ++i)
        shiftOf.insert(sites[i].atom, shifts[size_t(i)]);

    const MergingList::Labels own = dimension == 0 ? &SpectrumPeak::labelsF2 : &SpectrumPeak::labelsF1;
    const MergingList::Labels other = dimension == 0 ? &SpectrumPeak::labelsF1 : &SpectrumPeak::labelsF2;
    QList<qint32> SpectrumPeak::*const atoms = dimension == 0 ? &SpectrumPeak::atomsF2 : &SpectrumPeak::atomsF1;
    double SpectrumPeak::*const position = dimension == 0 ? &SpectrumPeak::positionF2 : &SpectrumPeak::positionF1;

    MergingList list(peaks, own);
    for (const Xh3Group &group : groups) {
        const QByteArrayList labels = labelsOf(group);
        double sum = 0.0;
        QList<qint32> groupAtoms;
        for (const MagresAtom *atom : group) {
            sum += shiftOf.value(atom);
            groupAtoms.append(atom->recordNo);
        }
        for (const QList<SpectrumPeak> &members : byLabels(list.take(labels), other)) {
            SpectrumPeak merged = mergedPeak(members);
            merged.*own = labels;
            for (qint32 atom : groupAtoms)
                if (!(merged.*atoms).contains(atom))
                    (merged.*atoms).append(atom);
            merged.*position = sum / double(group.size());
            list.append(merged);
        }
    }
    return list.remaining();
}

} // namespace Magres
