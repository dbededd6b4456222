// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace Workbench {

class HostApplication;
class Simulation;

/// The `-o` options of a command.
class OutputOptions {
public:
    /// What is written: the spectrum in its formats, or pictures of the whole page.
    enum Kind { Spectrum, Page };

    /// Throws UsageError for suffixes that stand for no format and for files that are named twice.
    OutputOptions(const QStringList &fileNames, Kind kind);

    /// Throws UsageError for outputs that would take the place of a file that is read.
    static void refuseInputs(const QStringList &outputs, const QStringList &inputs);

    bool isEmpty() const { return m_fileNames.isEmpty(); }

    /// Whether any of them shows what the page looks like.
    bool areDrawn() const;

    const QStringList &fileNames() const { return m_fileNames; }
    /// Of a file name, in lower case and without the dot.
    static QString suffixOf(const QString &fileName);

    /// All files or none.
    void write(HostApplication &host, const Simulation &simulation) const;

private:
    QStringList m_fileNames;
    Kind m_kind;
};

} // namespace Workbench
