// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QStringList>

namespace Workbench {

/// Ground-state properties of a nucleus.
struct Nuclide {
    QString spin; ///< as text, "1/2" or "3"; empty: not in the table
    double quadrupoleMoment = 0; ///< fm², 0 for spin 1/2
    double abundance = 0; ///< percent
    double frequencyRatio = 0; ///< to 1H, percent, with the sign of the gyromagnetic ratio; 0 unknown
    double gammaFrequency = 0; ///< MHz, where that of 1H is 750; 0: frequencyRatio counts

    bool isKnown() const { return !spin.isEmpty(); }
    bool isQuadrupolar() const { return isKnown() && spin != u"1/2"; }
    double spinNumber() const; ///< 0.5 of "1/2"; 0 unknown
    double gyromagneticRatio() const; ///< rad / (s T), 0 unknown
    /// In a field where 1H has the given frequency; of the bare nucleus, without the
    /// shift of a standard. 0 unknown.
    double larmorFrequency(double protonFrequency) const;
    /// Of the nucleus, where a text tells a spectrometer's frequency in MHz: one that no magnet gives it is that of 1H.
    double observedFrequency(double told) const;
};

/// The NMR nuclei, by name ("13C"). The numbers and their sources stand in resources/nuclides.tsv.
class Nuclides {
public:
    /// Read once per process.
    static const Nuclides &table();

    Nuclide operator[](const QString &nucleus) const { return m_nuclei.value(nucleus); }
    bool contains(const QString &nucleus) const { return m_nuclei.contains(nucleus); }
    /// In the order of the table, by mass number.
    const QStringList &names() const { return m_order; }
    /// What a name such as "sample-13C.csv" speaks of: nuclides of the table, each once.
    QStringList namedIn(const QString &text) const;
    /// A name such as "sample-13C.csv" beside a spectrum of protons; of an unknown nucleus none is another one.
    bool namesOtherThan(const QString &nucleus, const QString &text) const;
    /// The one whose signals a title or a label speaks of: the latter of "1H-13C" and "1H→13C", that of "δC" where no
    /// nuclide is named. Nuclei in braces and decoupled ones are others. Empty where several are left.
    QString observedIn(const QString &text) const;
    /// All nuclei of the element, by mass number.
    QStringList isotopes(const QString &element) const;
    /// Those of them whose spin exceeds 1/2.
    QStringList quadrupolarIsotopes(const QString &element) const;
    /// The one that the plug-in's table takes where none is chosen: the most abundant, as it finds it with percents cut
    /// to whole ones. Empty where none is found in nature, unless it is the only one.
    QString usualQuadrupolarIsotope(const QString &element) const;

    /// The element of a nucleus name: "C" of "13C".
    static QString element(const QString &nucleus);

private:
    Nuclides();

    QHash<QString, Nuclide> m_nuclei;
    QStringList m_order;
};

} // namespace Workbench
