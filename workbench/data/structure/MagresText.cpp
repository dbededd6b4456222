// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/structure/MagresText.h"

namespace Workbench {
namespace {

template <typename Numbers>
QByteArray columns(const Numbers &numbers)
{
    QByteArray text;
    for (double number : numbers)
        text += ' ' + QByteArray::number(number, 'g', 17);
    return text + '\n';
}

QByteArray calculationBlock(const CalculationMethod &method)
{
    if (method.isEmpty())
        return {};
    QByteArray text = "[calculation]\n";
    if (!method.code.isEmpty())
        text += "calc_code " + method.code.toUtf8() + '\n';
    if (!method.version.isEmpty())
        text += "calc_code_version " + method.version.toUtf8() + '\n';
    if (!method.functional.isEmpty())
        text += "calc_xcfunctional " + method.functional.toUtf8() + '\n';
    if (method.cutoff)
        text += "units calc_cutoffenergy eV\ncalc_cutoffenergy " + QByteArray::number(*method.cutoff, 'g', 17) + '\n';
    return text + "[/calculation]\n";
}

} // namespace

QByteArray magresText(const CrystalStructure &structure, const CalculationMethod &method, const QStringList &comments)
{
    QByteArray text = "#$magres-abinitio-v1.0\n";
    // A second # in a line would end the comment's beginning for some readers.
    for (const QString &comment : comments)
        text += "# " + QString(comment).remove(u'#').simplified().toUtf8() + '\n';
    text += calculationBlock(method) + "[atoms]\nunits lattice Angstrom\nunits atom Angstrom\n";
    if (structure.lattice) {
        const auto &[a, b, c] = *structure.lattice;
        text += "lattice" + columns(std::array{a[0], a[1], a[2], b[0], b[1], b[2], c[0], c[1], c[2]});
    }
    QByteArray shieldings, gradients;
    for (const CrystalAtom &atom : structure.atoms) {
        // Numbered labels were made of species and number.
        const QString label = structure.isNumbered ? atom.element : atom.labels.value(0);
        const QByteArray name = label.toUtf8() + ' ' + QByteArray::number(atom.number);
        text += "atom " + atom.element.toUtf8() + ' ' + name + columns(atom.position);
        if (atom.shielding)
            shieldings += "ms " + name + columns(*atom.shielding);
        if (atom.gradient)
            gradients += "efg " + name + columns(*atom.gradient);
    }
    text += "[/atoms]\n[magres]\n";
    if (!shieldings.isEmpty())
        text += "units ms ppm\n" + shieldings;
    if (!gradients.isEmpty())
        text += "units efg au\n" + gradients;
    return text + "[/magres]\n";
}

} // namespace Workbench
