// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/NucleusTables.h"

#include <QFile>

// The resource lies in a static library, from which nothing else would draw it into the program.
static void initResources()
{
    Q_INIT_RESOURCE(workbench);
}

NucleusTables::NucleusTables(QObject *parent) : QObject(parent)
{
    initResources();
    QFile file(QStringLiteral(":/workbench/nuclides.tsv"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the nucleus table is missing from the program's resources");
    bool header = true;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (std::exchange(header, false))
            continue;
        const QList<QByteArray> fields = line.split('\t');
        if (fields.size() != 4)
            qFatal("the nucleus table has a line without four fields: %s", line.constData());
        const QString name = QString::fromLatin1(fields[0]);
        m_nuclei.insert(name, {QString::fromLatin1(fields[1]), fields[2].toDouble(), fields[3].toDouble()});
        m_order.append(name);
    }
}

QString NucleusTables::element(const QString &nucleus)
{
    qsizetype digits = 0;
    while (digits < nucleus.size() && nucleus[digits] >= u'0' && nucleus[digits] <= u'9')
        ++digits;
    return nucleus.mid(digits);
}

QStringList NucleusTables::isotopes(const QString &wanted) const
{
    QStringList found;
    for (const QString &name : m_order) {
        if (element(name) == wanted)
            found.append(name);
    }
    return found;
}

QStringList NucleusTables::quadrupolarIsotopes(const QString &wanted) const
{
    QStringList found = isotopes(wanted);
    found.removeIf([this](const QString &name) { return m_nuclei.value(name).spin == u"1/2"; });
    return found;
}
