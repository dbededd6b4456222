// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVariantMap>

#include <array>
#include <map>
#include <optional>
#include <vector>

namespace Workbench {

using Vector3 = std::array<double, 3>;
using Tensor3 = std::array<double, 9>; ///< row-major; not necessarily symmetric
using LatticeVectors = std::array<Vector3, 3>; ///< a, b, c, Angstrom

struct CrystalAtom {
    QString element;
    QStringList labels; ///< as the document has them; what the plug-in reads has one
    int number = 0; ///< index within the label
    int record = 0; ///< position in the file, from 0
    Vector3 position{}; ///< Angstrom
    std::optional<Tensor3> shielding; ///< ppm; finite
    std::optional<Tensor3> gradient; ///< of the electric field, atomic units; finite
    std::vector<int> bonds; ///< positions in CrystalStructure::atoms

    /// A third of the shielding's trace, ppm.
    std::optional<double> isotropicShielding() const;
};

/// Atoms and tensors of one file.
struct CrystalStructure {
    std::optional<LatticeVectors> lattice;
    std::vector<CrystalAtom> atoms; ///< in the order of the file
    bool isNumbered = true; ///< labels contain the index, so that each names one atom
    std::map<QString, QString> quadrupolarIsotopes; ///< chosen by element: "O" -> "17O"

    /// From the map form in which the document keeps a data set. A tensor is that of the atom's labels and number;
    /// of several the one whose elements compare lowest.
    static CrystalStructure fromData(const QVariantMap &data);

    /// What tells the atom apart from all others: "C1", or "HM.2" where atoms share a label.
    QString name(int atom) const;
    /// Whether a user means this atom, by its name or by a label that it shares with others.
    bool isNamed(int atom, const QString &name) const;

    std::map<QString, int> composition() const;
    /// Of all atoms, in Hill's order: carbon, hydrogen, then the others by the alphabet.
    QString formula() const;
    /// How many times the smallest whole-numbered formula is in it: Z of a molecular crystal, unless molecules are
    /// alike.
    int formulaUnits() const;
};

/// A data set in the document's map form, with a label of its own for every atom. Tensors go with their atoms; those of
/// no atom are left out.
QVariantMap labelledByAtom(QVariantMap data);

} // namespace Workbench
