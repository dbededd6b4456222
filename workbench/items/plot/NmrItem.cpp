// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/NmrItem.h"

#include "data/AtomSelection.h"
#include "items/plot/ContourLevelsDialog.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrPlot.h"
#include "data/PeakAssignments.h"
#include "items/plot/PeakEditor.h"
#include "items/plot/PlotContent.h"

#include <QActionGroup>
#include <QClipboard>
#include <QGraphicsProxyWidget>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneWheelEvent>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QStyleOptionGraphicsItem>

#include <cmath>

namespace Workbench {

namespace {

constexpr double highestResolution = 4; // buffer pixels per scene unit

/// Shows the plot in windows, sharp at every scale, and draws it as vectors on paper.
class PlotProxy : public QGraphicsProxyWidget {
public:
    PlotProxy(NmrPlot *plot, DocumentItem *item) : QGraphicsProxyWidget(item), m_plot(plot), m_item(item)
    {
        setWidget(plot);
        // The item has the keyboard: on its way to an embedded widget a key would pass for a shortcut once more.
        setFocusPolicy(Qt::NoFocus);
    }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *target) override
    {
        if (DocumentItem::isPageOutput(painter, target)) {
            m_plot->paintTo(painter, rect());
            return;
        }
        const double scale = QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter->worldTransform())
            * target->devicePixelRatioF();
        const double resolution = std::clamp(scale, 1.0, highestResolution);
        if (std::abs(resolution - m_plot->bufferDevicePixelRatio()) > 0.01) {
            m_plot->setBufferDevicePixelRatio(resolution);
            m_plot->replot(QCustomPlot::rpQueuedReplot);
        }
        QGraphicsProxyWidget::paint(painter, option, target);
    }

protected:
    void wheelEvent(QGraphicsSceneWheelEvent *event) override
    {
        // Only the item that one works with takes the wheel: one must be able to scroll past the others.
        if (m_item->isCurrent())
            QGraphicsProxyWidget::wheelEvent(event);
        else
            event->ignore();
    }

private:
    NmrPlot *m_plot;
    DocumentItem *m_item;
};

/// Whether the item counts its atoms as the molecule does: the molecule itself and the tables beside it. The same
/// numbers mean other atoms in another structure.
bool isOf(const DocumentItem *item, const MoleculeItem &molecule)
{
    return item && (item == &molecule || item->linkedItems().contains(&molecule));
}

} // namespace

NmrItem::NmrItem(const QUuid &id, Looks looks, QGraphicsItem *parent)
    : DocumentItem(id, parent),
      m_data(new NmrData(this)),
      m_plot(looks == WithPlot ? new NmrPlot(m_data) : nullptr),
      m_editor(m_plot ? new PeakEditor(m_data, m_plot, this) : nullptr),
      m_proxy(m_plot ? new PlotProxy(m_plot, this) : nullptr)
{
    connect(m_data, &NmrData::entriesChanged, this, &NmrItem::updateTitle);
    connect(m_data, &NmrData::entryChanged, this, &NmrItem::updateTitle);
    connect(m_data, &NmrData::activeEntryChanged, this, &NmrItem::updateTitle);
    updateTitle();
    if (!m_plot)
        return;
    m_plot->setEditor(m_editor);
    connect(m_editor, &PeakEditor::activeChanged, this, &NmrItem::updateMode);
    connect(m_data, &NmrData::entryChanged, this, &NmrItem::updateMode);
    connect(m_editor, &PeakEditor::reported, this, &NmrItem::reported);
    connect(m_plot, &NmrPlot::pointed, this, &NmrItem::pointed);
    connect(m_plot, &QCustomPlot::afterReplot, this, &NmrItem::shareRange);
    connect(m_plot, &NmrPlot::peaksClicked, this, [this](const auto &peaks, Qt::KeyboardModifiers modifiers) {
        selectPeaks(peaks, modifiers.testFlag(Qt::ControlModifier));
    });
}

NmrItem::~NmrItem() = default;

QObject *NmrItem::getNMRData()
{
    return m_data;
}

void NmrItem::layoutContent(const QRectF &content)
{
    if (m_proxy)
        m_proxy->setGeometry(content);
}

void NmrItem::paintPicture(QPainter *painter, const QRectF &area)
{
    if (m_plot)
        m_plot->paintTo(painter, area);
}

