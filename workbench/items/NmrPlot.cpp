// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/NmrPlot.h"

#include "items/ContourMap.h"
#include "items/StackedTraces.h"

#include <QPicture>

NmrPlot::NmrPlot(NmrData *nmrData, QWidget *parent) : QCustomPlot(parent), m_data(nmrData)
{
    setBackground(QBrush(Qt::white));
    setMinimumSize(80, 60);
    // Cached numbers would be scaled pixels where the page is zoomed.
    setPlottingHint(QCP::phCacheLabels, false);
    setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    clear();
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
    int number = 0;
    for (const QUuid &id : m_data->entryIds()) {
        const Spectrum &spectrum = m_data->spectrum(id);
        const QColor color = PlotStyle::entryColor(number++);
        QString name = m_data->entryName(id);
        if (name.isEmpty())
            name = tr("Spectrum %1").arg(number);
        const bool peakList = spectrum.isEmpty() && !spectrum.peaks.isEmpty();
        if (peakList || (!spectrum.isEmpty() && spectrum.dimensions() == dimensions))
            entries.append({name, spectrum, color, id == m_data->activeEntryId()});
    }
    if (entries.isEmpty())
        note = m_data->spectrum(m_data->activeEntryId()).note;
    return entries;
}

int NmrPlot::shownDimensions() const
{
    return std::max(1, m_data->shownSpectrum().dimensions());
}

void NmrPlot::rebuild()
{
    if (!m_dirty)
        return;
    m_dirty = false;
    // Who has not zoomed sees all of what comes.
    const bool keep = m_content && m_keepRanges && m_content->isZoomed();
    const QList<QCPRange> ranges = keep ? m_content->ranges() : QList<QCPRange>();
    clear();
    QString note;
    const QList<PlotEntry> entries = shownEntries(note);
    if (entries.isEmpty())
        showNote(note);
    else if (shownDimensions() == 1)
        m_content = std::make_unique<StackedTraces>(this, entries);
    else
        m_content = std::make_unique<ContourMap>(this, entries);
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
    // The library draws through a painter class of its own, so it draws into a picture, which is then played.
    QPicture picture;
    {
        QCPPainter recorder;
        recorder.begin(&picture);
        recorder.setMode(QCPPainter::pmVectorized);
        recorder.setMode(QCPPainter::pmNoCaching);
        recorder.setMode(QCPPainter::pmNonCosmetic);
        toPainter(&recorder, qRound(target.width()), qRound(target.height()));
    }
    painter->save();
    painter->setClipRect(target, Qt::IntersectClip);
    painter->translate(target.topLeft());
    // A picture is played at the device's resolution, on top of the painter's scale; ours is in scene units.
    painter->scale(qreal(picture.logicalDpiX()) / painter->device()->logicalDpiX(),
                   qreal(picture.logicalDpiY()) / painter->device()->logicalDpiY());
    painter->drawPicture(0, 0, picture);
    painter->restore();
}

void NmrPlot::paintEvent(QPaintEvent *)
{
    if (m_dirty) {
        rebuild();
        replot(rpQueuedRefresh);
    }
    // As the base class does, save that the buffers' resolution is the proxy's to choose, not the screen's.
    QCPPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawBackground(&painter);
    for (const auto &buffer : std::as_const(mPaintBuffers))
        buffer->draw(&painter);
}

void NmrPlot::mouseDoubleClickEvent(QMouseEvent *event)
{
    QCustomPlot::mouseDoubleClickEvent(event);
    if (m_content && event->button() == Qt::LeftButton) {
        m_content->resetRanges();
        replot(rpQueuedReplot);
    }
}
