// SPDX-License-Identifier: GPL-3.0-or-later
#include "Targets.h"

#include "formats/DocumentFile.h"

#include <QBuffer>
#include <QtEndian>

#include <stdexcept>

using namespace Workbench;

namespace {

/// A document around the contents, with the length and the checksum that belong to them.
QByteArray documentAround(QByteArrayView contents)
{
    QByteArray header("\x89MGD\r\n\x1a\n", 8);
    header.resize(20);
    qToLittleEndian(quint32(DocumentFile::version), header.data() + 8);
    qToLittleEndian(quint64(contents.size()), header.data() + 12);
    Checksum checksum;
    checksum.add(contents.data(), contents.size());
    checksum.add(header.constData(), header.size());
    return header + contents.toByteArray() + checksum.result();
}

QByteArray writtenAgain(QByteArray bytes)
{
    QBuffer from(&bytes);
    from.open(QIODevice::ReadOnly);
    QBuffer to;
    to.open(QIODevice::WriteOnly);
    DocumentFile::write(to, DocumentFile::read(from));
    return to.data();
}

} // namespace

void Fuzz::documentFile(QByteArrayView bytes)
{
    try {
        // What has been read once is written and read from then on without a change.
        const QByteArray once = writtenAgain(documentAround(bytes));
        const QByteArray twice = writtenAgain(once);
        require(once == twice, "a document that is another one when written and read");
    } catch (const std::runtime_error &) {
    }
}
