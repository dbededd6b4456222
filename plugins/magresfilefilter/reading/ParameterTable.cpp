// SPDX-License-Identifier: BSD-3-Clause
#include "reading/ParameterTable.h"

#include "parameters/MapConversion.h"
#include "parameters/Nuclei.h"
#include "parameters/TensorIndex.h"

namespace Magres {
namespace {

/// An element's chosen isotope and its quadrupole moment, asked of the host once per element.
class ChosenIsotopes {
public:
    struct Isotope {
        QByteArray name;
        double quadrupoleMoment = 0.0; // fm^2
    };

    ChosenIsotopes(QVariantMap &choices, const NuclearProperties &properties)
        : m_choices(choices), m_properties(properties)
    {
    }

    const Isotope &of(const QByteArray &element)
    {
        const auto known = m_known.constFind(element);
        if (known != m_known.constEnd())
            return *known;
        const QByteArray name = chosenQuadrupolarIsotope(element, m_choices, m_properties);
        const double moment = name.isEmpty() ? 0.0 : m_properties.quadrupoleMoment(name);
        return *m_known.insert(element, {name, moment});
    }

private:
    QVariantMap &m_choices;
    const NuclearProperties &m_properties;
    QHash<QByteArray, Isotope> m_known;
};

void addShielding(QVariantMap &row, const MagresTensor &shielding)
{
    row.insert(QStringLiteral("iso"), shielding.iso());
    row.insert(QStringLiteral("aniso"), shielding.aniso());
    row.insert(QStringLiteral("assym"), shielding.assym());
}

void addEfg(QVariantMap &row, const MagresTensor &efg, const ChosenIsotopes::Isotope &isotope)
{
    row.insert(QStringLiteral("eq"), efg.eq());
    row.insert(QStringLiteral("qassym"), efg.qassym());
    row.insert(QStringLiteral("Cq"), efg.Cq(isotope.quadrupoleMoment));
    row.insert(QStringLiteral("qIso"), QString::fromLatin1(isotope.name));
}

} // namespace

ParameterTable parameterTable(MagresData &data, const NuclearProperties &properties)
{
    struct Row {
        QVariantMap values;
        QVariantList atomNos;
    };
    const TensorIndex shieldings(data.shieldings);
    const TensorIndex efgs(data.EFG);
    ChosenIsotopes isotopes(data.QIso, properties);
    ParameterTable table;
    QList<Row> rows;
    QHash<QByteArrayList, qsizetype> rowOf;
    for (const MagresAtom *atom : atomsInFileOrder(data)) {
        const auto known = rowOf.constFind(atom->labels);
        if (known != rowOf.constEnd()) {
            rows[*known].atomNos.append(atom->recordNo);
            continue;
        }
        rowOf.insert(atom->labels, rows.size());
        Row &row = rows.emplaceBack();
        row.atomNos.append(atom->recordNo);
        row.values = {{QStringLiteral("ID"), QUuid::createUuid()},
                      {QStringLiteral("type"), QString::fromLatin1(atom->type)},
                      {QStringLiteral("labels"), labelsToStrings(atom->labels)}};
        if (const MagresTensor *shielding = shieldings.findNearest(atom->labels, atom->No)) {
            table.hasShielding = true;
            addShielding(row.values, *shielding);
        }
        if (const MagresTensor *efg = efgs.findNearest(atom->labels, atom->No)) {
            table.hasEfg = true;
            addEfg(row.values, *efg, isotopes.of(atom->type));
        }
    }
    table.rows.reserve(rows.size());
    for (Row &row : rows) {
        row.values.insert(QStringLiteral("atomNos"), row.atomNos);
        table.rows.append(row.values);
    }
    return table;
}

} // namespace Magres
