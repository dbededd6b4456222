// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QCoreApplication>
#include <QTranslator>

/// The translated texts of a plug-in, or of another part of the program, for as long as the object lives.
class Catalogue {
public:
    /// Looks for a file such as "name_de.qm" in the directory, which may be one of a resource. The language is a name
    /// like "de" or "de_DE"; without a catalogue for it the texts stay English.
    Catalogue(const QString &directory, const QString &name, QString language)
    {
        language.replace(QLatin1Char('-'), QLatin1Char('_'));
        if (!language.isEmpty() && m_translator.load(name + QLatin1Char('_') + language, directory))
            QCoreApplication::installTranslator(&m_translator);
    }
    ~Catalogue()
    {
        // A plug-in that nobody deletes goes with the application, which holds no translators any more by then.
        if (QCoreApplication::instance())
            QCoreApplication::removeTranslator(&m_translator);
    }
    Q_DISABLE_COPY_MOVE(Catalogue)

private:
    QTranslator m_translator;
};
