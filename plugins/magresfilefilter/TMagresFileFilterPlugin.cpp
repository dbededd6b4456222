// SPDX-License-Identifier: BSD-3-Clause
#include "TMagresFileFilterPlugin.h"

#include "operations/FitOperations.h"
#include "operations/IsotopeOperation.h"
#include "operations/ReadOperation.h"
#include "operations/SpectrumOperations.h"
#include "reading/MagresParser.h"
#include "support/MetaTypes.h"
#include "synthesis/SpectrumRecord.h"
#include "ui/WMagresTable.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QMenu>

TMagresFileFilterPlugin::TMagresFileFilterPlugin()
    : TPlugin(0),
      m_catalogue(QStringLiteral(":/magres_translations"), QStringLiteral("magresfilefilter"),
                  mainWindow().property("language").toString()),
      m_host(*this),
      m_fileFilters(qApp->property("fileFilters").value<QObject *>())
{
    registerSharedMetaTypes();
    m_fileFilters.addPluginFilter(this);
    addContextMenu();
}

TMagresFileFilterPlugin::~TMagresFileFilterPlugin()
{
    // A host that does not delete the plug-in offers the menu to the end; widgets cannot be deleted any more then.
    if (!QCoreApplication::closingDown())
        delete m_contextMenu;
}

void TMagresFileFilterPlugin::addContextMenu()
{
    auto *hostMenu = qobject_cast<QMenu *>(mainWindow().property("nmrContextMenu").value<QObject *>());
    if (!hostMenu)
        return;
    m_contextMenu = new QMenu(tr("MAGRES"));
    m_contextMenu->setIcon(m_icon);
    const auto add = [this](const QString &text, void (TMagresFileFilterPlugin::*command)()) {
        connect(m_contextMenu->addAction(text), &QAction::triggered, this, command);
    };
    add(QStringLiteral("Edit Spectrum..."), &TMagresFileFilterPlugin::updateSpectrum);
    add(QStringLiteral("Auto reference"), &TMagresFileFilterPlugin::autoRef);
    add(QStringLiteral("RMSD"), &TMagresFileFilterPlugin::calcRmsd);
    hostMenu->addMenu(m_contextMenu);
}

bool TMagresFileFilterPlugin::canCreateItem(int itemType) const
{
    return itemType == WMagresTable::itemType;
}

QObject *TMagresFileFilterPlugin::createItem(int itemType)
{
    return canCreateItem(itemType) ? new WMagresTable(*this) : nullptr;
}

void TMagresFileFilterPlugin::updateSpectrum()
{
    Magres::updateSpectrum(m_host);
}

void TMagresFileFilterPlugin::autoRef()
{
    Magres::autoReference(m_host);
}

void TMagresFileFilterPlugin::calcRmsd()
{
    Magres::showRmsd(m_host);
}

QString TMagresFileFilterPlugin::fileFilter_adapterClass() const
{
    return QStringLiteral("TPluginFileFilterAdapter");
}

int TMagresFileFilterPlugin::fileFilter_customFormat() const
{
    return Magres::customFileFormat;
}

bool TMagresFileFilterPlugin::fileFilter_canRead() const
{
    return true;
}

bool TMagresFileFilterPlugin::fileFilter_canWrite() const
{
    return false;
}

QString TMagresFileFilterPlugin::fileFilter_name() const
{
    return QStringLiteral("MAGRES files");
}

QString TMagresFileFilterPlugin::fileFilter_extensions() const
{
    return QStringLiteral("*.magres");
}

bool TMagresFileFilterPlugin::fileFilter_matching(const QString &aFileName) const
{
    return Magres::isMagresFile(aFileName);
}

int TMagresFileFilterPlugin::fileFilter_dataType() const
{
    return 4; // a code of the host's, like the storage type
}

QList<QGraphicsWidget *> TMagresFileFilterPlugin::fileFilter_read(const QString &aFilename, const QRectF &aRect)
{
    return Magres::readIntoDocument(m_host, *this, aFilename, aRect);
}

int TMagresFileFilterPlugin::fileFilter_storageType() const
{
    return 1;
}

const Magres::NuclearProperties &TMagresFileFilterPlugin::nuclearProperties() const
{
    return m_host.nuclearProperties();
}

Magres::MagresData TMagresFileFilterPlugin::data(const QUuid &dataId) const
{
    return m_host.data(dataId);
}

void TMagresFileFilterPlugin::createSpectrum(const QUuid &dataId)
{
    Magres::createSpectrum(m_host, dataId);
}

std::optional<Magres::MagresData> TMagresFileFilterPlugin::chooseQuadrupolarIsotope(const QUuid &dataId)
{
    return Magres::chooseQuadrupolarIsotope(m_host, dataId);
}

#include "moc_TMagresFileFilterPlugin.cpp"