template <typename Change>
void NmrItem::changeOptions(Change change)
{
    PlotOptions options = m_plot->options();
    change(options);
    m_plot->setOptions(options);
}

void NmrItem::fillContextMenu(QMenu *menu)
{
    if (!m_plot)
        return;
    // The keys are the item's own, not the window's: they are shown only.
    connect(menu->addAction(tr("Show Full Range") + QStringLiteral("\tHome")), &QAction::triggered, m_plot,
            &NmrPlot::fullReset);
    fillShowMenu(menu->addMenu(tr("Show")));
    fillTraceMenu(menu->addMenu(tr("Appearance")));
    fillMarkMenu(menu->addMenu(tr("Measure")));
    connect(menu->addAction(tr("Edit Title...")), &QAction::triggered, this, &NmrItem::editTitle);
    connect(menu->addAction(tr("Copy Numbers")), &QAction::triggered, this, &NmrItem::copyNumbers);
    if (m_plot->shownDimensions() == 2)
        connect(menu->addAction(tr("Contour Levels...")), &QAction::triggered, this, &NmrItem::editContourLevels);
}

void NmrItem::fillShowMenu(QMenu *menu)
{
    const auto add = [&](const QString &text, bool PlotOptions::*option) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(m_plot->options().*option);
        connect(action, &QAction::toggled, this, [this, option](bool on) {
            PlotOptions options = m_plot->options();
            options.*option = on;
            m_plot->setOptions(options);
        });
    };
    if (m_plot->shownDimensions() == 2)
        add(tr("Peak Crosses"), &PlotOptions::crosses);
    else
        add(tr("Peak Sticks"), &PlotOptions::sticks);
    add(tr("Peak Labels"), &PlotOptions::labels);
    add(tr("Legend"), &PlotOptions::legend);
    menu->addSeparator();
    if (m_plot->shownDimensions() == 1)
        add(tr("Spectra on One Base Line"), &PlotOptions::overlay);
    add(tr("Axis in Hz"), &PlotOptions::hertz);
    QAction *shares = menu->addAction(tr("Same Range as Other Plots of the Nucleus"));
    shares->setCheckable(true);
    shares->setChecked(m_plot->options().sharesRange);
    connect(shares, &QAction::toggled, this, &NmrItem::setSharesRange);
}

void NmrItem::fillTraceMenu(QMenu *menu)
{
    const QUuid entry = m_data->activeEntryId();
    menu->setEnabled(!entry.isNull());
    const TraceStyle style = m_plot->options().traces.value(entry);
    QMenu *colors = menu->addMenu(tr("Colour"));
    auto *group = new QActionGroup(colors);
    const QStringList names = PlotStyle::colorNames();
    for (int color = -1; color < int(names.size()); ++color) {
        QAction *action = colors->addAction(color < 0 ? tr("By its place in the stack") : names[color]);
        if (color >= 0) {
            QPixmap patch(16, 16);
            patch.fill(PlotStyle::entryColor(color));
            action->setIcon(patch);
        }
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(color == style.color);
        connect(action, &QAction::triggered, this, [this, entry, color] {
            changeOptions([&](PlotOptions &options) { options.traces[entry].color = color; });
        });
    }
    QAction *reset = menu->addAction(tr("Own Height and Place Again"));
    reset->setEnabled(m_plot->shownDimensions() == 1 && (style.scale != 1 || style.offset != 0));
    connect(reset, &QAction::triggered, this, [this, entry] {
        changeOptions([&](PlotOptions &options) { options.traces[entry] = {1, 0, options.traces[entry].color}; });
    });
}

