// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/PageExport.h"

#include "data/Error.h"
#include "formats/SpectrumExport.h"
#include "host/MainScene.h"
#include "host/PageLayout.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <stdexcept>

namespace Workbench {

namespace PageExport {

namespace {

/// Scene units are 1/96 inch.
constexpr int sceneResolution = 96;
constexpr double pointsPerSceneUnit = 72.0 / sceneResolution;
constexpr int pdfResolution = 1200;

/// The scene as it is printed, for as long as this lives.
class OnPaper {
public:
    OnPaper(MainScene &scene, bool withNotes) : m_scene(scene), m_layout(scene.layout())
    {
        scene.setLayout(MainScene::Layout::Pages);
        for (DocumentItem *item : scene.documentItems())
            item->setOnPaper(true, withNotes);
    }
    ~OnPaper()
    {
        m_scene.setLayout(m_layout);
        if (m_layout != MainScene::Layout::Pages)
            return; // what changed has laid out all items
        for (DocumentItem *item : m_scene.documentItems())
            item->setOnPaper(true); // without the notes
    }
    Q_DISABLE_COPY_MOVE(OnPaper)

private:
    MainScene &m_scene;
    MainScene::Layout m_layout;
};

void begin(QPainter &painter, QPaintDevice *device)
{
    if (!painter.begin(device))
        fail(Texts::tr("the picture cannot be drawn"));
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
}

void writePng(QGraphicsScene &scene, const QRectF &source, QIODevice &device, double scale)
{
    QImage image((source.size() * scale).toSize(), QImage::Format_RGB32);
    if (image.isNull())
        fail(Texts::tr("the picture is too large for an image"));
    image.fill(Qt::white);
    QPainter painter;
    begin(painter, &image);
    scene.render(&painter, QRectF(image.rect()), source);
    painter.end();
    // Only now: while it is painted on, an image's resolution would scale recorded pictures once more.
    image.setDotsPerMeterX(qRound(sceneResolution * scale / 0.0254));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    if (!image.save(&device, "PNG"))
        fail(Texts::tr("the image cannot be written"));
}

void writeSvg(QGraphicsScene &scene, const QRectF &source, QIODevice &device)
{
    QSvgGenerator generator;
    const QRectF target(QPointF(0, 0), source.size());
    generator.setOutputDevice(&device);
    generator.setResolution(sceneResolution);
    generator.setSize(target.size().toSize());
    generator.setViewBox(target);
    generator.setTitle(QCoreApplication::applicationName());
    QPainter painter;
    begin(painter, &generator);
    painter.fillRect(target, Qt::white);
    scene.render(&painter, target, source);
}

/// One page of the file per source rectangle; all have the size of the first.
void writePdf(QGraphicsScene &scene, const QList<QRectF> &sources, QIODevice &device)
{
    QPdfWriter writer(&device);
    writer.setResolution(pdfResolution);
    writer.setCreator(QCoreApplication::applicationName());
    writer.setPageSize(QPageSize(sources.constFirst().size() * pointsPerSceneUnit, QPageSize::Point));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    begin(painter, &writer);
    for (qsizetype i = 0; i < sources.size(); ++i) {
        if (i > 0 && !writer.newPage())
            fail(Texts::tr("the next page cannot be started"));
        const double scale = double(pdfResolution) / sceneResolution;
        scene.render(&painter, QRectF(QPointF(0, 0), sources[i].size() * scale), sources[i]);
    }
}

/// Of a scene.
void writeArea(QGraphicsScene &scene, const QRectF &source, QIODevice &device, Format format)
{
    switch (format) {
    case Format::Png:
        return writePng(scene, source, device, 3);
    case Format::Svg:
        return writeSvg(scene, source, device);
    case Format::Pdf:
        return writePdf(scene, {source}, device);
    }
}

class Drawing : public QGraphicsItem {
public:
    Drawing(std::function<void(QPainter *, const QRectF &)> paint, const QSizeF &size)
        : m_paint(std::move(paint)), m_area(QPointF(0, 0), size)
    {
    }
    QRectF boundingRect() const override { return m_area; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) override { m_paint(painter, m_area); }

private:
    std::function<void(QPainter *, const QRectF &)> m_paint;
    QRectF m_area;
};

} // namespace

std::optional<Format> formatOfSuffix(const QString &suffix)
{
    const QString lower = suffix.toLower();
    if (lower == u"png")
        return Format::Png;
    if (lower == u"svg")
        return Format::Svg;
    if (lower == u"pdf")
        return Format::Pdf;
    return std::nullopt;
}

Format formatOf(const QString &fileName)
{
    const auto format = formatOfSuffix(QFileInfo(fileName).suffix());
    if (!format)
        fail(Texts::tr("the file name must end in .png, .svg or .pdf"));
    return *format;
}

void writePage(MainScene &scene, QIODevice &device, Format format, Notes notes)
{
    const OnPaper paper(scene, notes == Notes::Shown);
    QList<QRectF> pages;
    QRectF all;
    for (int i = 0; i < scene.pageCount(); ++i) {
        pages.append(PageLayout::page(i));
        all |= pages.constLast();
    }
    switch (format) {
    case Format::Png:
        return writePng(scene, all, device, 2);
    case Format::Svg:
        return writeSvg(scene, all, device);
    case Format::Pdf:
        return writePdf(scene, pages, device);
    }
}

void writePlot(NmrItem &item, QIODevice &device, Format format)
{
    auto *scene = qobject_cast<MainScene *>(item.scene());
    if (!scene)
        fail(Texts::tr("the spectrum is on no page"));
    const OnPaper paper(*scene, false);
    writeArea(*scene, item.mapRectToScene(item.contentRect()), device, format);
}

void writePicture(const std::function<void(QPainter *, const QRectF &)> &paint, const QSizeF &size, QIODevice &device,
                  Format format)
{
    QGraphicsScene scene;
    scene.addItem(new Drawing(paint, size));
    writeArea(scene, QRectF(QPointF(0, 0), size), device, format);
}

const QStringList &suffixes()
{
    static const QStringList list{QStringLiteral("png"), QStringLiteral("svg"), QStringLiteral("pdf")};
    return list;
}

void writeSpectrum(NmrItem &item, const QUuid &entry, const QString &suffix, QIODevice &device)
{
    if (const auto format = formatOfSuffix(suffix))
        writePlot(item, device, *format);
    else if (SpectrumExport::suffixes().contains(suffix))
        SpectrumExport::write(item.nmrData()->stackEntry(entry), suffix, device);
    else
        fail(Texts::tr("the file name must end in .%1")
                 .arg((SpectrumExport::suffixes() + suffixes()).join(QLatin1String(", ."))));
}

} // namespace PageExport

} // namespace Workbench
