// SPDX-License-Identifier: BSD-3-Clause
#include "MagresText.h"

#include "Crystals.h"

namespace MagresText {

using Magres::MagresAtom;
using Magres::MagresTensor;

MagresData crystalData(int atoms)
{
    const Crystals::Crystal crystal = Crystals::molecular(atoms);
    Crystals::Random random(7);
    MagresData data;
    data.lattice = crystal.lattice;
    data.atoms = crystal.atoms;
    for (MagresAtom &atom : data.atoms) {
        Magres::Tensor shielding;
        for (double &element : shielding)
            element = random.uniform(-150.0, 150.0);
        const double xx = random.uniform(-1.0, 1.0), yy = random.uniform(-1.0, 1.0), xy = random.uniform(-1.0, 1.0);
        atom.labels = {atom.type + QByteArray::number(atom.recordNo + 1)};
        data.shieldings.append(MagresTensor(atom.labels, atom.No, shielding));
        data.EFG.append(MagresTensor(atom.labels, atom.No, {xx, xy, 0.1, xy, yy, 0.2, 0.1, 0.2, -xx - yy}));
    }
    return data;
}

QByteArray magresText(const MagresData &data)
{
    QByteArray text = "#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nlattice";
    const auto number = [](double value) { return " " + QByteArray::number(value, 'E', 16).rightJustified(24); };
    for (double value : data.lattice)
        text += number(value);
    text += "\nunits atom Angstrom\n";
    for (const MagresAtom &atom : data.atoms) {
        text += "atom " + atom.type + ' ' + atom.labels[0] + ' ' + QByteArray::number(atom.No);
        for (double coordinate : atom.pos)
            text += number(coordinate);
        text += '\n';
    }
    text += "[/atoms]\n[magres]\nunits ms ppm\n";
    const auto tensors = [&](const char *keyword, const QList<MagresTensor> &list) {
        for (const MagresTensor &tensor : list) {
            text += keyword + tensor.labels[0] + ' ' + QByteArray::number(tensor.No);
            for (double element : tensor.tensor)
                text += number(element);
            text += '\n';
        }
    };
    tensors("ms ", data.shieldings);
    tensors("efg ", data.EFG);
    return text + "[/magres]\n";
}

} // namespace MagresText
