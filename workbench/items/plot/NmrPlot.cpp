// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/NmrPlot.h"

#include "items/plot/ContourMap.h"
#include "items/plot/PeakEditor.h"
#include "items/plot/PlotPainting.h"
#include "items/plot/SharedLabel.h"
#include "items/plot/StackedTraces.h"

#include <cmath>
#include <utility>

namespace Workbench {

namespace {

const QColor litColor(0xff, 0x9f, 0x00);
constexpr double reach = 5; // pixels from a peak at which the mouse still means it
constexpr double samePlace = 1; // pixels

/// Peaks whose labels name sites instead of atoms, each once.
Spectrum withSiteNames(Spectrum spectrum, const QHash<QString, QString> &names)
{
    if (names.isEmpty())
        return spectrum;
    for (SpectrumPeak &peak : spectrum.peaks) {
        QStringList sites;
        for (const QString &atom : peak.label.split(u','))
            sites.append(names.value(atom, atom));
        sites.removeDuplicates();
        peak.label = sites.join(u',');
    }
    return spectrum;
}

} // namespace

NmrPlot::NmrPlot(NmrData *nmrData, QWidget *parent)
    : QCustomPlot(parent), m_data(nmrData), m_navigation(this), m_marker(this)
{
    setBackground(QBrush(Qt::white));
    setMinimumSize(80, 60);
    // Cached numbers would be scaled pixels where the page is zoomed.
    setPlottingHint(QCP::phCacheLabels, false);
    // The mouse is ours: the library zooms about the cursor and knows no axes of spectra.
    setInteractions(QCP::Interactions());
    clear();
    // Whatever makes it be drawn, it is what the data are now; who asks for the content while it is drawn gets this.
    connect(this, &QCustomPlot::beforeReplot, this, [this] {
        rebuild();
        m_drawn = true;
    });
    connect(nmrData, &NmrData::entriesChanged, this, [this] { invalidate(false); });
    connect(nmrData, &NmrData::entryChanged, this, [this] { invalidate(true); });
    connect(nmrData, &NmrData::activeEntryChanged, this, [this] { invalidate(true); });
}

NmrPlot::~NmrPlot()
{
    clear();
}

void NmrPlot::fullReset()
{
    invalidate(false);
}

PlotContent *NmrPlot::content()
{
    rebuild();
    // Laid out as well, so that pixels mean something before it is painted.
    if (!m_drawn && isVisible())
        replot(rpQueuedRefresh);
    return m_content.get();
}

void NmrPlot::invalidate(bool keepRanges)
{
    m_keepRanges = keepRanges && (!m_dirty || m_keepRanges);
    m_dirty = true;
    update();
}

void NmrPlot::clear()
{
    clearPlottables();
    clearItems();
    plotLayout()->clear();
    plotLayout()->simplify();
    m_content.reset();
}

QList<PlotEntry> NmrPlot::shownEntries(QString &note) const
{
    QList<PlotEntry> entries;
    if (!m_data || m_data->entryIds().isEmpty()) {
        note = tr("No spectrum");
        return entries;
    }
    const int dimensions = shownDimensions();
    const QUuid shown = m_data->shownEntry().id;
    int number = 0;
    for (const QUuid &id : m_data->entryIds()) {
        const Spectrum &spectrum = m_data->spectrum(id);
        const int chosen = m_options.traces.value(id).color;
        const QColor color = PlotStyle::entryColor(chosen >= 0 ? chosen : number);
        ++number;
        QString name = m_data->entryName(id);
        if (name.isEmpty())
            name = tr("Spectrum %1").arg(number);
        const bool peakList = spectrum.isEmpty() && !spectrum.peaks.isEmpty();
        if (peakList || (!spectrum.isEmpty() && spectrum.dimensions() == dimensions))
            entries.append({id, name, withSiteNames(spectrum, m_siteNames.value(id)), m_data->stackEntry(id).axes(),
                            color, id == m_data->activeEntryId(), id == shown});
    }
    if (entries.isEmpty())
        note = m_data->spectrum(m_data->activeEntryId()).note;
    return entries;
}

void NmrPlot::setSiteNames(const SiteNames &names)
{
    if (names == m_siteNames)
        return;
    m_siteNames = names;
    invalidate(true);
}

int NmrPlot::shownDimensions() const
{
    return std::max(1, int(m_data->shownEntry().axes().size()));
}

void NmrPlot::rebuild()
{
    if (!m_dirty)
        return;
    m_dirty = false;
    m_drawn = false;
    // Who has not zoomed sees all of what comes.
    const bool keep = m_content && m_keepRanges && m_content->isZoomed();
    const QList<QCPRange> ranges = keep ? m_content->ranges() : QList<QCPRange>();
    clear();
    QString note;
    const QList<PlotEntry> entries = shownEntries(note);
    if (entries.isEmpty())
        showNote(note);
    else if (shownDimensions() == 1)
        m_content = std::make_unique<StackedTraces>(this, entries, m_options);
    else
        m_content = std::make_unique<ContourMap>(this, entries, m_options);
    if (m_content)
        m_content->setRanges(ranges);
}

void NmrPlot::updateLayout()
{
    QCustomPlot::updateLayout();
    if (m_content && m_content->fitLayout())
        QCustomPlot::updateLayout();
    if (m_content)
        m_content->prepare();
}

void NmrPlot::showNote(const QString &text)
{
    auto *element = new QCPTextElement(this, text, PlotStyle::font(12));
    element->setTextColor(QColor(0x50, 0x56, 0x5e));
    element->setTextFlags(Qt::AlignCenter | Qt::TextWordWrap);
    plotLayout()->addElement(0, 0, element);
}

void NmrPlot::paintTo(QPainter *painter, const QRectF &target)
{
    rebuild();
    paintPlot(*this, painter, target);
    // The window's own sizes again.
    m_drawn = false;
    if (isVisible())
        replot(rpQueuedReplot);
}

void NmrPlot::paintEvent(QPaintEvent *)
{
    content();
    // As the base class does, save that the buffers' resolution is the proxy's to choose, not the screen's.
    QCPPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawBackground(&painter);
    for (const auto &buffer : std::as_const(mPaintBuffers))
        buffer->draw(&painter);
    if (m_content)
        paintOverlay(&painter);
}

void NmrPlot::paintOverlay(QPainter *painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    QColor glow = litColor;
    glow.setAlpha(110);
    if (!m_litPeaks.isEmpty()) {
        for (const PeakMark &mark : m_content->peakMarks()) {
            if (!m_litPeaks.contains(mark.peak.id))
                continue;
            painter->setPen(QPen(glow, 5, Qt::SolidLine, Qt::FlatCap));
            painter->drawLine(mark.top, QPointF(mark.top.x(), mark.foot));
            painter->setPen(QPen(litColor, 2));
            painter->setBrush(Qt::NoBrush);
            painter->drawEllipse(mark.top, 5, 5);
        }
        // The text beneath must stay readable.
        glow.setAlpha(60);
        painter->setPen(QPen(litColor, 1));
        painter->setBrush(glow);
        for (const LabelArea &label : m_content->labelAreas()) {
            if (std::any_of(label.peaks.cbegin(), label.peaks.cend(),
                            [&](const QUuid &peak) { return m_litPeaks.contains(peak); }))
                painter->drawRoundedRect(label.area, 2, 2);
        }
    }
    painter->setPen(QPen(litColor.darker(130), 1));
    painter->setBrush(litColor);
    for (const QPointF &ppm : std::as_const(m_preview)) {
        if (m_content->mainRect()->rect().contains(m_content->markPlace(m_previewEntry, ppm.x(), ppm.y()).toPoint()))
            PeakEditor::drawMark(painter, m_content->markPlace(m_previewEntry, ppm.x(), ppm.y()));
    }
    if (m_editor)
        m_editor->paint(painter);
    m_navigation.paint(painter);
    m_marker.paint(painter);
}

void NmrPlot::setOptions(const PlotOptions &options)
{
    if (options == m_options)
        return;
    m_options = options;
    m_options.contours = options.contours.bounded();
    invalidate(true);
}

void NmrPlot::scaleIntensity(double factor)
{
    if (auto *traces = dynamic_cast<StackedTraces *>(content())) {
        traces->scaleIntensity(factor);
        return replot(rpQueuedReplot);
    }
    PlotOptions options = m_options;
    options.contours.lowest /= factor;
    setOptions(options);
}

void NmrPlot::setLitPeaks(const QSet<QUuid> &peaks)
{
    m_litPeaks = peaks;
    update();
}

void NmrPlot::setPreview(const QUuid &entry, const QList<QPointF> &places)
{
    m_previewEntry = entry;
    m_preview = places;
    update();
}

QList<QUuid> NmrPlot::peaksAt(const QPointF &pixel)
{
    if (!content())
        return {};
    for (const LabelArea &label : m_content->labelAreas()) {
        if (label.area.contains(pixel))
            return label.peaks;
    }
    const QList<PeakMark> marks = m_content->peakMarks();
    const PeakMark *nearest = nullptr;
    double least = reach;
    for (const PeakMark &mark : marks) {
        // Anywhere on the line from the top to the base line.
        const double below = std::clamp(pixel.y(), mark.top.y(), std::max(mark.top.y(), mark.foot));
        const double distance = std::hypot(pixel.x() - mark.top.x(), pixel.y() - below);
        if (distance < least) {
            least = distance;
            nearest = &mark;
        }
    }
    QList<QUuid> peaks;
    for (const PeakMark &mark : nearest ? marks : QList<PeakMark>()) {
        if (mark.entry == nearest->entry && QLineF(mark.top, nearest->top).length() < samePlace)
            peaks.append(mark.peak.id);
    }
    return peaks;
}

QString NmrPlot::hoverText(const QPointF &pixel)
{
    if (!content())
        return {};
    for (const LabelArea &label : m_content->labelAreas()) {
        if (label.area.contains(pixel))
            return label.text;
    }
    const QList<QUuid> peaks = peaksAt(pixel);
    SharedLabel label;
    QString place;
    for (const PeakMark &mark : peaks.isEmpty() ? QList<PeakMark>() : m_content->peakMarks()) {
        if (!peaks.contains(mark.peak.id))
            continue;
        label.add(mark.peak.id, mark.peak.label);
        place = PlotContent::ppmText(m_content->ppmAxes().first(), mark.peak.f2);
        if (m_content->ppmAxes().size() > 1)
            place += QStringLiteral(", ") + PlotContent::ppmText(m_content->ppmAxes().last(), mark.peak.f1);
    }
    return (label.fullText() + QStringLiteral("  ") + place).trimmed();
}

bool NmrPlot::cancelDrag()
{
    m_navigation.cancel();
    m_marker.cancel();
    update();
    return std::exchange(m_isDown, false);
}

void NmrPlot::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    m_isDown = m_isDown || event->button() != Qt::RightButton; // whose release goes to a menu
    if (!content() || (m_editor && m_editor->press(event)))
        return;
    if (!(m_editor && m_editor->isActive()) && m_marker.press(event))
        return;
    m_navigation.press(event);
}

