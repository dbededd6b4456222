// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/Catalogue.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace Workbench {

/// The language of all texts, for as long as the object lives: the catalogue of the workbench, that of Qt for buttons
/// and errors of files where it is installed, and what plug-ins are told. Needs an application object.
class Language {
public:
    /// "en" or one of the catalogues, "de". Empty: by the system; a system in any other language is spoken to in
    /// English. A language that is chosen decides how dialogs write numbers too.
    explicit Language(const QString &chosen = QString());
    ~Language();
    Q_DISABLE_COPY_MOVE(Language)

    /// Two letters: that of the object that lives, or the system's.
    static QString current();
    /// Those that can be chosen.
    static QStringList known();

private:
    std::unique_ptr<Catalogue> m_texts;
    std::unique_ptr<Catalogue> m_qtTexts;
};

} // namespace Workbench
