// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/SiteTable.h"

#include "data/Error.h"
#include "data/Nuclides.h"

namespace Workbench {

QString SiteTable::Scale::text() const
{
    return Texts::tr("Reference %1 ppm, slope %2: %3")
        .arg(QString::number(reference, 'f', 2), QString::number(slope, 'g', 5),
             source.isEmpty() ? Texts::tr("placeholders, only differences mean something") : source);
}

void SiteTable::Options::setScale(const QString &nucleus, const Scale &scale)
{
    scales.insert(nucleus, scale);
    scales.insert(Nuclides::element(nucleus), scale);
}

SiteTable::Scale SiteTable::Options::scaleOf(const QString &nucleus) const
{
    return scales.value(nucleus, scales.value(Nuclides::element(nucleus)));
}

SiteTable::SiteTable(CrystalStructure structure, Options options)
    : m_structure(std::move(structure)),
      m_options(std::move(options)),
      m_lattice(m_structure.lattice ? Lattice::of(*m_structure.lattice) : std::nullopt)
{
    // The first that has a tensor: it is the one whose numbers the row shows.
    const auto hasTensor = [&](int i) {
        const CrystalAtom &atom = m_structure.atoms[std::size_t(i)];
        return atom.shielding || atom.gradient;
    };
    const auto insert = [&](auto &atoms, const auto &key, int i) {
        const auto known = atoms.find(key);
        if (known == atoms.end())
            atoms.insert(key, i);
        else if (!hasTensor(*known) && hasTensor(i))
            *known = i;
    };
    for (int i = 0; i < int(m_structure.atoms.size()); ++i) {
        const CrystalAtom &atom = m_structure.atoms[std::size_t(i)];
        insert(m_atoms, std::pair(atom.element, atom.labels), i);
        insert(m_byLabels, atom.labels, i);
    }
}

const UniqueSites &SiteTable::unique() const
{
    if (!m_unique)
        m_unique = UniqueSites::of(m_structure, m_options.sites);
    return *m_unique;
}

int SiteTable::atomOfRow(const QVariantMap &row) const
{
    const QStringList labels = row.value(QStringLiteral("labels")).toStringList();
    const int own = m_atoms.value({row.value(QStringLiteral("type")).toString(), labels}, -1);
    // The row of a label that elements share has the type of one of them.
    return own >= 0 ? own : m_byLabels.value(labels, -1);
}

QString SiteTable::isotopeOf(const QString &element) const
{
    const auto chosen = m_structure.quadrupolarIsotopes.find(element);
    return chosen != m_structure.quadrupolarIsotopes.end() ? chosen->second
                                                           : Nuclides::table().usualQuadrupolarIsotope(element);
}

double SiteTable::larmorFrequency(const QString &isotope) const
{
    return Nuclides::table()[isotope].larmorFrequency(m_options.frequency);
}

std::optional<double> SiteTable::value(const SiteColumn &column, int atom) const
{
    const CrystalAtom &member = m_structure.atoms[std::size_t(atom)];
    const QString isotope = isotopeOf(member.element);
    const Nuclide nuclide = Nuclides::table()[isotope];
    const Scale scale = m_options.scales.value(member.element);
    int multiplicity = 1;
    if (column.basis == SiteColumn::Basis::Symmetry) {
        if (m_multiplicities.empty()) {
            m_multiplicities.assign(m_structure.atoms.size(), 1);
            for (const UniqueSite &site : unique().sites)
                for (int equivalent : site.atoms)
                    m_multiplicities[std::size_t(equivalent)] = site.nuclei();
        }
        multiplicity = m_multiplicities[std::size_t(atom)];
    }
    return column.value({member, m_lattice ? &*m_lattice : nullptr, multiplicity, scale.reference, scale.slope,
                         nuclide.quadrupoleMoment, nuclide.spinNumber(), larmorFrequency(isotope)});
}

QString SiteTable::basis(const SiteColumn &column, int atom) const
{
    const QString &element = m_structure.atoms[std::size_t(atom)].element;
    const QString isotope = isotopeOf(element);
    switch (column.basis) {
    case SiteColumn::Basis::Tensor:
        break;
    case SiteColumn::Basis::Scale:
        return m_options.scales.value(element).text();
    case SiteColumn::Basis::Isotope:
        return isotope;
    case SiteColumn::Basis::Field:
        return isotope.isEmpty() ? QString()
                                 : Texts::tr("%1 at %2 MHz, where 1H is at %3 MHz")
                                       .arg(isotope, QString::number(larmorFrequency(isotope), 'f', 2),
                                            QString::number(m_options.frequency));
    case SiteColumn::Basis::Symmetry:
        return unique().spaceGroup;
    }
    return {};
}

} // namespace Workbench
