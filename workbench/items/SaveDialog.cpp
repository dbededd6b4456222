// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/SaveDialog.h"

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
        setDefaultSuffix(suffix.match(selectedNameFilter()).captured(1));
        QFileDialog::accept();
    }
};

} // namespace

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
