// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/Language.h"

#include <QLibraryInfo>
#include <QLocale>

// Names of resources are global.
static void initialiseCatalogues()
{
    Q_INIT_RESOURCE(workbench_translations);
}

namespace Workbench {

namespace {

QString chosenLanguage;

/// LC_MESSAGES decides, not the locale of numbers.
QString systemLanguage()
{
    const QStringList languages = QLocale::system().uiLanguages();
    const QString first = languages.value(0).section(QLatin1Char('-'), 0, 0);
    return first.size() < 2 ? QStringLiteral("en") : first; // "C" is no language
}

} // namespace

Language::Language(const QString &chosen)
{
    initialiseCatalogues();
    chosenLanguage = chosen;
    if (!chosen.isEmpty())
        QLocale::setDefault(QLocale(chosen));
    const QString own = known().contains(current()) ? current() : QStringLiteral("en");
    m_texts = std::make_unique<Catalogue>(QStringLiteral(":/workbench/translations"), QStringLiteral("workbench"), own);
    if (current() == u"en")
        return;
    m_qtTexts = std::make_unique<Catalogue>(QLibraryInfo::path(QLibraryInfo::TranslationsPath),
                                            QStringLiteral("qtbase"), current());
}

Language::~Language()
{
    if (!chosenLanguage.isEmpty())
        QLocale::setDefault(QLocale::system());
    chosenLanguage.clear();
}

QString Language::current()
{
    return chosenLanguage.isEmpty() ? systemLanguage() : chosenLanguage;
}

QStringList Language::known()
{
    return {QStringLiteral("en"), QStringLiteral("de")};
}

} // namespace Workbench
