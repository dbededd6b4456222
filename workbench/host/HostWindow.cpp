// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/HostWindow.h"

#include "data/Language.h"
#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"

namespace Workbench {

HostWindow::HostWindow()
    : m_data(new DataEngine(this)), m_scene(new MainScene(m_data, this)), m_nmrContextMenu(new QMenu(this))
{
    setObjectName(QStringLiteral("mainWindow"));
    m_data->setObjectName(QStringLiteral("dataEngine"));
}

HostWindow::~HostWindow()
{
    // Items call back while they go; they must find the data engine alive.
    delete m_scene;
}

QObject *HostWindow::dataEngine() const
{
    return m_data;
}

QObject *HostWindow::getNMRData() const
{
    NmrItem *item = m_scene->currentNmrItem();
    return item ? item->getNMRData() : nullptr;
}

QObject *HostWindow::nmrPlot() const
{
    NmrItem *item = m_scene->currentNmrItem();
    return item ? item->plot() : nullptr;
}

bool HostWindow::checkProductLicense(QString) const
{
    return true;
}

QString HostWindow::language() const
{
    return Language::current();
}

} // namespace Workbench

#include "moc_HostWindow.cpp"
