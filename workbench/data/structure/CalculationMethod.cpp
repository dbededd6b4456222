// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/structure/CalculationMethod.h"

#include "data/Error.h"

#include <QFile>

#include <cmath>

namespace Workbench {
namespace {

const QString codeKey = QStringLiteral("Code"), versionKey = QStringLiteral("Version"),
              functionalKey = QStringLiteral("Functional"), cutoffKey = QStringLiteral("Cutoff");

/// Electronvolt per unit of energy (CODATA 2018); 0 for a unit that is not known. The format's own unit is the hartree.
double inElectronvolt(const QByteArray &unit)
{
    const QByteArray name = unit.toLower();
    if (name.isEmpty() || name == "hartree" || name == "ha" || name == "au")
        return 27.211386245988;
    if (name == "rydberg" || name == "ry")
        return 27.211386245988 / 2;
    return name == "ev" ? 1.0 : 0.0;
}

bool contradict(const QString &a, const QString &b)
{
    return !a.isEmpty() && !b.isEmpty() && a.compare(b, Qt::CaseInsensitive) != 0;
}

} // namespace

CalculationMethod CalculationMethod::fromText(const QByteArray &text)
{
    CalculationMethod method;
    QByteArray unit, cutoff;
    bool inside = false;
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = text.indexOf('\n', begin);
        end = end < 0 ? text.size() : end;
        const QByteArray line = text.mid(begin, end - begin).simplified();
        begin = end + 1;
        if (line.startsWith("[calculation]") || line.startsWith("<calculation>")) {
            inside = true;
        } else if (line.startsWith("[/calculation]") || line.startsWith("</calculation>")) {
            break;
        } else if (inside) {
            const qsizetype blank = line.indexOf(' ');
            const QByteArray key = line.first(blank < 0 ? line.size() : blank);
            const QByteArray value = blank < 0 ? QByteArray() : line.mid(blank + 1);
            if (key == "calc_code")
                method.code = QString::fromUtf8(value);
            else if (key == "calc_code_version")
                method.version = QString::fromUtf8(value);
            else if (key == "calc_xcfunctional")
                method.functional = QString::fromUtf8(value);
            else if (key == "calc_cutoffenergy")
                cutoff = value;
            else if (key == "units" && value.startsWith("calc_cutoffenergy "))
                unit = value.mid(int(qstrlen("calc_cutoffenergy ")));
        }
    }
    // Some programs write the unit behind the number.
    const qsizetype blank = cutoff.indexOf(' ');
    if (blank >= 0)
        unit = cutoff.mid(blank + 1);
    bool isNumber = false;
    const double energy = cutoff.first(blank < 0 ? cutoff.size() : blank).toDouble(&isNumber) * inElectronvolt(unit);
    if (isNumber && energy > 0 && std::isfinite(energy))
        method.cutoff = energy;
    return method;
}

CalculationMethod CalculationMethod::fromFile(const QString &fileName)
{
    // The block comes first in the files of all programs; it is some hundred bytes long.
    constexpr qint64 head = 64 << 10;
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? fromText(file.read(head)) : CalculationMethod();
}

QVariantMap CalculationMethod::toMap() const
{
    QVariantMap map{{codeKey, code}, {versionKey, version}, {functionalKey, functional}};
    if (cutoff)
        map.insert(cutoffKey, *cutoff);
    return map;
}

CalculationMethod CalculationMethod::fromMap(const QVariantMap &map)
{
    CalculationMethod method{
        map.value(codeKey).toString(), map.value(versionKey).toString(), map.value(functionalKey).toString(), {}};
    if (const double cutoff = map.value(cutoffKey).toDouble(); cutoff > 0)
        method.cutoff = cutoff;
    return method;
}

bool CalculationMethod::agreesWith(const CalculationMethod &other) const
{
    const bool cutoffsDiffer = cutoff && other.cutoff && std::abs(*cutoff - *other.cutoff) > 1e-3 * *cutoff;
    return !contradict(code, other.code) && !contradict(functional, other.functional) && !cutoffsDiffer;
}

std::optional<CommonMethod::Source> CommonMethod::add(const QString &file, const CalculationMethod &method)
{
    for (const Source &source : m_sources) {
        if (!source.method.agreesWith(method))
            return source;
    }
    const bool isNews = (m_method.code.isEmpty() && !method.code.isEmpty())
        || (m_method.functional.isEmpty() && !method.functional.isEmpty()) || (!m_method.cutoff && method.cutoff);
    if (m_method.code.isEmpty()) {
        m_method.code = method.code;
        m_method.version = method.version;
    }
    if (m_method.functional.isEmpty())
        m_method.functional = method.functional;
    if (!m_method.cutoff)
        m_method.cutoff = method.cutoff;
    if (isNews)
        m_sources.push_back({file, method});
    return std::nullopt;
}

QString CalculationMethod::text() const
{
    if (isEmpty())
        return Texts::tr("unknown method");
    QStringList parts;
    if (!code.isEmpty())
        parts.append(code);
    if (!functional.isEmpty())
        parts.append(functional);
    if (cutoff)
        parts.append(Texts::tr("%1 eV").arg(*cutoff, 0, 'f', 0));
    return parts.join(QStringLiteral(", "));
}

} // namespace Workbench