void NmrItem::fillMarkMenu(QMenu *menu)
{
    const PlotOptions &options = m_plot->options();
    QAction *integrate = menu->addAction(tr("Mark Integrals") + QStringLiteral("\tI"));
    integrate->setEnabled(m_plot->shownDimensions() == 1);
    connect(integrate, &QAction::triggered, this, [this] { startMarking(PlotMarker::Mode::Integral); });
    connect(menu->addAction(tr("Mark Distances") + QStringLiteral("\tD")), &QAction::triggered, this,
            [this] { startMarking(PlotMarker::Mode::Distance); });
    QMenu *set = menu->addMenu(tr("Set Integral"));
    set->setEnabled(!options.integrals.isEmpty());
    for (int i = 0; i < int(options.integrals.size()); ++i) {
        const IntegralMark &mark = options.integrals[i];
        QAction *action = set->addAction(tr("%1 to %2 ppm...").arg(mark.from, 0, 'f', 2).arg(mark.to, 0, 'f', 2));
        action->setCheckable(true);
        action->setChecked(i == options.integralReference);
        connect(action, &QAction::triggered, this, [this, i] { setIntegral(i); });
    }
    menu->addSeparator();
    QAction *last = menu->addAction(tr("Remove the Last Integral"));
    last->setEnabled(!options.integrals.isEmpty());
    connect(last, &QAction::triggered, this, [this] {
        changeOptions([](PlotOptions &changed) { changed.keepIntegrals(changed.integrals.size() - 1); });
    });
    QAction *lastDistance = menu->addAction(tr("Remove the Last Distance"));
    lastDistance->setEnabled(!options.distances.isEmpty());
    connect(lastDistance, &QAction::triggered, this,
            [this] { changeOptions([](PlotOptions &changed) { changed.distances.removeLast(); }); });
    QAction *all = menu->addAction(tr("Remove All"));
    all->setEnabled(!options.integrals.isEmpty() || !options.distances.isEmpty());
    connect(all, &QAction::triggered, this, [this] {
        changeOptions([](PlotOptions &changed) {
            changed.keepIntegrals(0);
            changed.distances.clear();
        });
    });
}

void NmrItem::setIntegral(int index)
{
    bool accepted = false;
    const QPointer<NmrItem> stillThere(this);
    const double value = QInputDialog::getDouble(viewWindow(), tr("Set Integral"), tr("Value of this integral:"), 1.0,
                                                 -1e6, 1e6, 3, &accepted);
    if (!accepted || !stillThere)
        return;
    if (value == 0)
        return Q_EMIT reported(tr("An integral cannot be set to 0: all others are measured by it"));
    changeOptions([&](PlotOptions &options) {
        options.integralReference = index;
        options.referenceValue = value;
    });
}

void NmrItem::startMarking(PlotMarker::Mode mode)
{
    if (!m_plot)
        return;
    if (mode == PlotMarker::Mode::Integral && m_plot->shownDimensions() != 1)
        mode = PlotMarker::Mode::None;
    m_editor->setActive(false);
    m_plot->marker().setMode(mode);
    if (mode == PlotMarker::Mode::Integral)
        Q_EMIT reported(tr("Integrals: drag over the regions; Esc ends. The first one is 1 until another is set"));
    else if (mode == PlotMarker::Mode::Distance)
        Q_EMIT reported(tr("Distances: drag from one place to another; Esc ends"));
    else
        Q_EMIT reported(QString());
}

void NmrItem::editTitle()
{
    bool accepted = false;
    const QPointer<NmrItem> stillThere(this);
    const QString name =
        QInputDialog::getText(viewWindow(), tr("Title"), tr("Title of the plot (empty: made from its spectra):"),
                              QLineEdit::Normal, title(), &accepted)
            .simplified();
    if (!accepted || !stillThere || name == title() || name == givenName())
        return;
    const QString before = givenName();
    setGivenName(name);
    Q_EMIT nameEdited(before);
}

QList<NmrItem *> NmrItem::plotsOfNucleus() const
{
    QList<NmrItem *> found;
    const auto nucleus = [](const NmrItem *item) { return item->m_data->shownEntry().axes().value(0).nucleus(); };
    for (QGraphicsItem *other : scene() ? scene()->items() : QList<QGraphicsItem *>()) {
        auto *item = qobject_cast<NmrItem *>(other->toGraphicsObject());
        if (item && item->m_plot && nucleus(item) == nucleus(this))
            found.append(item);
    }
    return found;
}

void NmrItem::setSharesRange(bool shares)
{
    // Those that have it already go where this one is.
    for (NmrItem *item : plotsOfNucleus())
        item->changeOptions([&](PlotOptions &options) { options.sharesRange = shares; });
    shareRange();
}

void NmrItem::shareRange()
{
    PlotContent *content = m_plot->content();
    if (!m_plot->options().sharesRange || !content)
        return;
    const QCPRange range = content->ppmAxes().first()->range();
    for (NmrItem *item : plotsOfNucleus()) {
        PlotContent *other = item == this || !item->m_plot->options().sharesRange ? nullptr : item->m_plot->content();
        if (!other || other->ppmAxes().first()->range() == range)
            continue;
        other->ppmAxes().first()->setRange(range);
        item->m_plot->replot(QCustomPlot::rpQueuedReplot);
    }
}

