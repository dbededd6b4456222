// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/structure/CrystalStructure.h"

#include "support/MetaTypes.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Workbench {
namespace {

/// Of an atom or a tensor; by these they find each other.
std::pair<QStringList, int> labelAndNumber(const QVariantMap &map)
{
    return {map.value(QStringLiteral("labels")).toStringList(), map.value(QStringLiteral("No")).toInt()};
}

/// The tensors of one kind, found by atom.
class Tensors {
public:
    explicit Tensors(const QVariantMap &list)
    {
        for (const QVariant &value : list) {
            const QVariantMap map = value.toMap();
            const auto elements = map.value(QStringLiteral("tensor")).value<DoubleVector>();
            Tensor3 tensor;
            if (elements.size() != tensor.size()
                || !std::all_of(elements.begin(), elements.end(), [](double e) { return std::isfinite(e); }))
                continue;
            std::copy(elements.begin(), elements.end(), tensor.begin());
            std::optional<Tensor3> &kept = m_byAtom[labelAndNumber(map)];
            if (!kept || tensor < *kept) // as the plug-in chooses
                kept = tensor;
        }
    }

    std::optional<Tensor3> of(const CrystalAtom &atom) const { return m_byAtom.value({atom.labels, atom.number}); }

private:
    QHash<std::pair<QStringList, int>, std::optional<Tensor3>> m_byAtom;
};

std::optional<LatticeVectors> latticeOf(const QVariantMap &data)
{
    const auto values = data.value(QStringLiteral("lattice")).value<QList<double>>();
    if (values.size() != 9)
        return std::nullopt;
    LatticeVectors lattice;
    for (int i = 0; i < 9; ++i)
        lattice[std::size_t(i / 3)][std::size_t(i % 3)] = values[i];
    return lattice;
}

} // namespace

std::optional<double> CrystalAtom::isotropicShielding() const
{
    if (!shielding)
        return std::nullopt;
    return ((*shielding)[0] + (*shielding)[4] + (*shielding)[8]) / 3.0;
}

CrystalStructure CrystalStructure::fromData(const QVariantMap &data)
{
    CrystalStructure structure;
    structure.lattice = latticeOf(data);
    structure.isNumbered = data.value(QStringLiteral("numberToLabel")).toBool();
    const QVariantMap isotopes = data.value(QStringLiteral("QIso")).toMap();
    for (auto it = isotopes.begin(); it != isotopes.end(); ++it)
        structure.quadrupolarIsotopes.emplace(it.key(), it->toString());

    const Tensors shieldings(data.value(QStringLiteral("shieldings")).toMap());
    const Tensors gradients(data.value(QStringLiteral("EFG")).toMap());
    const QVariantMap atoms = data.value(QStringLiteral("atoms")).toMap();
    structure.atoms.reserve(std::size_t(atoms.size()));
    for (const QVariant &value : atoms) {
        const QVariantMap map = value.toMap();
        CrystalAtom atom;
        atom.element = QString::fromLatin1(map.value(QStringLiteral("type")).toByteArray());
        atom.labels = map.value(QStringLiteral("labels")).toStringList();
        atom.number = map.value(QStringLiteral("No")).toInt();
        atom.record = map.value(QStringLiteral("recordNo")).toInt();
        const auto position = map.value(QStringLiteral("pos")).value<DoubleVector>();
        if (position.size() == 3)
            std::copy(position.begin(), position.end(), atom.position.begin());
        atom.shielding = shieldings.of(atom);
        atom.gradient = gradients.of(atom);
        // Records for now: what they are the positions of is known only once all atoms are there.
        for (qint32 record : map.value(QStringLiteral("bonds")).value<QList<qint32>>())
            atom.bonds.push_back(record);
        structure.atoms.push_back(std::move(atom));
    }
    // The map has its entries in the order of their keys as texts.
    std::stable_sort(structure.atoms.begin(), structure.atoms.end(),
                     [](const CrystalAtom &a, const CrystalAtom &b) { return a.record < b.record; });
    QHash<int, int> positions;
    for (int i = 0; i < int(structure.atoms.size()); ++i)
        positions.insert(structure.atoms[std::size_t(i)].record, i);
    for (CrystalAtom &atom : structure.atoms) {
        std::erase_if(atom.bonds, [&](int record) { return !positions.contains(record); });
        for (int &bond : atom.bonds)
            bond = positions.value(bond);
    }
    return structure;
}

QString CrystalStructure::name(int atom) const
{
    const CrystalAtom &a = atoms[std::size_t(atom)];
    return a.labels.value(0) + (isNumbered ? QString() : QStringLiteral(".%1").arg(a.number));
}

bool CrystalStructure::isNamed(int atom, const QString &name) const
{
    return atoms[std::size_t(atom)].labels.contains(name) || this->name(atom) == name;
}

std::map<QString, int> CrystalStructure::composition() const
{
    std::map<QString, int> counts;
    for (const CrystalAtom &atom : atoms)
        ++counts[atom.element];
    return counts;
}

QString CrystalStructure::formula() const
{
    std::map<QString, int> counts = composition();
    QString text;
    const auto take = [&](const QString &element) {
        const auto found = counts.find(element);
        if (found == counts.end())
            return;
        text += element + (found->second > 1 ? QString::number(found->second) : QString());
        counts.erase(found);
    };
    if (counts.contains(QStringLiteral("C"))) {
        take(QStringLiteral("C"));
        take(QStringLiteral("H"));
    }
    while (!counts.empty())
        take(QString(counts.begin()->first));
    return text;
}

int CrystalStructure::formulaUnits() const
{
    int divisor = 0;
    for (const auto &[element, count] : composition())
        divisor = std::gcd(divisor, count);
    return divisor;
}

QVariantMap labelledByAtom(QVariantMap data)
{
    const QString atomsKey = QStringLiteral("atoms"), labelsKey = QStringLiteral("labels");
    QHash<std::pair<QStringList, int>, QStringList> ownLabels; // of all atoms that cannot be told apart
    QVariantMap atoms = data.value(atomsKey).toMap();
    for (QVariant &value : atoms) {
        QVariantMap atom = value.toMap();
        const QString own = QString::number(atom.value(QStringLiteral("recordNo")).toInt());
        ownLabels[labelAndNumber(atom)].append(own);
        atom.insert(labelsKey, QStringList(own));
        value = atom;
    }
    data.insert(atomsKey, atoms);
    for (const QString &kind : {QStringLiteral("shieldings"), QStringLiteral("EFG")}) {
        QVariantMap labelled;
        for (const QVariant &value : data.value(kind).toMap()) {
            QVariantMap tensor = value.toMap();
            for (const QString &own : ownLabels.value(labelAndNumber(tensor))) {
                tensor.insert(labelsKey, QStringList(own));
                labelled.insert(QString::number(labelled.size()), tensor);
            }
        }
        data.insert(kind, labelled);
    }
    return data;
}

} // namespace Workbench
