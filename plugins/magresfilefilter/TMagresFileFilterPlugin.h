// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "operations/HostContext.h"
#include "support/Catalogue.h"
#include "support/TPlugin.h"
#include "support/WrFileFilters.h"
#include "ui/MagresCommands.h"

#include <QGraphicsWidget>
#include <QList>
#include <QPointer>
#include <QRectF>

class QMenu;

/// The plug-in object: what the host calls by name. The work is done by the operations.
class TMagresFileFilterPlugin : public TPlugin, private Magres::MagresCommands {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.toran.IPlugin/1.0" FILE "magresfilefilter.json")

public:
    TMagresFileFilterPlugin();
    ~TMagresFileFilterPlugin() override;

    bool canCreateItem(int itemType) const override;
    QObject *createItem(int itemType) override;

    // The order of these methods fixes their indices: hosts may call them by number.

    Q_INVOKABLE void updateSpectrum();
    Q_INVOKABLE void autoRef();
    Q_INVOKABLE void calcRmsd();

    Q_INVOKABLE QString fileFilter_adapterClass() const;
    Q_INVOKABLE int fileFilter_customFormat() const;
    Q_INVOKABLE bool fileFilter_canRead() const;
    Q_INVOKABLE bool fileFilter_canWrite() const;
    Q_INVOKABLE QString fileFilter_name() const;
    Q_INVOKABLE QString fileFilter_extensions() const;
    /// Whether the file begins as MAGRES files do.
    Q_INVOKABLE bool fileFilter_matching(const QString &aFileName) const;
    Q_INVOKABLE int fileFilter_dataType() const;
    /// The molecule item and the table item. Throws MagresParseError with the document unchanged.
    Q_INVOKABLE QList<QGraphicsWidget *> fileFilter_read(const QString &aFilename, const QRectF &aRect);
    Q_INVOKABLE int fileFilter_storageType() const;

private:
    QObject *object() override { return this; }
    QIcon icon() const override { return m_icon; }
    const Magres::NuclearProperties &nuclearProperties() const override;
    Magres::MagresData data(const QUuid &dataId) const override;
    void createSpectrum(const QUuid &dataId) override;
    std::optional<Magres::MagresData> chooseQuadrupolarIsotope(const QUuid &dataId) override;

    void addContextMenu();

    const Catalogue m_catalogue;
    const QIcon m_icon{QStringLiteral(":/magres_images/magres.svg")};
    Magres::HostContext m_host;
    WrFileFilters m_fileFilters;
    QPointer<QMenu> m_contextMenu; ///< the host shows it and does not own it
};