QString NmrItem::numbersText() const
{
    PlotContent *content = m_plot ? m_plot->content() : nullptr;
    if (!content)
        return {};
    const Spectrum &spectrum = m_data->spectrum(m_data->activeEntryId());
    const auto inSight = [&](double f2, double f1) {
        return content->ppmAxes().first()->range().contains(f2)
            && (content->ppmAxes().size() == 1 || content->ppmAxes().last()->range().contains(f1));
    };
    const auto number = [](double x) { return QString::number(x, 'g', 10); };
    QStringList lines;
    if (spectrum.dimensions() == 1) {
        lines.append(tr("ppm\tintensity"));
        for (int i = 0; i < spectrum.axes[0].size; ++i)
            if (inSight(spectrum.axes[0].ppm(i), 0))
                lines.append(number(spectrum.axes[0].ppm(i)) + u'\t' + number(spectrum.real()[size_t(i)]));
    } else {
        const bool two = content->ppmAxes().size() > 1;
        lines.append(two ? tr("label\tppm F2\tppm F1\theight") : tr("label\tppm\theight"));
        for (const SpectrumPeak &peak : spectrum.peaks)
            if (inSight(peak.f2, peak.f1))
                lines.append(peak.label + u'\t' + number(peak.f2) + (two ? u'\t' + number(peak.f1) : QString()) + u'\t'
                             + number(peak.height));
    }
    return lines.join(u'\n') + u'\n';
}

void NmrItem::copyNumbers()
{
    QGuiApplication::clipboard()->setText(numbersText());
    const QUuid active = m_data->activeEntryId();
    const bool points = m_data->spectrum(active).dimensions() == 1;
    Q_EMIT reported((points ? tr("The points of %1 in sight are on the clipboard")
                            : tr("The peaks of %1 in sight are on the clipboard"))
                        .arg(m_data->entryName(active)));
}

void NmrItem::editContourLevels()
{
    const PlotOptions before = m_plot->options();
    const QPointer<NmrItem> stillThere(this);
    ContourLevelsDialog dialog(before.contours, viewWindow());
    connect(&dialog, &ContourLevelsDialog::changed, m_plot, [this](const ContourLevels &levels) {
        PlotOptions options = m_plot->options();
        options.contours = levels;
        m_plot->setOptions(options);
    });
    if (dialog.exec() != QDialog::Accepted && stillThere)
        m_plot->setOptions(before);
}

QVariantMap NmrItem::viewSettings() const
{
    return m_plot ? m_plot->options().toMap() : QVariantMap();
}

void NmrItem::setViewSettings(const QVariantMap &settings)
{
    if (!m_plot)
        return;
    m_plot->setOptions(PlotOptions::fromMap(settings));
    updateTitle();
    // Older documents have a title of the plot beside the item's name.
    if (givenName().isEmpty())
        setGivenName(settings.value(QStringLiteral("Title")).toString());
}

QList<MoleculeItem *> NmrItem::molecules() const
{
    QList<MoleculeItem *> found;
    for (DocumentItem *item : linkedItems()) {
        if (auto *molecule = qobject_cast<MoleculeItem *>(item))
            found.append(molecule);
    }
    return found;
}

void NmrItem::receiveMessage(const QVariantMap &message, const DocumentItem *sender)
{
    if (!m_plot || !AtomSelection::isMessage(message))
        return;
    QSet<QUuid> peaks;
    for (const MoleculeItem *molecule : molecules()) {
        if (isOf(sender, *molecule))
            peaks.unite(molecule->assignments().peaksOf(AtomSelection::fromMessage(message)));
    }
    m_plot->setLitPeaks(peaks);
}