void NmrPlot::mouseMoveEvent(QMouseEvent *event)
{
    event->accept();
    if (!content())
        return;
    if ((m_editor && m_editor->move(event)) || m_marker.move(event))
        update();
    else if (m_navigation.move(event))
        replot(rpQueuedReplot);
    if (!content())
        return;
    if (event->buttons() == Qt::NoButton)
        setToolTip(hoverText(event->position()));
    Q_EMIT pointed(m_content->readOut(event->position()));
}

void NmrPlot::mouseReleaseEvent(QMouseEvent *event)
{
    event->accept();
    const bool wasDown = std::exchange(m_isDown, false);
    const bool edited = m_editor && m_editor->release(event);
    if (!content() || edited || m_marker.release())
        return;
    if (m_navigation.release()) {
        replot(rpQueuedReplot);
    } else if (wasDown && event->button() == Qt::LeftButton) {
        if (m_editor && m_editor->isActive())
            m_editor->click(event);
        else
            Q_EMIT peaksClicked(peaksAt(event->position()), event->modifiers());
    }
}

void NmrPlot::mouseDoubleClickEvent(QMouseEvent *event)
{
    // Who sets peaks quickly does not want to see another part of the spectrum.
    if (m_editor && m_editor->isActive())
        return mousePressEvent(event);
    if (m_marker.mode() != PlotMarker::Mode::None)
        return mousePressEvent(event);
    event->accept();
    cancelDrag();
    if (content() && event->button() == Qt::LeftButton) {
        m_content->resetRanges();
        replot(rpQueuedReplot);
    }
}

void NmrPlot::wheelEvent(QWheelEvent *event)
{
    event->setAccepted(m_navigation.wheel(event));
    if (!event->isAccepted())
        return;
    replot(rpQueuedReplot);
    if (content())
        Q_EMIT pointed(m_content->readOut(event->position()));
}

void NmrPlot::leaveEvent(QEvent *event)
{
    QCustomPlot::leaveEvent(event);
    Q_EMIT pointed(QString());
}

} // namespace Workbench

#include "moc_NmrPlot.cpp"
