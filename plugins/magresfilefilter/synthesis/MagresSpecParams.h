// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArrayList>
#include <QList>
#include <QString>
#include <QUuid>
#include <QVariantHash>
#include <QVariantMap>

#include <array>

class QSettings;

namespace Magres {

/// Which partners of a site make the cross peaks of a 2D spectrum.
enum class CorrelationMode : qint32 { StrongestDipolar = 0, RssDipolar = 1 };
/// Which XH3 groups have their sites averaged.
enum class AveragingMode : qint32 { None = 0, Ch3Only = 1, AllXh3 = 2 };
enum class SpectrumKind : qint32 { OneD = 0, TwoD = 1 };

/// A peak of a simulated spectrum, with the sites that it stands for. Positions in ppm.
struct SpectrumPeak {
    QUuid id = QUuid::createUuid();
    double positionF2 = 0.0;
    double positionF1 = 0.0; ///< 0 in 1D
    double height = 1.0;
    QByteArrayList labelsF2;
    QByteArrayList labelsF1; ///< empty in 1D
    QList<qint32> atomsF2; ///< recordNo of the atoms; labels may be shared by atoms that have no part in the peak
    QList<qint32> atomsF1; ///< empty in 1D
};

/// What a simulated spectrum is made with. F2 is the direct dimension and the only one in 1D, F1 the indirect one.
///
/// The names of the fields are the keys of the map form that is kept with every spectrum. Enumerations are kept as
/// plain numbers, since a record from elsewhere may hold any.
struct MagresSpecParams {
    QList<SpectrumPeak> peaks; ///< of the spectrum being made; never kept

    qint32 corr = 0; ///< CorrelationMode
    QList<bool> qShift{false, false}; ///< F2, F1: add the second-order quadrupolar shift; a missing entry is false
    QString nucF1;
    QString nucF2;
    QVariantMap slope; ///< per nucleus, of the line from shielding to shift
    QVariantMap ref; ///< per nucleus, intercept of that line, ppm
    QVariantMap lw; ///< per nucleus, full width at half height, Hz
    qint32 avIdx = 0; ///< AveragingMode
    double freq = 600.0; ///< of 1H, MHz
    std::array<double, 2> RangeF2{0.0, 1.0}; ///< from, to, ppm
    std::array<double, 2> RangeF1{0.0, 1.0};
    bool RangeF2User = false; ///< the range was chosen by the user
    bool RangeF1User = false;
    qint32 pts = 8129; ///< of a 1D spectrum
    qint32 ptsF2 = 1024;
    qint32 ptsF1 = 256;
    qint32 specType = 0; ///< SpectrumKind
    QUuid magresDataId;

    bool isTwoD() const { return specType == qint32(SpectrumKind::TwoD); }
    bool quadShift(int dimension) const { return qShift.value(dimension, false); }

    // What the maps hold of a nucleus; the fall-back where they hold nothing or a number that is not finite. A text or
    // another thing in place of the number counts as 0, as everywhere in the map form.
    double referenceOf(const QString &nucleus) const; // ppm
    double slopeOf(const QString &nucleus) const;
    /// Hz. The fall-back depends on the dimension: 0 is F2, 1 is F1.
    double lineWidthOf(const QString &nucleus, int dimension) const;

    QVariantHash toMap() const;
    /// Absent keys get defaults, which differ from those of a new record; absent ranges keep what the record has.
    void fromMap(const QVariantHash &map);

    /// The parameters last used are the defaults of the next spectrum. Ranges and quadrupolar shifts are not among
    /// them.
    void loadSettings(const QSettings &settings);
    void saveSettings(QSettings &settings) const;
};

} // namespace Magres
