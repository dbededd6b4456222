// SPDX-License-Identifier: BSD-3-Clause
#include "Targets.h"

#include <QDirIterator>
#include <QTest>

namespace {

using Target = void (*)(QByteArrayView);
const QHash<QString, Target> targets = {
    {QStringLiteral("magresText"), Fuzz::magresText},
    {QStringLiteral("magresMap"), Fuzz::magresMap},
};

} // namespace

/// What fuzzing has found once stays found: files of findings/TARGET go through the same functions in every build.
class tst_findings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bears_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QByteArray>("bytes");
        QDirIterator files(QStringLiteral(FINDINGS), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString target = files.fileInfo().dir().dirName();
            QVERIFY2(targets.contains(target), qPrintable(target));
            QTest::addRow("%s/%s", qPrintable(target), qPrintable(files.fileName())) << target << file.readAll();
        }
    }

    void bears()
    {
        QFETCH(QString, target);
        QFETCH(QByteArray, bytes);
        targets[target](bytes);
    }
};

QTEST_GUILESS_MAIN(tst_findings)
#include "tst_findings.moc"
