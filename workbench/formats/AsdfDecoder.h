// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace Workbench {

/// What an XYDATA table says of its abscissa: point i lies at first + i * step, in the table's units.
struct XyAbscissa {
    double first = 0.0;
    double step = 0.0;
    double factor = 1.0; ///< of the X values written in the table
    int points = 0;
};

/// Decodes the lines of a table (X++(Y..Y)): an X value, then ordinates in any mixture of the forms AFFN, PAC, SQZ, DIF
/// and DUP (R. S. McDonald, P. A. Wilks, Appl. Spectrosc. 42 (1988) 151). A line that follows one with a difference
/// at its end repeats that line's last ordinate, which is checked and counted once.
///
/// Points are placed by their own count. The X values at the line starts are written from a countdown, a point number
/// or another origin by several programs, so one that disagrees is remembered and no error.
///
/// Every error is a std::runtime_error with source and line. Memory grows with the ordinates that have been read, up to
/// the points of the abscissa.
class AsdfDecoder {
public:
    AsdfDecoder(const QString &source, const XyAbscissa &abscissa);

    void addLine(std::string_view line, int number);
    /// So far.
    size_t count() const { return m_ordinates.size(); }
    /// The ordinates, without any factor. Fewer than the abscissa says are an error, given for the line `number`.
    std::vector<double> finish(int number);

    /// The first line whose X value is not that of its point.
    struct Disagreement {
        int line = 0;
        double found = 0.0; ///< in the units of the abscissa
        double due = 0.0;
    };
    const std::optional<Disagreement> &disagreement() const { return m_disagreement; }

private:
    enum class Form { None, Value, Difference, Duplicate };

    void addToken(Form form, double number);
    void addValue(double value);
    void append(double value);
    void repeat(double count);
    void checkAbscissa(std::string_view text, double x);
    [[noreturn]] void fail(const QString &what) const;
    /// A plain number at the start of `rest`, which is moved behind it.
    double takeNumber(std::string_view &rest, bool exponentNeedsSign) const;
    double takeDigits(std::string_view &rest, std::string lead) const;

    QString m_source;
    XyAbscissa m_abscissa;
    std::vector<double> m_ordinates;
    int m_line = 0;
    Form m_previous = Form::None; ///< of the token before, None at the start of a line
    bool m_duplicated = false; ///< the token before was a repeat count
    bool m_checkDue = false; ///< the next ordinate repeats the last one
    double m_last = 0.0; ///< the last ordinate
    double m_difference = 0.0; ///< the last difference
    std::optional<Disagreement> m_disagreement;
};

} // namespace Workbench
