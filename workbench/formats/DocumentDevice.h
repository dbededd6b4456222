// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/Checksum.h"

#include <QIODevice>

#include <functional>

namespace Workbench {

/// Called now and then with the part that is done, 0 to 1. False cancels.
using DocumentProgress = std::function<bool(double)>;

/// A part of a file, read or written from where the file stands, with a checksum over what passes through. Reading ends
/// after the stated length. A cancelled device fails from then on.
class DocumentDevice : public QIODevice {
    Q_OBJECT
public:
    /// `length`: bytes, when writing an estimate for the progress. `checksum` goes on from where it is.
    DocumentDevice(QIODevice &file, OpenMode mode, qint64 length, Checksum &checksum, const DocumentProgress &progress);

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_left; }
    bool isCancelled() const { return m_cancelled; }
    /// Hands over what still waits to be written. False: the file could not be written, or it was cancelled.
    bool finish();

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    /// Fills the buffer with what comes next.
    bool refill();
    bool report(qint64 done);
    bool writeThrough(const char *data, qint64 size);

    QIODevice &m_file;
    Checksum &m_checksum;
    DocumentProgress m_progress;
    QByteArray m_buffer;
    qsizetype m_taken = 0; ///< of the buffer, when reading
    qint64 m_length;
    qint64 m_left;
    qint64 m_reported = 0;
    bool m_cancelled = false;
};

} // namespace Workbench
