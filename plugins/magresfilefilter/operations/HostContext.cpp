// SPDX-License-Identifier: BSD-3-Clause
#include "operations/HostContext.h"

#include "support/TPluginError.h"
#include "support/WrBaseGraphicsItem.h"

#include <QApplication>
#include <QMessageBox>

Q_LOGGING_CATEGORY(magresLog, "magres")

namespace Magres {
namespace {

WrNMRDataTables hostTables()
{
    return WrNMRDataTables(qApp->property("nmrDataTables").value<QObject *>());
}

MagresData readBack(const QUuid &dataId, const QVariantMap &map)
{
    MagresData data;
    data.fromMap(map);
    data.ID = dataId;
    return data;
}

} // namespace

QString HostNuclearProperties::spin(const QByteArray &nucleus) const
{
    return hostTables().spin(QString::fromLatin1(nucleus));
}

double HostNuclearProperties::quadrupoleMoment(const QByteArray &nucleus) const
{
    return hostTables().quadrupoleMoment(QString::fromLatin1(nucleus));
}

double HostNuclearProperties::naturalAbundance(const QByteArray &nucleus) const
{
    return hostTables().naturalAbundance(QString::fromLatin1(nucleus));
}

QVariantMap HostContext::dataMap(const QUuid &dataId) const
{
    return WrDataEngine(m_plugin.mainWindow().dataEngine()).getDataMap(dataId);
}

QVariantMap HostContext::requiredDataMap(const QUuid &dataId) const
{
    const QVariantMap map = dataMap(dataId);
    if (map.isEmpty())
        throw TPluginError(Texts::tr("The document has no MAGRES data"));
    return map;
}

MagresData HostContext::data(const QUuid &dataId) const
{
    return readBack(dataId, dataMap(dataId));
}

MagresData HostContext::requiredData(const QUuid &dataId) const
{
    return readBack(dataId, requiredDataMap(dataId));
}

WrNMRData HostContext::activeSpectra() const
{
    if (QGraphicsWidget *item = m_plugin.activeItem())
        if (QObject *spectra = WrBaseGraphicsItem(item).getNMRData())
            return WrNMRData(spectra);
    return currentSpectra();
}

void HostContext::showInformation(const QString &title, const QString &text) const
{
    if (isHeadless())
        qCInfo(magresLog).noquote().nospace() << title << '\n' << text;
    else
        QMessageBox::information(window(), title, text, QMessageBox::Ok);
}

void HostContext::showFailure(const QString &title, const QString &text) const
{
    if (isHeadless())
        qCCritical(magresLog).noquote().nospace() << title << '\n' << text;
    else
        QMessageBox::critical(window(), title, text, QMessageBox::Ok);
}

} // namespace Magres
