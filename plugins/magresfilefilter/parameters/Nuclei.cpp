// SPDX-License-Identifier: BSD-3-Clause
#include "parameters/Nuclei.h"

#include <QMap>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace Magres {
namespace {

struct Frequency {
    const char *nucleus;
    double MHz;
};

// Resonance frequencies in a field of 17.6 T. The entry of 3He does not follow the ratio of the other rows; spectra
// made with it are out there, so it stays.
constexpr Frequency frequencies[] = {
    {"1H", 750.03},    {"2H", 115.13},    {"3He", 800.01},   {"6Li", 110.38},   {"7Li", 291.51},   {"9Be", 105.41},
    {"11B", 240.68},   {"10B", 80.6},     {"13C", 188.64},   {"14N", 54.22},    {"15N", 76.05},    {"17O", 101.72},
    {"19F", 705.99},   {"21Ne", 59.24},   {"23Na", 198.51},  {"25Mg", 45.95},   {"27Al", 195.59},  {"29Si", 149.13},
    {"31P", 303.9},    {"33S", 57.62},    {"35Cl", 73.57},   {"37Cl", 61.24},   {"39K", 35.05},    {"43Ca", 50.54},
    {"45Sc", 182.49},  {"47Ti", 42.35},   {"49Ti", 42.36},   {"51V", 197.17},   {"50V", 74.74},    {"53Cr", 42.26},
    {"55Mn", 185.56},  {"57Fe", 24.25},   {"59Co", 176.98},  {"61Ni", 67.14},   {"65Cu", 213.23},  {"63Cu", 199.27},
    {"67Zn", 125.5},   {"71Ga", 229.37},  {"69Ga", 180.52},  {"73Ge", 26.24},   {"75As", 128.86},  {"77Se", 143.58},
    {"79Br", 188.56},  {"81Br", 203.26},  {"83Kr", 28.96},   {"87Rb", 245.4},   {"85Rb", 72.41},   {"87Sr", 32.62},
    {"89Y", 36.74},    {"91Zr", 70.02},   {"93Nb", 184.12},  {"97Mo", 50.14},   {"95Mo", 49.09},   {"99Ru", 33.43},
    {"101Ru", 37.46},  {"103Rh", 23.74},  {"105Pd", 34.37},  {"107Ag", 30.51},  {"109Ag", 35.15},  {"111Cd", 159.85},
    {"113Cd", 167.23}, {"113In", 164.98}, {"115In", 165.33}, {"117Sn", 268.83}, {"119Sn", 281.25}, {"115Sn", 246.76},
    {"121Sb", 180.67}, {"123Sb", 97.86},  {"123Te", 197.87}, {"125Te", 238.56}, {"127I", 151.1},   {"131Xe", 61.93},
    {"129Xe", 208.93}, {"133Cs", 99.08},  {"135Ba", 75.04},  {"137Ba", 83.94},  {"139La", 106.78}, {"138La", 99.74},
    {"141Pr", 214.84}, {"143Nd", 41.3},   {"145Nd", 25.51},  {"147Sm", 31.18},  {"149Sm", 25.71},  {"153Eu", 82.37},
    {"151Eu", 186.51}, {"157Gd", 30.25},  {"155Gd", 23.14},  {"159Tb", 180.2},  {"161Dy", 25.38},  {"163Dy", 35.72},
    {"165Ho", 160.06}, {"167Er", 21.73},  {"169Tm", 62.57},  {"173Yb", 36.52},  {"171Yb", 132.73}, {"175Lu", 85.86},
    {"179Hf", 19.12},  {"181Ta", 90.94},  {"183W", 31.63},   {"187Re", 172.92}, {"185Re", 171.18}, {"187Os", 17.6},
    {"189Os", 65.53},  {"191Ir", 13.02},  {"193Ir", 14.37},  {"195Pt", 163.68}, {"197Au", 13.15},  {"201Hg", 50.15},
    {"199Hg", 135.86}, {"205Tl", 439.81}, {"203Tl", 435.66}, {"207Pb", 157.75}, {"177Hf", 30.44},  {"209Bi", 125.95},
    {"229Th", 21.48},  {"235U", 13.43},
};

// Positions in this list are the host's nucleus codes.
constexpr const char *codes[] = {
    "Undef", "1H",    "2H",    "3H",    "3He",   "6Li",   "7Li",   "9Be",   "10B",   "11B",   "13C",   "14N",
    "15N",   "17O",   "19F",   "21Ne",  "23Na",  "25Mg",  "27Al",  "29Si",  "31P",   "33S",   "35Cl",  "37Cl",
    "39K",   "41K",   "43Ca",  "45Sc",  "47Ti",  "49Ti",  "50V",   "51V",   "53Cr",  "55Mn",  "57Fe",  "59Co",
    "61Ni",  "63Cu",  "65Cu",  "67Zn",  "69Ga",  "71Ga",  "73Ge",  "75As",  "77Se",  "79Br",  "81Br",  "83Kr",
    "85Rb",  "87Rb",  "87Sr",  "89Y",   "91Zr",  "93Nb",  "95Mo",  "97Mo",  "99Ru",  "101Ru", "103Rh", "105Pd",
    "107Ag", "109Ag", "111Cd", "113Cd", "113In", "115In", "115Sn", "117Sn", "119Sn", "121Sb", "123Sb", "123Te",
    "125Te", "127I",  "129Xe", "131Xe", "133Cs", "135Ba", "137Ba", "138La", "139La", "141Pr", "143Nd", "145Nd",
    "147Sm", "149Sm", "151Eu", "153Eu", "155Gd", "157Gd", "159Tb", "161Dy", "163Dy", "165Ho", "167Er", "169Tm",
    "171Yb", "173Yb", "175Lu", "176Lu", "177Hf", "179Hf", "181Ta", "183W",  "185Re", "187Re", "187Os", "189Os",
    "191Ir", "193Ir", "195Pt", "197Au", "199Hg", "201Hg", "203Tl", "205Tl", "207Pb", "209Bi", "235U",
};

const QMap<QByteArray, double> &isotopeFrequencyTable()
{
    static const QMap<QByteArray, double> table = [] {
        QMap<QByteArray, double> map;
        for (const Frequency &f : frequencies)
            map.insert(f.nucleus, f.MHz);
        return map;
    }();
    return table;
}

double spinValue(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return parts.size() == 2 ? parts[0].toDouble() / parts[1].toDouble() : text.toDouble();
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

QVariantMap nucleide(const QByteArray &nucleus)
{
    const QByteArray name = nucleus.isEmpty() ? QByteArray("1H") : nucleus;
    return {{QStringLiteral("Isotope"), massNumber(name)},
            {QStringLiteral("Name"), QString::fromLatin1(elementOf(name))}};
}

} // namespace

double isotopeFrequency(const QByteArray &nucleus)
{
    const QMap<QByteArray, double> &table = isotopeFrequencyTable();
    const auto found = table.constFind(nucleus);
    return found != table.constEnd() ? *found : table.value("1H");
}

double spectrometerFrequency(const QByteArray &nucleus, double protonFrequencyMHz)
{
    return protonFrequencyMHz * isotopeFrequency(nucleus) / isotopeFrequency("1H");
}

int nucleusCode(const QByteArray &nucleus)
{
    const auto found = std::find(std::begin(codes), std::end(codes), nucleus);
    return found != std::end(codes) ? int(found - std::begin(codes)) : -1;
}

int massNumber(const QByteArray &nucleus)
{
    const auto first = std::find_if(nucleus.begin(), nucleus.end(), isDigit);
    const auto last = std::find_if_not(first, nucleus.end(), isDigit);
    return QByteArray(first, last - first).toInt();
}

QByteArray elementOf(const QByteArray &nucleus)
{
    return nucleus.mid(std::find_if_not(nucleus.begin(), nucleus.end(), isDigit) - nucleus.begin());
}

QByteArray nucleusName(const QVariantMap &nucleide)
{
    return QByteArray::number(nucleide.value(QStringLiteral("Isotope")).toInt())
        + nucleide.value(QStringLiteral("Name")).toString().toLatin1();
}

QVariantList nucleides(const QByteArray &nucleusF2, const QByteArray &nucleusF1)
{
    return {nucleide(nucleusF2), nucleide(nucleusF1)};
}

QByteArrayList isotopes(const QByteArray &element)
{
    QByteArrayList names;
    const QMap<QByteArray, double> &table = isotopeFrequencyTable();
    for (auto it = table.keyBegin(); it != table.keyEnd(); ++it)
        if (elementOf(*it) == element)
            names.append(*it);
    return names;
}

QByteArrayList quadrupolarIsotopes(const QByteArray &element, const NuclearProperties &properties)
{
    QByteArrayList names = isotopes(element);
    names.removeIf([&](const QByteArray &name) { return !(spinValue(properties.spin(name)) > 0.51); });
    return names;
}

QByteArray defaultQuadrupolarIsotope(const QByteArray &element, const NuclearProperties &properties)
{
    const QByteArrayList names = quadrupolarIsotopes(element, properties);
    if (names.size() == 1)
        return names.first();
    QByteArray best;
    int bestAbundance = 0; // whole percents on purpose: a later isotope within the same percent wins
    for (const QByteArray &name : names) {
        const double abundance = properties.naturalAbundance(name);
        if (abundance > bestAbundance) {
            best = name;
            bestAbundance = int(abundance);
        }
    }
    return best;
}

QByteArray chosenQuadrupolarIsotope(const QByteArray &element, QVariantMap &choices,
                                    const NuclearProperties &properties)
{
    const QString key = QString::fromLatin1(element);
    if (!choices.contains(key))
        choices.insert(key, QString::fromLatin1(defaultQuadrupolarIsotope(element, properties)));
    return choices.value(key).toString().toLatin1();
}

} // namespace Magres
