// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>
#include <vector>

namespace Workbench {

/// How the parameters of a file were calculated, as far as its [calculation] block says. References of shifts carry
/// over only between calculations of one method.
struct CalculationMethod {
    QString code;
    QString version; ///< of the code; it does not make another method
    QString functional;
    std::optional<double> cutoff; ///< of the plane waves, electronvolt

    /// From the text of a file; what is missing there stays empty.
    static CalculationMethod fromText(const QByteArray &text);
    /// From a file, of which only the head is read. Empty for a file that cannot be opened.
    static CalculationMethod fromFile(const QString &fileName);

    /// As documents keep it.
    QVariantMap toMap() const;
    static CalculationMethod fromMap(const QVariantMap &map);

    bool isEmpty() const { return code.isEmpty() && functional.isEmpty() && !cutoff; }
    /// The same code, functional and cut-off, this to a tenth of a percent. What one of both does not know makes no
    /// difference.
    bool agreesWith(const CalculationMethod &other) const;
    /// "CASTEP, PBE, 680 eV"; a note where nothing is known.
    QString text() const;
};

/// The method of files that were calculated alike. What one of them does not know, another may.
class CommonMethod {
public:
    struct Source {
        QString file;
        CalculationMethod method;
    };

    /// A file before this one with another method, which then is not taken; nothing when all agree.
    std::optional<Source> add(const QString &file, const CalculationMethod &method);
    const CalculationMethod &method() const { return m_method; }

private:
    CalculationMethod m_method; ///< what all know together
    std::vector<Source> m_sources; ///< that told anything new
};

} // namespace Workbench
