// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/molecule/ElementStyle.h"

#include <iterator>

namespace Workbench {

namespace {

// The colours of the Jmol viewer (jmol.sourceforge.net/jscolors), which extend the ones of the CPK models; from
// hydrogen on.
constexpr unsigned colors[] = {
    0xffffff, 0xd9ffff, 0xcc80ff, 0xc2ff00, 0xffb5b5, 0x909090, 0x3050f8, 0xff0d0d, 0x90e050, 0xb3e3f5, 0xab5cf2,
    0x8aff00, 0xbfa6a6, 0xf0c8a0, 0xff8000, 0xffff30, 0x1ff01f, 0x80d1e3, 0x8f40d4, 0x3dff00, 0xe6e6e6, 0xbfc2c7,
    0xa6a6ab, 0x8a99c7, 0x9c7ac7, 0xe06633, 0xf090a0, 0x50d050, 0xc88033, 0x7d80b0, 0xc28f8f, 0x668f8f, 0xbd80e3,
    0xffa100, 0xa62929, 0x5cb8d1, 0x702eb0, 0x00ff00, 0x94ffff, 0x94e0e0, 0x73c2c9, 0x54b5b5, 0x3b9e9e, 0x248f8f,
    0x0a7d8c, 0x006985, 0xc0c0c0, 0xffd98f, 0xa67573, 0x668080, 0x9e63b5, 0xd47a00, 0x940094, 0x429eb0, 0x57178f,
    0x00c900, 0x70d4ff, 0xffffc7, 0xd9ffc7, 0xc7ffc7, 0xa3ffc7, 0x8fffc7, 0x61ffc7, 0x45ffc7, 0x30ffc7, 0x1fffc7,
    0x00ff9c, 0x00e675, 0x00d452, 0x00bf38, 0x00ab24, 0x4dc2ff, 0x4da6ff, 0x2194d6, 0x267dab, 0x266696, 0x175487,
    0xd0d0e0, 0xffd123, 0xb8b8d0, 0xa6544d, 0x575961, 0x9e4fb5, 0xab5c00, 0x754f45, 0x428296, 0x420066, 0x007d00,
    0x70abfa, 0x00baff, 0x00a1ff, 0x008fff, 0x0080ff, 0x006bff, 0x545cf2,
};

constexpr const char *elementSymbols[] = {
    "H",  "He", "Li", "Be", "B",  "C",  "N",  "O",  "F",  "Ne", "Na", "Mg", "Al", "Si", "P",  "S",  "Cl",
    "Ar", "K",  "Ca", "Sc", "Ti", "V",  "Cr", "Mn", "Fe", "Co", "Ni", "Cu", "Zn", "Ga", "Ge", "As", "Se",
    "Br", "Kr", "Rb", "Sr", "Y",  "Zr", "Nb", "Mo", "Tc", "Ru", "Rh", "Pd", "Ag", "Cd", "In", "Sn", "Sb",
    "Te", "I",  "Xe", "Cs", "Ba", "La", "Ce", "Pr", "Nd", "Pm", "Sm", "Eu", "Gd", "Tb", "Dy", "Ho", "Er",
    "Tm", "Yb", "Lu", "Hf", "Ta", "W",  "Re", "Os", "Ir", "Pt", "Au", "Hg", "Tl", "Pb", "Bi", "Po", "At",
    "Rn", "Fr", "Ra", "Ac", "Th", "Pa", "U",  "Np", "Pu", "Am", "Cm", "Bk", "Cf", "Es", "Fm", "Md", "No",
    "Lr", "Rf", "Db", "Sg", "Bh", "Hs", "Mt", "Ds", "Rg", "Cn", "Nh", "Fl", "Mc", "Lv", "Ts", "Og",
};
static_assert(std::size(elementSymbols) == 118);

} // namespace

namespace ElementStyle {

QColor color(int atomicNumber)
{
    const bool known = atomicNumber >= 1 && atomicNumber <= int(std::size(colors));
    return known ? QColor::fromRgb(colors[atomicNumber - 1]) : QColor(0xa0, 0xa0, 0xa0);
}

double ballRadius(int atomicNumber)
{
    constexpr int periodEnds[] = {2, 10, 18, 36, 54};
    constexpr double radii[] = {0.22, 0.33, 0.40, 0.44, 0.48};
    for (size_t period = 0; period < std::size(periodEnds); ++period) {
        if (atomicNumber <= periodEnds[period])
            return radii[period];
    }
    return 0.52;
}

QString symbol(int atomicNumber)
{
    const bool known = atomicNumber >= 1 && atomicNumber <= int(std::size(elementSymbols));
    return QString::fromLatin1(known ? elementSymbols[atomicNumber - 1] : "?");
}

} // namespace ElementStyle

} // namespace Workbench
