// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/SiteColumns.h"
#include "analysis/comparison/UniqueSites.h"

#include <QMap>

namespace Workbench {

/// What the further columns of a plug-in's table show, for the atoms of its structure.
class SiteTable {
public:
    /// How shieldings become shifts.
    struct Scale {
        double reference = 100; ///< ppm
        double slope = -1;
        QString source; ///< whose they are; empty: nobody's, placeholders
        bool operator==(const Scale &) const = default;

        /// For people.
        QString text() const;
    };
    struct Options {
        UniqueSites::Options sites;
        QMap<QString, Scale> scales; ///< by element, as one row has one shift, and by nucleus where that is known
        double frequency = 600; ///< of 1H, MHz

        /// For the nucleus and its element.
        void setScale(const QString &nucleus, const Scale &scale);
        /// That of the nucleus, else of its element, whose isotopes have nearly the same shifts.
        Scale scaleOf(const QString &nucleus) const;
        bool operator==(const Options &) const = default;
    };

    SiteTable(CrystalStructure structure, Options options);

    const CrystalStructure &structure() const { return m_structure; }
    /// Searched for when they are first asked for, which takes the square of the number of atoms.
    const UniqueSites &unique() const;

    /// The first one of a row as a plug-in's table gives it ("type", "labels"); -1 for none.
    int atomOfRow(const QVariantMap &row) const;
    /// None where the atom has no such value.
    std::optional<double> value(const SiteColumn &column, int atom) const;
    /// What the value rests on besides the tensor, for people; empty for nothing.
    QString basis(const SiteColumn &column, int atom) const;

private:
    QString isotopeOf(const QString &element) const;
    double larmorFrequency(const QString &isotope) const;

    const CrystalStructure m_structure;
    const Options m_options;
    const std::optional<Lattice> m_lattice;
    QHash<std::pair<QString, QStringList>, int> m_atoms; ///< first ones, by element and labels
    QHash<QStringList, int> m_byLabels;
    mutable std::optional<UniqueSites> m_unique;
    mutable std::vector<int> m_multiplicities; ///< by atom
};

} // namespace Workbench
