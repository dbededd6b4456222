// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ForeignFormats.h"

#include "data/ReaderText.h"
#include "formats/MagresCheck.h"

#include <QDir>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>

namespace Workbench {

namespace ForeignFormats {

namespace {

/// FDMAGIC 0, the format constant and the byte order 2.345 as 32-bit numbers, in either order.
bool isNmrPipe(const QByteArray &start)
{
    if (start.size() < 2048)
        return false;
    const float little = qFromLittleEndian<float>(start.constData() + 8),
                big = qFromBigEndian<float>(start.constData() + 8);
    return qFromLittleEndian<quint32>(start.constData()) == 0
        && (std::abs(little - 2.345f) < 1e-3f || std::abs(big - 2.345f) < 1e-3f);
}

bool isZip(const QByteArray &start)
{
    return start.startsWith("PK\x03\x04");
}

struct Mark {
    const char *name;
    bool (*fits)(const QString &fileName, const QByteArray &start);
};

const Mark marks[] = {
    {"JEOL Delta (.jdf)",
     [](const QString &, const QByteArray &start) {
         return start.startsWith("JEOL.NMR") || start.startsWith("RMN.LOEJ");
     }},
    {"UCSF (Sparky)", [](const QString &, const QByteArray &start) { return start.startsWith("UCSF NMR"); }},
    {"NMRPipe", [](const QString &, const QByteArray &start) { return isNmrPipe(start); }},
    {"Magritek Spinsolve",
     [](const QString &name, const QByteArray &start) {
         return start.startsWith("SORPATAD") || start.startsWith("DATAPROS") || name.endsWith(u".1d")
             || name.endsWith(u".pt1") || name.endsWith(u".pt2");
     }},
    {"MestReNova (.mnova)", [](const QString &name, const QByteArray &) { return name.endsWith(u".mnova"); }},
    {"NMRium", [](const QString &name, const QByteArray &) { return name.endsWith(u".nmrium"); }},
    {"NMReDATA", [](const QString &, const QByteArray &start) { return start.contains("<NMREDATA_"); }},
    {"Tecmag (.tnt)", [](const QString &, const QByteArray &start) { return start.startsWith("TNT1."); }},
    {"a spreadsheet",
     [](const QString &name, const QByteArray &start) {
         const bool isOld = start.startsWith("\xD0\xCF\x11\xE0") && name.endsWith(u".xls");
         return isOld || (isZip(start) && (name.endsWith(u".xlsx") || name.endsWith(u".ods")));
     }},
    {"ssNake",
     [](const QString &name, const QByteArray &start) {
         const bool isMatlab = start.startsWith("MATLAB 5.0 MAT-file") || name.endsWith(u".mat");
         const bool isJson = start.trimmed().startsWith('{') && start.contains("\"dataReal\"");
         return isMatlab || isJson;
     }},
};

/// Files that tell the software of a folder with raw data.
struct FolderMark {
    const char *name;
    QStringList files; ///< all of them
};

const QList<FolderMark> folderMarks{
    {"Varian/Agilent (VnmrJ)", {QStringLiteral("fid"), QStringLiteral("procpar")}},
    {"Magritek Spinsolve", {QStringLiteral("acqu.par"), QStringLiteral("data.1d")}},
    {"Tecmag", {QStringLiteral("data.tnt")}},
};

QString refusalOf(const char *name)
{
    return Texts::tr(
               "this is data of %1, which cannot be read here: open it in the software that it belongs to and export "
               "the "
               "processed spectrum as JCAMP-DX (.jdx) or as text with ppm and intensity")
        .arg(QString::fromLatin1(name));
}

QString rawBruker()
{
    return Texts::tr(
        "these are raw data of a Bruker spectrometer (fid or ser): process them in TopSpin (for example efp, apk) "
        "and choose the folder again, or its pdata/1/1r");
}

QString folderRefusal(const QDir &folder)
{
    for (const FolderMark &mark : folderMarks) {
        if (std::all_of(mark.files.begin(), mark.files.end(), [&](const QString &file) { return folder.exists(file); }))
            return refusalOf(mark.name);
    }
    const bool isRaw = folder.exists(QStringLiteral("fid")) || folder.exists(QStringLiteral("ser"));
    return isRaw && folder.exists(QStringLiteral("acqus")) ? rawBruker() : QString();
}

} // namespace

QString refusal(const QString &path, const QByteArray &start)
{
    const QFileInfo info(path);
    if (info.isDir())
        return folderRefusal(QDir(path));
    const QString name = info.fileName().toLower();
    for (const Mark &mark : marks) {
        if (mark.fits(name, start))
            return refusalOf(mark.name);
    }
    if (MagresCheck::isMagres(start))
        return Texts::tr("this is a calculation (MAGRES), a measurement was expected");
    if (isZip(start) || start.startsWith("\x1F\x8B"))
        return Texts::tr("this is an archive: unpack it and choose the folder or the file in it");
    const bool isRawName = name == u"fid" || name == u"ser" || name == u"procpar" || name == u"acqus";
    return isRawName ? folderRefusal(info.absoluteDir()) : QString();
}

} // namespace ForeignFormats

} // namespace Workbench
