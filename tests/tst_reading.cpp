// SPDX-License-Identifier: BSD-3-Clause
#include "TestNuclei.h"
#include "parameters/MapConversion.h"
#include "reading/MagresParser.h"
#include "reading/MoleculeDescription.h"
#include "reading/ParameterTable.h"

#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

static MagresData parsed(QByteArrayView text)
{
    MagresData data;
    Magres::parseMagres(text, data);
    return data;
}

static QString parseError(QByteArrayView text)
{
    try {
        parsed(text);
    } catch (const MagresParseError &error) {
        return error.message();
    }
    return {};
}

static QString writeFile(const QTemporaryDir &dir, const QByteArray &content)
{
    QFile file(dir.filePath(u"test.magres"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no test file");
    return file.fileName();
}

static const QByteArray smallFile = "#$magres-abinitio-v1.0\n"
                                    "[calculation]\ncalc_name atom C C 9 0 0 0\n[/calculation]\n"
                                    "<atoms>\nunits lattice Angstrom\nlattice 1 0 0 0 2 0 0 0 3\n"
                                    "lattice 6 0 0 0 7 0 0 0 8.5\n"
                                    "units atom Angstrom\n"
                                    "atom C C 1 0.1 0.2 0.3\natom H H 1 1.0 0.0 0.0 # a comment\n[/atoms]\n"
                                    "[magres]\nunits ms ppm\nunits efg au\n"
                                    "ms C 1 1 2 3 4 5 6 7 8 9\nms_orbital C 1 1\nisc C 1 H 1 1 2\n"
                                    "efg H 1 -0.1 0 0 0 -0.2 0 0 0 0.3\n</magres>\n"
                                    "[atoms]\natom O O 1 5 5 5\n";

static MagresData twelveAtoms()
{
    MagresData data;
    for (int i = 0; i < 12; ++i) {
        MagresAtom &atom = data.atoms.emplaceBack();
        atom.type = "C";
        atom.labels = {"C" + QByteArray::number(i + 1)};
        atom.No = i + 1;
        atom.recordNo = i;
        atom.pos = {0.5 * i, 1.0, -i / 3.0};
        atom.bonds = {i == 0 ? 1 : i - 1};
        data.shieldings.append(MagresTensor(atom.labels, atom.No, {1.0 + i, 0.5, 0, 0.5, 3, 0, 0, 0, 7}));
    }
    data.lattice = {1, 0, 0, 0, 2, 0, 0, 0, 3};
    data.molItemID = QUuid::createUuid();
    data.QIso = {{u"Cu"_s, u"65Cu"_s}};
    data.numberToLabel = false;
    return data;
}

class tst_Reading : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recognisesByTheFirstBytes_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("expected");

        QTest::newRow("with version") << QByteArray("#$magres-abinitio-v1.0\n") << true;
        QTest::newRow("bare") << QByteArray("#$magres-abinitio") << true;
        QTest::newRow("short") << QByteArray("#$magres-abiniti") << false;
        QTest::newRow("other case") << QByteArray("#$MAGRES-abinitio") << false;
        QTest::newRow("blank in front") << QByteArray(" #$magres-abinitio") << false;
        QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF#$magres-abinitio") << false;
        QTest::newRow("empty") << QByteArray() << false;
    }

    void recognisesByTheFirstBytes()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, expected);
        QTemporaryDir dir;
        QCOMPARE(Magres::isMagresFile(writeFile(dir, content)), expected);
    }

    void readsBlocksAndRecords()
    {
        int blocks = 0;
        MagresData data;
        Magres::parseMagres(smallFile, data, [&](MagresData &read) {
            ++blocks;
            QCOMPARE(read.atoms.size(), blocks == 1 ? 2 : 3);
        });
        QCOMPARE(blocks, 2);
        QCOMPARE(data.lattice, (QList<double>{6, 0, 0, 0, 7, 0, 0, 0, 8.5}));
        QCOMPARE(data.atoms[1].type, QByteArray("H"));
        QCOMPARE(data.atoms[1].recordNo, 1);
        QCOMPARE(data.atoms[1].pos, (Position{1.0, 0.0, 0.0}));
        QCOMPARE(data.atoms[2].recordNo, 2);
        // The second block numbers all labels once more.
        QCOMPARE(data.atoms[0].labels, QByteArrayList{"C11"});
        QCOMPARE(data.atoms[2].labels, QByteArrayList{"O1"});
        QCOMPARE(data.shieldings.size(), 1);
        QCOMPARE(data.shieldings[0].tensor, (Magres::Tensor{1, 2, 3, 4, 5, 6, 7, 8, 9}));
        QCOMPARE(data.shieldings[0].labels, QByteArrayList{"C1"});
        QCOMPARE(data.EFG.size(), 1);
        QCOMPARE(data.EFG[0].No, 1);
        QVERIFY(std::abs(data.EFG[0].eq() - 0.3) < 1e-12);
    }

    void lineEndsAndCommentsDoNotMatter_data()
    {
        QTest::addColumn<QByteArray>("text");
        const QByteArray text = "[atoms]\natom C C 1 1 2 3\n[/atoms]\n[magres]\nms C 1 1 0 0 0 2 0 0 0 3\n[/magres]\n";
        QTest::newRow("plain") << text;
        QTest::newRow("CRLF") << QByteArray(text).replace("\n", "\r\n");
        QTest::newRow("tabs and blanks") << QByteArray(text).replace("\n", " \t\n  ").replace(" ", " \v\t ");
        QTest::newRow("comments") << QByteArray(text).replace("\n", " # atom H H 1 0 0 0\n");
        QTest::newRow("no last line end") << text.trimmed();
        QTest::newRow("no-break spaces around") << QByteArray(text).replace("\n", "\xC2\xA0\n\xC2\xA0");
        QTest::newRow("skipped long line") << QByteArray(20'000'000, 'x') + "\n" + text;
    }

    void lineEndsAndCommentsDoNotMatter()
    {
        QFETCH(QByteArray, text);
        const MagresData data = parsed(text);
        QCOMPARE(data.atoms.size(), 1);
        QCOMPARE(data.atoms[0].labels, QByteArrayList{"C1"});
        QCOMPARE(data.atoms[0].pos, (Position{1, 2, 3}));
        QCOMPARE(data.shieldings.size(), 1);
        QCOMPARE(data.shieldings[0].labels, QByteArrayList{"C1"});
    }

    void numbers_data()
    {
        QTest::addColumn<QByteArray>("token");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<double>("value");

        QTest::newRow("exponent") << QByteArray("-1.25E+02") << true << -125.0;
        QTest::newRow("plus sign") << QByteArray("+1.5") << true << 1.5;
        QTest::newRow("no leading zero") << QByteArray("-.5") << true << -0.5;
        QTest::newRow("all digits count") << QByteArray("0.1000000000000000055511151231257827") << true << 0.1;
        QTest::newRow("infinite") << QByteArray("inf") << true << std::numeric_limits<double>::infinity();
        QTest::newRow("letters behind") << QByteArray("12.3abc") << false << 0.0;
        QTest::newRow("decimal comma") << QByteArray("1,5") << false << 0.0;
        QTest::newRow("hexadecimal") << QByteArray("0x10") << false << 0.0;
        QTest::newRow("beyond double") << QByteArray("1e400") << false << 0.0;
        QTest::newRow("sign alone") << QByteArray("-") << false << 0.0;
    }

    void numbers()
    {
        QFETCH(QByteArray, token);
        QFETCH(bool, valid);
        QFETCH(double, value);
        const QByteArray text = "[atoms]\natom C C 1 " + token + " 0 0\n";
        if (valid)
            QCOMPARE(parsed(text).atoms[0].pos[0], value);
        else
            QCOMPARE(parseError(text),
                     u"Atom x-coordinate in line atom C C 1 %1 0 0 cannot be parsed"_s.arg(QString::fromLatin1(token)));
    }

    void labels_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("atomLabel");
        QTest::addColumn<QByteArray>("tensorLabel");

        const QByteArray ms = "[magres]\nms H 01 1 0 0 0 2 0 0 0 3\n[/magres]\n";
        QTest::newRow("numbered") << "[atoms]\natom H H 1 0 0 0\n[/atoms]\n" + ms << QByteArray("H1")
                                  << QByteArray("H01");
        QTest::newRow("own labels") << "[atoms]\natom H H 1 0 0 0\natom H H_a 1 0 0 0\n[/atoms]\n" + ms
                                    << QByteArray("H") << QByteArray("H");
        QTest::newRow("tensors first") << ms + "[atoms]\natom H H_a 1 0 0 0\n[/atoms]\n"
                                       << QByteArray("H_a") << QByteArray("H01");
        QTest::newRow("Latin-1") << "[atoms]\natom H H\xC3\xA9 1 0 0 0\n[/atoms]\n" + ms << QByteArray("H\xE9")
                                 << QByteArray("H");
    }

    void labels()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, atomLabel);
        QFETCH(QByteArray, tensorLabel);
        const MagresData data = parsed(text);
        QCOMPARE(data.atoms[0].labels, QByteArrayList{atomLabel});
        QCOMPARE(data.shieldings[0].labels, QByteArrayList{tensorLabel});
        QCOMPARE(data.shieldings[0].No, 1);
    }

    void badRecordsAreQuoted_data()
    {
        QTest::addColumn<QByteArray>("block");
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("message"); // %L stands for the line

        const auto row = [](const char *name, const char *block, const char *line, const char *message) {
            QTest::newRow(name) << QByteArray(block) << QByteArray(line) << QString::fromLatin1(message);
        };
        row("units", "atoms", "units atom", "Units record in line %L cannot be parsed");
        row("units glued", "magres", "unitsfoo ppm", "Units record in line %L cannot be parsed");
        row("atom unit", "atoms", "units atom nm", "Only Angstroms are supported as atom units but %L is found");
        row("ms unit", "magres", "units ms Hz", "Only ppm are supported for shielding but %L is found");
        row("ms unit in atoms", "atoms", "units ms Hz", "Only ppm are supported for shielding but %L is found");
        row("lattice", "atoms", "lattice 1 0 0 0 1 0 0 0", "Lattice record in line %L cannot be parsed");
        row("lattice value", "atoms", "lattice 1 0 0 0 1 0 0 0 x", "Lattice coordinate #1 in line 9 cannot be parsed");
        row("atom", "atoms", "atom H H 1 0.0 0.0", "Atom record in line %L cannot be parsed");
        row("atom number first", "atoms", "atom H H 1.0 x y z", "Atom number in line %L cannot be parsed");
        row("atom number large", "atoms", "atom H H 3000000000 0 0 0", "Atom number in line %L cannot be parsed");
        row("x", "atoms", "atom H H 1 x y z", "Atom x-coordinate in line %L cannot be parsed");
        row("y", "atoms", "atom H H 1 0 y z", "Atom y-coordinate in line %L cannot be parsed");
        row("z", "atoms", "atom H H 1 0 0 1z", "Atom z-coordinate in line %L cannot be parsed");
        row("ms", "magres", "ms H 1 1 2 3 4 5 6 7 8", "Ms record in line %L cannot be parsed");
        row("ms too long", "magres", "ms H 1 1 2 3 4 5 6 7 8 9 10 11 12", "Ms record in line %L cannot be parsed");
        row("efg", "magres", "efg H 1", "EFG record in line %L cannot be parsed");
        row("tensor number", "magres", "efg H one 1 2 3 4 5 6 7 8 9", "Number in line %L cannot be parsed");
        row("tensor element", "magres", "ms H 1 1 2 3 4 five 6 7 8 9", "Tensor element in line %L cannot be parsed");
    }

    void badRecordsAreQuoted()
    {
        QFETCH(QByteArray, block);
        QFETCH(QByteArray, line);
        QFETCH(QString, message);
        const QByteArray text = "[" + block + "]\n  " + line + "\t# a comment\n[/" + block + "]\n";
        // What a comment leaves behind is not trimmed again.
        const QString quoted = QString::fromLatin1(line) + u'\t';
        QCOMPARE(parseError(text), message.replace(u"%L"_s, quoted));
    }

    void unitsAreCheckedUntilAccepted_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("accepted");

        QTest::newRow("lattice unit") << QByteArray("[atoms]\nunits lattice Bohr\n") << true;
        QTest::newRow("after an accepted one") << QByteArray("[atoms]\nunits atom Angstrom\nunits atom Bohr\n") << true;
        QTest::newRow("after an unchecked one") << QByteArray("[magres]\nunits efg au\nunits ms Hz\n") << false;
        QTest::newRow("in the next block")
            << QByteArray("[atoms]\nunits atom Angstrom\n[/atoms]\n[magres]\nunits ms Hz\n") << false;
    }

    void unitsAreCheckedUntilAccepted()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, accepted);
        QCOMPARE(parseError(text).isEmpty(), accepted);
    }

    void filesThatCannotBeOpened()
    {
        QTemporaryDir dir;
        for (const QString &name : {dir.filePath(u"missing.magres"_s), dir.path()}) {
            QVERIFY(!Magres::isMagresFile(name));
            MagresData data;
            try {
                Magres::readMagresFile(name, data);
                QFAIL("no error");
            } catch (const std::exception &error) {
                QCOMPARE(QString::fromUtf8(error.what()), u"File %1 cannot be opened"_s.arg(name));
            }
        }
    }

    void damagedTextsNeverCrash()
    {
        std::mt19937 random(1);
        for (int round = 0; round < 3000; ++round) {
            QByteArray text = smallFile.left(qsizetype(random() % size_t(smallFile.size() + 1)));
            for (unsigned hits = random() % 4; hits > 0 && !text.isEmpty(); --hits)
                text[qsizetype(random() % size_t(text.size()))] = char(random());
            MagresData data;
            try {
                Magres::parseMagres(text, data);
            } catch (const MagresParseError &error) {
                QVERIFY(!error.message().isEmpty());
            }
        }
    }

    void mapFormComesBackInKeyOrder()
    {
        const MagresData data = twelveAtoms();
        MagresData back;
        back.fromMap(data.toMap());
        QCOMPARE(back.ID, data.ID);
        QCOMPARE(back.molItemID, data.molItemID);
        QCOMPARE(back.lattice, data.lattice);
        QCOMPARE(back.QIso, data.QIso);
        QCOMPARE(back.numberToLabel, false);
        const QList<int> order{0, 1, 10, 11, 2, 3, 4, 5, 6, 7, 8, 9};
        QCOMPARE(back.atoms.size(), order.size());
        for (qsizetype i = 0; i < order.size(); ++i) {
            const MagresAtom &original = data.atoms[order[i]];
            QCOMPARE(back.atoms[i].recordNo, original.recordNo);
            QCOMPARE(back.atoms[i].labels, original.labels);
            QCOMPARE(back.atoms[i].pos, original.pos);
            QCOMPARE(back.atoms[i].bonds, original.bonds);
            QCOMPARE(back.shieldings[i].principalValues, data.shieldings[order[i]].principalValues);
        }
        QCOMPARE(Magres::atomsInFileOrder(back)[2]->recordNo, 2);

        MagresAtom atom;
        atom.fromMap({{u"pos"_s, QVariant::fromValue(DoubleVector{1, 2})}});
        QCOMPARE(atom.pos, (Position{0, 0, 0}));
        MagresData empty;
        empty.fromMap({{u"atoms"_s, 5}, {u"lattice"_s, u"no list"_s}});
        QVERIFY(empty.ID.isNull() && empty.atoms.isEmpty() && empty.lattice.isEmpty() && !empty.numberToLabel);
    }

    void mapFormHasThePersistedTypes()
    {
        registerSharedMetaTypes();
        const QVariantMap map = twelveAtoms().toMap();
        const auto typeName = [](const QVariant &value) { return QByteArray(value.typeName()); };
        QCOMPARE(typeName(map[u"lattice"_s]), QByteArray("QList<double>"));
        const QVariantMap atom = map[u"atoms"_s].toMap()[u"10"_s].toMap();
        QCOMPARE(typeName(atom[u"type"_s]), QByteArray("QByteArray"));
        QCOMPARE(typeName(atom[u"labels"_s]), QByteArray("QStringList"));
        QCOMPARE(typeName(atom[u"bonds"_s]), QByteArray("QList<int>"));
        QCOMPARE(typeName(atom[u"pos"_s]), QByteArray("std::vector<double,std::allocator<double>>"));
        QCOMPARE(QMetaType::fromName("std::vector<double>"), atom[u"pos"_s].metaType());

        // Documents stream these variants.
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << QVariant(map);
        QVariant streamed;
        QDataStream in(bytes);
        in >> streamed;
        QCOMPARE(streamed.toMap()[u"atoms"_s].toMap()[u"10"_s].toMap()[u"pos"_s].value<DoubleVector>(),
                 (DoubleVector{5.0, 1.0, -10 / 3.0}));
    }

    void moleculeDescription()
    {
        MagresData data = twelveAtoms();
        data.atoms[0].bonds.clear();
        data.atoms[1].type = "Ar";
        QVariantMap description = Magres::moleculeDescription(data);
        const QVariantList atoms = description[u"Atoms"_s].toList();
        QCOMPARE(atoms.size(), 12);
        QVERIFY(!atoms[0].toMap().contains(u"NB.Num"_s) && !atoms[0].toMap().contains(u"NB.Conn"_s));
        QCOMPARE(atoms[1].toMap()[u"El"_s].toInt(), -1);
        const QVariantMap third = atoms[2].toMap();
        QCOMPARE(third[u"El"_s].toInt(), 6);
        QCOMPARE(third[u"Z"_s].toDouble(), -2 / 3.0);
        QCOMPARE(third[u"NB.Num"_s].value<QList<int>>(), QList<int>{1});
        QCOMPARE(third[u"NB.Conn"_s].value<QList<int>>(), QList<int>{1});
        const QVariantMap crystal = description[u"CrystallographicData"_s].toMap();
        QCOMPARE(crystal[u"Lattice"_s].value<DoubleVector>(), (DoubleVector{1, 0, 0, 0, 2, 0, 0, 0, 3}));
        data.lattice.clear();
        QVERIFY(!Magres::moleculeDescription(data).contains(u"CrystallographicData"_s));
    }

    void parameterTableRows()
    {
        const QByteArray text = "[atoms]\natom Cu Cu 1 0 0 0\natom O OA 1 0 0 0\natom O OA 2 0 0 0\natom C C 1 0 0 0\n"
                                "[/atoms]\n[magres]\nms OA 2 10 0 0 0 20 0 0 0 60\nefg Cu 1 -1 0 0 0 -2 0 0 0 3\n"
                                "efg C 1 -1 0 0 0 -2 0 0 0 3\n[/magres]\n";
        MagresData data;
        data.fromMap(parsed(text).toMap());
        const Magres::ParameterTable table = Magres::parameterTable(data, TestNuclei());
        QVERIFY(table.hasShielding && table.hasEfg);
        QCOMPARE(table.rows.size(), 3);
        const QVariantMap copper = table.rows[0].toMap();
        QCOMPARE(copper[u"qIso"_s].toString(), u"63Cu"_s);
        QVERIFY(std::abs(copper[u"Cq"_s].toDouble() - 3.0 * (-22.0 * 2.3489)) < 1e-9);
        QVERIFY(!copper.contains(u"iso"_s));
        const QVariantMap oxygen = table.rows[1].toMap();
        QCOMPARE(oxygen[u"atomNos"_s].toList(), (QVariantList{1, 2}));
        QCOMPARE(oxygen[u"iso"_s].toDouble(), 30.0);
        QVERIFY(!oxygen.contains(u"Cq"_s));
        const QVariantMap carbon = table.rows[2].toMap();
        QCOMPARE(carbon[u"Cq"_s].toDouble(), 0.0);
        QCOMPARE(carbon[u"qIso"_s].toString(), QString());
        QCOMPARE(data.QIso.value(u"Cu"_s).toString(), u"63Cu"_s);

        data.QIso.insert(u"Cu"_s, u"65Cu"_s);
        const QVariantMap changed = Magres::parameterTable(data, TestNuclei()).rows[0].toMap();
        QVERIFY(std::abs(changed[u"Cq"_s].toDouble() - 3.0 * (-20.4 * 2.3489)) < 1e-9);
    }
};

QTEST_GUILESS_MAIN(tst_Reading)
#include "tst_reading.moc"
