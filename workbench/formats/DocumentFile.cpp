// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/DocumentFile.h"

#include "data/Error.h"

#include "formats/OutputFiles.h"
#include "formats/VariantStream.h"
#include "support/MetaTypes.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <unistd.h>
#endif

namespace Workbench {

namespace {

const QByteArray signature("\x89MGD\r\n\x1a\n", 8);
constexpr qsizetype headerSize = 8 + sizeof(quint32) + sizeof(quint64);

struct Header {
    quint32 version;
    quint64 length; ///< of the contents
};

QByteArray toBytes(const Header &header)
{
    QByteArray bytes(headerSize, '\0');
    std::copy(signature.begin(), signature.end(), bytes.begin());
    qToLittleEndian(header.version, bytes.data() + 8);
    qToLittleEndian(header.length, bytes.data() + 12);
    return bytes;
}

/// Throws when no contents can follow this header in a file of this size.
Header checkedHeader(const QByteArray &bytes, qint64 fileSize)
{
    if (!bytes.startsWith(signature))
        throw std::runtime_error(Texts::tr("this is not a document of the Magres Workbench").toStdString());
    if (bytes.size() < headerSize)
        throw std::runtime_error(Texts::tr("the file is cut off after %1 bytes").arg(fileSize).toStdString());
    const Header header{qFromLittleEndian<quint32>(bytes.constData() + 8),
                        qFromLittleEndian<quint64>(bytes.constData() + 12)};
    if (header.version > DocumentFile::version) {
        throw std::runtime_error(Texts::tr("the document is of format version %1, written by a newer program; this "
                                           "one reads versions up to %2")
                                     .arg(header.version)
                                     .arg(DocumentFile::version)
                                     .toStdString());
    }
    if (header.version == 0)
        throw std::runtime_error(Texts::tr("there is no format version 0 of documents").toStdString());
    const quint64 rest = quint64(fileSize - headerSize);
    if (rest < Checksum::size || header.length != rest - Checksum::size) {
        throw std::runtime_error(Texts::tr("the file is cut off or damaged: it has %1 bytes after its header, %2 were "
                                           "expected (%3 of contents and %4 of checksum)")
                                     .arg(rest)
                                     .arg(double(header.length) + Checksum::size, 0, 'g', 15)
                                     .arg(header.length)
                                     .arg(Checksum::size)
                                     .toStdString());
    }
    return header;
}

void setUp(QDataStream &stream)
{
    stream.setVersion(QDataStream::Qt_6_0);
    stream.setByteOrder(QDataStream::LittleEndian);
}

/// Puts the file's name before the text of every error.
template <typename Work>
auto withFileName(const QString &fileName, Work work)
{
    try {
        return work();
    } catch (const DocumentFile::Cancelled &) {
        throw DocumentFile::Cancelled(Texts::tr("%1: canceled").arg(fileName).toStdString());
    } catch (const std::bad_alloc &) {
        throw std::runtime_error(Texts::tr("%1: there is not enough memory").arg(fileName).toStdString());
    } catch (const std::exception &error) {
        throw std::runtime_error(QStringLiteral("%1: %2").arg(fileName, QString::fromUtf8(error.what())).toStdString());
    }
}

/// The tree, whose bytes have been found to be those that were written.
QVariant readTree(QIODevice &file, const DocumentProgress &progress)
{
    const QByteArray headerBytes = file.read(headerSize);
    const Header header = checkedHeader(headerBytes, file.size());
    Checksum checksum;
    DocumentDevice device(file, QIODevice::ReadOnly, qint64(header.length), checksum, progress);
    QDataStream stream(&device);
    setUp(stream);
    QVariant tree;
    try {
        tree = VariantStream::read(stream);
    } catch (const std::exception &error) {
        if (device.isCancelled())
            throw DocumentFile::Cancelled("canceled");
        const qint64 position = headerSize + qint64(header.length) - device.bytesAvailable();
        throw std::runtime_error(Texts::tr("the file is damaged before byte %1: %2")
                                     .arg(position)
                                     .arg(QString::fromUtf8(error.what()))
                                     .toStdString());
    }
    if (device.bytesAvailable() > 0) {
        throw std::runtime_error(
            Texts::tr("the file is damaged: %1 bytes follow its contents").arg(device.bytesAvailable()).toStdString());
    }
    checksum.add(headerBytes.constData(), headerBytes.size());
    if (file.read(Checksum::size) != checksum.result()) {
        throw std::runtime_error(
            Texts::tr("the file is damaged: its contents do not agree with its checksum").toStdString());
    }
    return tree;
}

/// The file's name must not come before its contents should the machine lose power; QSaveFile leaves that to its user.
bool putOnDisk(QIODevice &device)
{
    auto *file = qobject_cast<QFileDevice *>(&device);
    if (!file)
        return true;
#ifdef Q_OS_UNIX
    // Not every file system can; then it says that the call makes no sense.
    return file->flush() && (::fsync(file->handle()) == 0 || errno == EINVAL);
#else
    return file->flush();
#endif
}

/// Bytes of the points, which are nearly all of a large document.
qint64 estimatedLength(const Document &document)
{
    qint64 length = 0;
    for (const Document::Item &item : document.items) {
        if (const auto *spectra = std::get_if<Document::Spectra>(&item.content)) {
            for (const Document::Spectra::Entry &entry : spectra->entries) {
                const auto points = entry.data.value(QStringLiteral("DataPoints")).value<QList<DoubleVector>>();
                for (const DoubleVector &part : points)
                    length += qint64(part.size() * sizeof(double));
            }
        }
    }
    return length;
}

} // namespace

bool DocumentFile::isDocument(const QString &fileName)
{
    // Opening a pipe would wait for somebody to write to it.
    QFile file(fileName);
    return QFileInfo(fileName).isFile() && file.open(QIODevice::ReadOnly) && file.read(signature.size()) == signature;
}

Document DocumentFile::read(const QString &fileName, const DocumentProgress &progress)
{
    return withFileName(fileName, [&] {
        if (!QFileInfo(fileName).isFile() && QFileInfo::exists(fileName))
            throw std::runtime_error(Texts::tr("a file was expected").toStdString());
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            throw std::runtime_error(file.errorString().toStdString());
        return read(file, progress);
    });
}

Document DocumentFile::read(QIODevice &file, const DocumentProgress &progress)
{
    return Document::fromMap(readTree(file, progress).toMap());
}

void DocumentFile::write(QIODevice &file, const Document &document, const DocumentProgress &progress)
{
    // The length is known at the end.
    file.seek(headerSize);
    Checksum checksum;
    DocumentDevice device(file, QIODevice::WriteOnly, estimatedLength(document), checksum, progress);
    QDataStream stream(&device);
    setUp(stream);
    VariantStream::write(stream, document.toMap());
    const bool written = device.finish();
    if (device.isCancelled())
        throw Cancelled("canceled");
    const QByteArray header = toBytes({version, quint64(file.pos() - headerSize)});
    checksum.add(header.constData(), header.size());
    if (!written || file.write(checksum.result()) != Checksum::size || !file.seek(0)
        || file.write(header) != header.size() || !putOnDisk(file))
        throw std::runtime_error(Texts::tr("the file cannot be written: %1").arg(file.errorString()).toStdString());
}

void DocumentFile::write(const QString &fileName, const Document &document, const DocumentProgress &progress)
{
    OutputFiles output;
    QIODevice &file = output.open(fileName);
    withFileName(fileName, [&] { write(file, document, progress); });
    output.commit();
}

} // namespace Workbench
