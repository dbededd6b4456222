// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/SaveDialog.h"

#include "data/Error.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>

namespace Workbench {

namespace {

class SaveDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

protected:
    void accept() override
    {
        static const QRegularExpression suffix(QStringLiteral("\\*\\.(\\w+)"));
        const QString chosen = suffix.match(selectedNameFilter()).captured(1);
        setDefaultSuffix(chosen);
        // Where there is but one kind of file, "a.magres" is a name without suffix as well, not a calculation to
        // replace.
        const QString name = selectedFiles().value(0);
        if (nameFilters().size() == 1 && !name.endsWith(u'.' + chosen, Qt::CaseInsensitive) && !QFileInfo(name).isDir())
            selectFile(name + u'.' + chosen);
        QFileDialog::accept();
    }
};

} // namespace

FileTypes pictureTypes()
{
    return {{Texts::tr("PDF document"), QStringLiteral("pdf")},
            {Texts::tr("SVG image"), QStringLiteral("svg")},
            {Texts::tr("PNG image"), QStringLiteral("png")}};
}

FileTypes tableTypes()
{
    return {{Texts::tr("Comma-separated values"), QStringLiteral("csv")}, {Texts::tr("JSON"), QStringLiteral("json")}};
}

QStringList filtersOf(const FileTypes &types)
{
    QStringList filters;
    for (const auto &[name, suffix] : types)
        filters.append(QStringLiteral("%1 (*.%2)").arg(name, suffix));
    return filters;
}

QString askForFileToSave(QWidget *parent, const QString &title, const QString &proposed, const QStringList &filters)
{
    const QFileInfo file(proposed);
    SaveDialog dialog(parent, title, proposed.isEmpty() ? QString() : file.path());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(filters);
    dialog.selectFile(file.fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().constFirst() : QString();
}

} // namespace Workbench
