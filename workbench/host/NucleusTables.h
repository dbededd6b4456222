// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

/// Ground-state properties of the NMR nuclei, by nucleus name ("13C"). The numbers and their sources stand in
/// resources/nuclides.tsv.
class NucleusTables : public QObject {
    Q_OBJECT
public:
    explicit NucleusTables(QObject *parent = nullptr);

    /// The spin as text, "1/2" or "3"; empty for a nucleus that is not in the table.
    Q_INVOKABLE QString spin(QString nucleus) const { return m_nuclei.value(nucleus).spin; }
    /// In fm²; 0 for spin 1/2 and for a nucleus that is not in the table.
    Q_INVOKABLE double quadrupoleMoment(QString nucleus) const { return m_nuclei.value(nucleus).quadrupoleMoment; }
    /// In percent; 0 for a nucleus that is not in the table.
    Q_INVOKABLE double naturalAbundance(QString nucleus) const { return m_nuclei.value(nucleus).abundance; }

    /// All nuclei of the element, in the order of the table (by mass number).
    QStringList isotopes(const QString &element) const;
    /// Those of them whose spin exceeds 1/2.
    QStringList quadrupolarIsotopes(const QString &element) const;
    bool contains(const QString &nucleus) const { return m_nuclei.contains(nucleus); }

    /// The element of a nucleus name: "C" of "13C".
    static QString element(const QString &nucleus);

private:
    struct Properties {
        QString spin;
        double quadrupoleMoment = 0;
        double abundance = 0;
    };
    QHash<QString, Properties> m_nuclei;
    QStringList m_order;
};
