// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/SiteLabels.h"

#include "analysis/comparison/UniqueSites.h"
#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"

#include <QTimer>

#include <algorithm>

namespace Workbench {

namespace {

/// Labels are not worth seconds: the search for symmetry takes the square of the number of atoms.
constexpr int mostAtoms = 1000;

QHash<QString, QString> siteNames(const CrystalStructure &structure, UniqueSites::Averaging averaging)
{
    QHash<QString, QString> names;
    // Where atoms share labels, a peak's label does not tell which of them it is of.
    if (!structure.isNumbered || structure.atoms.empty() || int(structure.atoms.size()) > mostAtoms)
        return names;
    UniqueSites::Options options;
    options.averaging = averaging;
    for (const UniqueSite &site : UniqueSites::of(structure, options).sites) {
        for (int atom : site.atoms)
            names.insert(structure.name(atom), site.name);
    }
    return names;
}

} // namespace

SiteLabels::SiteLabels(MainScene *scene, DataEngine *data) : QObject(scene), m_scene(scene), m_data(data)
{
    connect(scene, &MainScene::itemAdded, this, &SiteLabels::watch);
    connect(data, &DataEngine::changed, this, [this] {
        m_names.clear();
        updateLater();
    });
}

void SiteLabels::watch(DocumentItem *item)
{
    auto *nmr = qobject_cast<NmrItem *>(item);
    if (!nmr || !nmr->plot())
        return;
    connect(nmr->nmrData(), &NmrData::entriesChanged, this, &SiteLabels::updateLater);
    connect(nmr->nmrData(), &NmrData::entryChanged, this, &SiteLabels::updateLater);
    updateLater();
}

void SiteLabels::updateLater()
{
    if (m_waiting)
        return;
    m_waiting = true;
    QTimer::singleShot(0, this, [this] {
        m_waiting = false;
        update();
    });
}

void SiteLabels::update()
{
    for (DocumentItem *item : m_scene->documentItems()) {
        auto *nmr = qobject_cast<NmrItem *>(item);
        if (!nmr || !nmr->plot())
            continue;
        NmrPlot::SiteNames names;
        for (const SpectrumEntry &entry : nmr->nmrData()->stack().entries) {
            if (entry.isSimulated())
                names.insert(entry.id, namesOf(entry));
        }
        nmr->plot()->setSiteNames(names);
    }
}

const QHash<QString, QString> &SiteLabels::namesOf(const SpectrumEntry &entry)
{
    const QVariantHash parameters = entry.parameters(QStringLiteral("magres"));
    const QUuid data = parameters.value(QStringLiteral("magresDataId")).toUuid();
    const int averaging = std::clamp(parameters.value(QStringLiteral("avIdx")).toInt(), 0, 2);
    const QString key = data.toString() + QString::number(averaging);
    const auto known = m_names.constFind(key);
    if (known != m_names.constEnd())
        return *known;
    return *m_names.insert(
        key, siteNames(CrystalStructure::fromData(m_data->getDataMap(data)), UniqueSites::Averaging(averaging)));
}

} // namespace Workbench

#include "moc_SiteLabels.cpp"
