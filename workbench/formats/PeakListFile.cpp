// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/PeakListFile.h"

#include "data/Error.h"
#include "data/NumberText.h"
#include "support/MetaTypes.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QUuid>

#include <stdexcept>

namespace Workbench {

namespace PeakListFile {

namespace {

/// Far more peaks than any spectrum has, and little enough to hold.
constexpr qint64 largestFile = 64 << 20;

bool isHeader(const QByteArray &field)
{
    // "nan" and "inf" are faulty numbers, not names of columns.
    const QByteArray text = field.toLower();
    return !field.isEmpty() && (std::isalpha(static_cast<unsigned char>(field[0])) || field[0] == '"')
        && !text.startsWith("nan") && !text.startsWith("inf");
}

/// A list of the other number of dimensions has as many fields, but its header tells.
void checkHeader(const QList<QByteArray> &fields, const QString &source, int line, int dimensions)
{
    if (fields.size() < 2)
        return;
    const QByteArray second = fields[1].toLower();
    if (dimensions == 1 && second.contains("f1"))
        fail(source, line, Texts::tr("this is a list of 2D peaks, expected \"position[,height]\""));
    if (dimensions == 2 && (second.contains("height") || second.contains("intensity")))
        fail(source, line, Texts::tr("this is a list of 1D peaks, expected \"position,position_f1[,height]\""));
}

Peak parseFields(const QList<QByteArray> &fields, const QString &source, int line, int dimensions)
{
    if (fields.size() < dimensions || fields.size() > dimensions + 1) {
        fail(source, line,
             (dimensions == 1 ? Texts::tr("expected \"position[,height]\", found %1 fields")
                              : Texts::tr("expected \"position,position_f1[,height]\", found %1 fields"))
                 .arg(fields.size()));
    }
    std::vector<double> numbers;
    for (const QByteArray &field : fields) {
        const auto number = NumberText::parse<double>({field.constData(), size_t(field.size())});
        if (!number)
            fail(source, line, Texts::tr("expected a number, found \"%1\"").arg(QString::fromUtf8(field)));
        numbers.push_back(*number);
    }
    Peak peak{numbers[0], dimensions == 2 ? numbers[1] : 0.0};
    if (int(numbers.size()) > dimensions)
        peak.height = numbers.back();
    return peak;
}

} // namespace

std::vector<Peak> parse(const QByteArray &text, const QString &source, int dimensions)
{
    std::vector<Peak> peaks;
    bool headerAllowed = true;
    int lineNumber = 0;
    QByteArray rest = text.startsWith("\xEF\xBB\xBF") ? text.mid(3) : text;
    // All three line ends that occur.
    rest.replace("\r\n", "\n").replace('\r', '\n');
    for (QByteArray line : rest.split('\n')) {
        ++lineNumber;
        if (const qsizetype comment = line.indexOf('#'); comment >= 0)
            line.truncate(comment);
        line = line.trimmed();
        if (line.isEmpty())
            continue;
        QList<QByteArray> fields = line.split(',');
        for (QByteArray &field : fields)
            field = field.trimmed();
        const bool header = std::exchange(headerAllowed, false) && isHeader(fields[0]);
        if (header)
            checkHeader(fields, source, lineNumber, dimensions);
        else
            peaks.push_back(parseFields(fields, source, lineNumber, dimensions));
    }
    if (peaks.empty())
        throw std::runtime_error(Texts::tr("%1 holds no peaks").arg(source).toStdString());
    return peaks;
}

std::vector<Peak> read(const QString &fileName, int dimensions)
{
    if (QFileInfo(fileName).isDir())
        throw std::runtime_error(Texts::tr("%1 is a directory, a peak list was expected").arg(fileName).toStdString());
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error(
            Texts::tr("Peak list %1 cannot be opened: %2").arg(fileName, file.errorString()).toStdString());
    }
    const QByteArray text = file.read(largestFile + 1);
    if (text.size() > largestFile)
        throw std::runtime_error(Texts::tr("%1 is too large for a peak list").arg(fileName).toStdString());
    return parse(text, fileName, dimensions);
}

QVariantMap toPeakMap(const std::vector<Peak> &peaks)
{
    QVariantList list;
    for (const Peak &peak : peaks) {
        list.append(QVariantMap{{QStringLiteral("ID"), QUuid::createUuid()},
                                {QStringLiteral("Pos"), QVariant::fromValue(DoubleVector{peak.f2, peak.f1})},
                                {QStringLiteral("Height"), peak.height},
                                {QStringLiteral("peakType"), 1},
                                {QStringLiteral("PeakLabel"), QString()}});
    }
    return {{QStringLiteral("PeakList"), list},
            {QStringLiteral("ID"), QUuid::createUuid()},
            {QStringLiteral("PosUnits"), QVariant::fromValue(QList<int>{3, 3, 1})}};
}

} // namespace PeakListFile

} // namespace Workbench
