// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QVBoxLayout;

namespace Workbench {

/// What can be done while the document is empty: open, drop, recent files, samples.
class StartHints : public QWidget {
    Q_OBJECT
public:
    explicit StartHints(QWidget *parent);

    /// Makes the guide and the samples in the program readable.
    static void initResources();

    /// Reads the recent files anew.
    void refresh();

    /// Samples that come with the program, by the names of their files, each with what it shows.
    static QList<std::pair<QString, QString>> samples();
    /// The sample in a folder of the user's, as plug-ins read files only. Throws std::runtime_error.
    static QString sampleFile(const QString &name);

Q_SIGNALS:
    void openRequested();
    void chosen(const QString &file);
    void sampleChosen(const QString &name);

private:
    QVBoxLayout *m_recent;
};

} // namespace Workbench