void NmrItem::selectPeaks(const QList<QUuid> &peaks, bool toggle)
{
    QSet<QUuid> lit = toggle ? m_plot->litPeaks() : QSet<QUuid>();
    const bool takesAway = !peaks.isEmpty() && lit.contains(peaks.first());
    for (const QUuid &peak : peaks) {
        if (takesAway)
            lit.remove(peak);
        else
            lit.insert(peak);
    }
    if (lit == m_plot->litPeaks())
        return;
    m_plot->setLitPeaks(lit);
    qsizetype count = 0;
    QList<std::pair<QPointer<DocumentItem>, QSet<int>>> selections;
    for (DocumentItem *item : linkedItems())
        selections.emplaceBack(item, QSet<int>());
    for (const MoleculeItem *molecule : molecules()) {
        const QSet<int> atoms = molecule->assignments().atomsOf(lit.values());
        count += atoms.size();
        for (auto &[item, selected] : selections) {
            if (isOf(item, *molecule))
                selected.unite(atoms);
        }
    }
    if (!lit.isEmpty())
        Q_EMIT reported(count == 0 ? tr("No atoms are assigned to this peak")
                                   : tr("%n atom(s) selected", nullptr, int(count)));
    for (const auto &[item, atoms] : selections)
        sendMessageTo(item, AtomSelection::toMessage(atoms));
}

bool NmrItem::sceneEvent(QEvent *event)
{
    // What the plot does with a key comes before the window's shortcuts.
    if (event->type() == QEvent::ShortcutOverride && m_editor && m_editor->wantsKey(static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return DocumentItem::sceneEvent(event);
}

void NmrItem::keyPressEvent(QKeyEvent *event)
{
    constexpr double step = 1.25, panned = 0.1;
    if (!m_plot)
        return DocumentItem::keyPressEvent(event);
    if (m_editor->keyPress(event))
        return event->accept();
    PlotContent *content = m_plot->content();
    if (!content || (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)))
        return DocumentItem::keyPressEvent(event);
    QCPAxis *f2 = content->ppmAxes().first();
    QCPAxis *f1 = content->ppmAxes().last();
    const bool two = f1 != f2;
    switch (event->key()) {
    case Qt::Key_Plus:
        m_plot->scaleIntensity(step);
        break;
    case Qt::Key_Minus:
        m_plot->scaleIntensity(1 / step);
        break;
    case Qt::Key_Home:
        content->resetRanges();
        break;
    case Qt::Key_Escape:
        m_plot->cancelDrag();
        if (m_plot->marker().mode() != PlotMarker::Mode::None)
            startMarking(PlotMarker::Mode::None);
        break;
    case Qt::Key_I:
        startMarking(PlotMarker::Mode::Integral);
        break;
    case Qt::Key_D:
        startMarking(PlotMarker::Mode::Distance);
        break;
    case Qt::Key_PageUp:
        m_plot->navigation().zoom(step);
        break;
    case Qt::Key_PageDown:
        m_plot->navigation().zoom(1 / step);
        break;
    case Qt::Key_Left: // ppm grow to the left and downwards
        m_plot->navigation().pan(f2, panned);
        break;
    case Qt::Key_Right:
        m_plot->navigation().pan(f2, -panned);
        break;
    case Qt::Key_Up:
        two ? m_plot->navigation().pan(f1, -panned) : m_plot->scaleIntensity(step);
        break;
    case Qt::Key_Down:
        two ? m_plot->navigation().pan(f1, panned) : m_plot->scaleIntensity(1 / step);
        break;
    default:
        return DocumentItem::keyPressEvent(event);
    }
    m_plot->replot(QCustomPlot::rpQueuedReplot);
    event->accept();
}

void NmrItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    if (event->reason() == QGraphicsSceneContextMenuEvent::Mouse && m_editor
        && m_editor->removeAt(m_proxy->mapFromScene(event->scenePos())))
        return event->accept();
    DocumentItem::contextMenuEvent(event);
}

void NmrItem::updateMode()
{
    setMode(m_editor->isActive() ? tr("Editing peaks: %1").arg(m_data->entryName(m_editor->target())) : QString());
}

void NmrItem::updateTitle()
{
    const QUuid active = m_data->activeEntryId();
    const Spectrum &spectrum = m_data->spectrum(active);
    QStringList nuclei;
    for (const SpectrumAxis &axis : spectrum.axes)
        nuclei.append(axis.nucleus());
    nuclei.removeAll(QString());
    const QString name = m_data->entryName(active);
    const QString nucleus = nuclei.join(u'–');
    QString title = spectrum.dimensions() == 2 ? tr("%1 spectrum, 2D").arg(nucleus) : tr("%1 spectrum").arg(nucleus);
    if (!name.isEmpty())
        title = nucleus.isEmpty() ? name : tr("%1 of %2").arg(nucleus, name);
    setTitle(title.simplified());
}

} // namespace Workbench

#include "moc_NmrItem.cpp"
