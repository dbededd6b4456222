// SPDX-License-Identifier: BSD-3-Clause
#include "Targets.h"

#include "reading/Bonds.h"
#include "reading/MagresParser.h"
#include "reading/MoleculeCompletion.h"
#include "reading/MoleculeDescription.h"

void Fuzz::magresText(QByteArrayView bytes)
{
    MagresData data;
    try {
        Magres::parseMagres(bytes, data, [](MagresData &read) {
            Magres::detectBonds(read.atoms);
            Magres::completeMolecules(read.atoms, read.lattice);
            Magres::completeMolecules(read.atoms, read.lattice);
        });
    } catch (const MagresParseError &) {
        return;
    }
    Magres::moleculeDescription(data);
    MagresData().fromMap(data.toMap());
}
