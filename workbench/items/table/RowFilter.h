// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QRegularExpression>
#include <QStringList>
#include <QVariantMap>

namespace Workbench {

/// Which rows of a parameter table a line of text means. Blanks separate conditions that must all hold, commas what
/// may hold instead:
///     C            the element, or a label in full
///     C1*          labels by a pattern
///     C2..C10      labels from one to another, C2 before C10
///     iso>100      a number of the row: iso, aniso, eta, eq, etaq, cq with >, >=, <, <=, =
///     cq=0.1..2    a number from one value to another
class RowFilter {
public:
    /// Throws std::runtime_error with the word that is not understood.
    static RowFilter parse(const QString &text);

    bool isEmpty() const { return m_conditions.isEmpty(); }
    /// A map as a plug-in's table gives it: "type", "labels" and the numbers. A number that the row does not have
    /// fails.
    bool accepts(const QVariantMap &row) const;

private:
    struct Alternative {
        QString key; ///< of a number in the row map; empty: a name
        double lower = 0.0;
        double upper = 0.0;
        bool includesLower = true;
        bool includesUpper = true;
        QString from; ///< a name, or the first label
        QString to; ///< the last label; empty: one name
        QRegularExpression pattern; ///< of labels, when the name has a *
    };

    static Alternative parseAlternative(const QString &word);
    static bool holds(const Alternative &alternative, const QVariantMap &row);

    QList<QList<Alternative>> m_conditions;
};

} // namespace Workbench
