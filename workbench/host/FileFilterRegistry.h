// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsWidget>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QStringList>

namespace Workbench {

/// The file filters that plug-ins have registered. A filter is any object with the fileFilter_ methods.
class FileFilterRegistry : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    Q_INVOKABLE void addPluginFilter(QObject *filter);
    void removePluginFilter(const QObject *filter);

    QList<QObject *> filters() const;

    /// For file dialogs: "MAGRES files (*.magres)".
    QStringList nameFilters() const;

    /// The first filter that takes the file for one of its own; null when none does. A file that cannot be opened at
    /// all is an error (std::runtime_error) that says so.
    QObject *matching(const QString &fileName) const;

    /// Lets the filter read the file into the document. What the filter throws passes through.
    static QList<QGraphicsWidget *> read(QObject *filter, const QString &fileName, const QRectF &rect);

private:
    QList<QPointer<QObject>> m_filters;
};

} // namespace Workbench
