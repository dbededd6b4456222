// SPDX-License-Identifier: BSD-3-Clause
#include "Targets.h"
#include "VariantSource.h"

#include "reading/Bonds.h"
#include "reading/MagresParser.h"
#include "reading/ParameterTable.h"
#include "support/TPluginError.h"
#include "synthesis/ParameterStep.h"
#include "synthesis/SpectrumRecord.h"

using namespace Qt::StringLiterals;
using namespace Magres;

namespace {

class NoNuclei : public NuclearProperties {
public:
    QString spin(const QByteArray &) const override { return u"1"_s; }
    double quadrupoleMoment(const QByteArray &) const override { return 2.0; }
    double naturalAbundance(const QByteArray &) const override { return 50.0; }
};

/// A methyl group and a nitrogen in a small cell.
QVariantMap sound()
{
    MagresData data;
    Magres::parseMagres("#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nlattice 4 0 0 0.5 4 0 0 0 5\n"
                        "units atom Angstrom\natom C C 1 0 0 0\natom H H 1 -0.36 1.03 0\natom H H 2 -0.36 -0.51 0.89\n"
                        "atom H H 3 -0.36 -0.51 -0.89\natom N N 1 1.47 0 0\n[/atoms]\n[magres]\nunits ms ppm\n"
                        "ms C 1 10 1 0 0 20 0 0 0 30\nms H 1 1 0 0 0 2 0 0 0 3\nms H 2 2 0 0 0 2 0 0 0 3\n"
                        "ms H 3 3 0 0 0 2 0 0 0 3\nms N 1 90 0 0 0 10 0 0 5 3\nunits efg au\n"
                        "efg N 1 0.1 0 0 0 0.2 0 0 0 -0.3\n[/magres]\n",
                        data, [](MagresData &read) { Magres::detectBonds(read.atoms); });
    return data.toMap();
}

} // namespace

void Fuzz::magresMap(QByteArrayView bytes)
{
    static const QVariantMap soundData = sound();
    VariantSource source(bytes,
                         u"1H 2H 13C 14N H C N Xx H1 C1 N1 type labels No recordNo pos bonds atoms EFG tensor "
                         "shieldings lattice QIso ref slope lw nucF1 nucF2 specType corr avIdx qShift freq pts "
                         "ptsF1 ptsF2 RangeF1 RangeF2 RangeF1User RangeF2User"_s.split(u' '));
    MagresSpecParams parameters;
    const bool filledIn = source.byte() % 2 == 0;
    parameters.nucF2 = source.word();
    parameters.nucF1 = source.word();
    parameters.specType = source.byte() % 2;
    parameters.corr = source.byte() % 2;
    parameters.avIdx = source.byte() % 3;
    parameters.pts = parameters.ptsF2 = parameters.ptsF1 = 128;
    QVariant dataMap = soundData;
    QVariant parameterMap = parameters.toMap();
    while (!source.atEnd()) {
        QVariant &tree = source.byte() % 4 == 0 ? parameterMap : dataMap;
        tree = source.changed(tree);
    }

    const NoNuclei nuclei;
    MagresData data;
    data.fromMap(dataMap.toMap());
    parameters.fromMap(parameterMap.toHash());
    Magres::parameterTable(data, nuclei);
    if (filledIn)
        Magres::completeParameters(data, parameters, nuclei);
    // Millions of points are asked for by those who want them, and take their time.
    parameters.pts = std::min(parameters.pts, 4096);
    parameters.ptsF2 = std::min(parameters.ptsF2, 256);
    parameters.ptsF1 = std::min(parameters.ptsF1, 256);
    try {
        Magres::generateSpectrum(data, parameters, nuclei);
    } catch (const TPluginError &) {
    }
}
