// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/ItemPicture.h"

#include "data/Error.h"
#include "items/DocumentItem.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

namespace Workbench {

namespace ItemPicture {

namespace {

constexpr int sceneResolution = 96; // scene units per inch
constexpr int imageScale = 3;
constexpr int pdfResolution = 1200;

void draw(DocumentItem &item, QPaintDevice &device, double scale, const QPointF &at = {})
{
    QPainter painter;
    if (!painter.begin(&device))
        fail(Texts::tr("the picture cannot be drawn"));
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(at);
    painter.scale(scale, scale);
    const QRectF area(QPointF(0, 0), item.contentRect().size());
    painter.fillRect(area, Qt::white);
    painter.setClipRect(area);
    item.paintPicture(&painter, area);
}

QImage image(DocumentItem &item)
{
    QImage image((item.contentRect().size() * imageScale).toSize(), QImage::Format_RGB32);
    if (image.isNull())
        fail(Texts::tr("there is nothing to draw"));
    image.fill(Qt::white);
    draw(item, image, imageScale);
    // Only now: while it is painted on, an image's resolution would scale recorded pictures once more.
    image.setDotsPerMeterX(qRound(sceneResolution * imageScale / 0.0254));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    return image;
}

} // namespace

void write(DocumentItem &item, const QString &suffix, QIODevice &device)
{
    const QString kind = suffix.toLower();
    const QSizeF size = item.contentRect().size();
    if (kind == u"png") {
        if (!image(item).save(&device, "PNG"))
            fail(Texts::tr("the image cannot be written"));
    } else if (kind == u"svg") {
        QSvgGenerator generator;
        generator.setOutputDevice(&device);
        generator.setResolution(sceneResolution);
        generator.setSize(size.toSize());
        generator.setViewBox(QRectF(QPointF(0, 0), size));
        generator.setTitle(item.title());
        draw(item, generator, 1);
    } else if (kind == u"pdf") {
        QPdfWriter writer(&device);
        writer.setResolution(pdfResolution);
        writer.setTitle(item.title());
        writer.setPageSize(QPageSize(size * 72.0 / sceneResolution, QPageSize::Point));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        draw(item, writer, double(pdfResolution) / sceneResolution);
    } else {
        fail(Texts::tr("the file name must end in .png, .svg or .pdf"));
    }
}

void save(DocumentItem &item, const QString &fileName)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        fail(fileName, file.errorString());
    write(item, QFileInfo(fileName).suffix(), file);
    if (!file.commit())
        fail(fileName, file.errorString());
}

QMimeData *mimeData(DocumentItem &item)
{
    auto data = std::make_unique<QMimeData>();
    data->setImageData(image(item));
    QBuffer vectors;
    vectors.open(QIODevice::WriteOnly);
    write(item, QStringLiteral("svg"), vectors);
    data->setData(QStringLiteral("image/svg+xml"), vectors.data());
    return data.release();
}

void print(DocumentItem &item, QPagedPaintDevice &printer)
{
    const QSizeF paper = printer.pageLayout().paintRectPixels(printer.logicalDpiX()).size();
    const QSizeF size = item.contentRect().size();
    const double scale = std::min(paper.width() / size.width(), paper.height() / size.height());
    const QSizeF rest = paper - size * scale;
    draw(item, printer, scale, {rest.width() / 2, rest.height() / 2});
}

} // namespace ItemPicture

} // namespace Workbench
