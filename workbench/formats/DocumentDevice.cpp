// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/DocumentDevice.h"

#include <algorithm>

namespace Workbench {

namespace {

/// Fits into the inner caches, where the checksum then finds the data.
constexpr qsizetype blockSize = 64 * 1024;
constexpr qint64 bytesBetweenReports = 4 * 1024 * 1024;

} // namespace

DocumentDevice::DocumentDevice(QIODevice &file, OpenMode mode, qint64 length, Checksum &checksum,
                               const DocumentProgress &progress)
    : m_file(file), m_checksum(checksum), m_progress(progress), m_length(length), m_left(length)
{
    m_buffer.reserve(blockSize);
    open(mode | Unbuffered);
}

bool DocumentDevice::report(qint64 done)
{
    if (m_progress && done - m_reported >= bytesBetweenReports) {
        m_reported = done;
        m_cancelled = m_cancelled || !m_progress(std::min(1.0, double(done) / double(std::max<qint64>(m_length, 1))));
    }
    return !m_cancelled;
}

bool DocumentDevice::refill()
{
    const qint64 unread = m_left - (m_buffer.size() - m_taken);
    m_buffer.resize(qsizetype(std::min<qint64>(blockSize, unread)));
    m_taken = 0;
    const qint64 read = m_file.read(m_buffer.data(), m_buffer.size());
    m_buffer.resize(qsizetype(std::max<qint64>(read, 0)));
    m_checksum.add(m_buffer.constData(), m_buffer.size());
    return !m_buffer.isEmpty();
}

qint64 DocumentDevice::readData(char *data, qint64 size)
{
    if (m_cancelled)
        return -1;
    qint64 done = 0;
    while (done < size && m_left > 0) {
        qint64 step = std::min<qint64>(size - done, m_buffer.size() - m_taken);
        if (step > 0) {
            std::copy_n(m_buffer.constData() + m_taken, step, data + done);
            m_taken += step;
        } else if (std::min(size - done, m_left) >= blockSize) {
            step = m_file.read(data + done, std::min(size - done, m_left));
            if (step <= 0)
                break;
            m_checksum.add(data + done, step);
        } else if (!refill()) {
            break;
        }
        done += step;
        m_left -= step;
    }
    return report(m_length - m_left) ? done : -1;
}

bool DocumentDevice::writeThrough(const char *data, qint64 size)
{
    m_checksum.add(data, size);
    m_left -= size;
    return m_file.write(data, size) == size && report(m_length - m_left);
}

qint64 DocumentDevice::writeData(const char *data, qint64 size)
{
    if (m_cancelled)
        return -1;
    if (m_buffer.size() + size > blockSize && !finish())
        return -1;
    if (size >= blockSize)
        return writeThrough(data, size) ? size : -1;
    m_buffer.append(data, size);
    return size;
}

bool DocumentDevice::finish()
{
    const bool done = !m_cancelled && writeThrough(m_buffer.constData(), m_buffer.size());
    m_buffer.resize(0); // keeps its memory
    return done;
}

} // namespace Workbench

#include "moc_DocumentDevice.cpp"
