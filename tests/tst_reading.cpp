// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "TestData.h"
#include "TestNuclei.h"
#include "parameters/MapConversion.h"
#include "reading/MagresParser.h"
#include "reading/MoleculeDescription.h"
#include "reading/ParameterTable.h"

#include <QtTest>

#include <cmath>

using namespace Magres;
using namespace Qt::StringLiterals;

static MagresData parsed(QByteArrayView text)
{
    MagresData data;
    Magres::parseMagres(text, data);
    return data;
}

static QString parseError(QByteArrayView text)
{
    return QString::fromUtf8(failure([&] { parsed(text); }));
}

/// Species, label, number, position in the file and place of each atom, then label, number and elements of each tensor.
static QString described(const MagresData &data)
{
    QStringList lines;
    for (const MagresAtom &atom : data.atoms)
        lines.append(u"%1 %2 %3 %4: %5 %6 %7"_s.arg(QLatin1String(atom.type), QLatin1String(atom.labels.join(',')))
                         .arg(atom.No)
                         .arg(atom.recordNo)
                         .arg(atom.pos[0])
                         .arg(atom.pos[1])
                         .arg(atom.pos[2]));
    for (const MagresTensor &tensor : data.shieldings + data.EFG) {
        lines.append(u"%1 %2:"_s.arg(QLatin1String(tensor.labels.join(','))).arg(tensor.No));
        for (double element : tensor.tensor)
            lines.last() += u' ' + QString::number(element);
    }
    return lines.join(u'|');
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
        MagresAtom &atom = addAtom(data, "C", i + 1);
        atom.pos = {0.5 * i, 1.25, -i / 3.0};
        atom.bonds = {i == 0 ? 1 : i - 1};
        data.shieldings.append({atom.labels, atom.No, {1.0 + i, 0.5, 0, 0.5, 3, 0, 0, 0, 7}});
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
    void recognisesByTheFirstBytes()
    {
        for (const auto &[content, expected] :
             {std::pair("#$magres-abinitio-v1.0\n", true), std::pair("#$magres-abinitio", true),
              std::pair("#$magres-abiniti", false), std::pair("#$MAGRES-abinitio", false),
              std::pair(" #$magres-abinitio", false), std::pair("\xEF\xBB\xBF#$magres-abinitio", false),
              std::pair("", false)}) {
            QTemporaryFile file;
            QVERIFY(file.open() && file.write(content) >= 0 && file.flush());
            QVERIFY2(Magres::isMagresFile(file.fileName()) == expected, content);
        }
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
        // The second block numbers all labels once more.
        QCOMPARE(described(data),
                 u"C C11 1 0: 0.1 0.2 0.3|H H11 1 1: 1 0 0|O O1 1 2: 5 5 5|C1 1: 1 2 3 4 5 6 7 8 9|"
                 "H1 1: -0.1 0 0 0 -0.2 0 0 0 0.3"_s);
    }

    void lineEndsAndCommentsDoNotMatter()
    {
        const QByteArray text = "[atoms]\natom C C 1 1 2 3\n[/atoms]\n[magres]\nms C 1 1 0 0 0 2 0 0 0 3\n[/magres]\n";
        for (const QByteArray &variant :
             {QByteArray(text).replace("\n", "\r\n"), text.trimmed(),
              QByteArray(text).replace("\n", " \t\n  ").replace(" ", " \v\t "),
              QByteArray(text).replace("\n", " # atom H H 1 0 0 0\n"),
              QByteArray(text).replace("\n", "\xC2\xA0\n\xC2\xA0"), QByteArray(text).replace("\n", "\xC2\xA0\n"),
              QByteArray(text).replace("\n", "\f\n\xC2\xA0"), QByteArray(20'000'000, 'x') + "\n" + text})
            QCOMPARE(described(parsed(variant)), u"C C1 1 0: 1 2 3|C1 1: 1 0 0 0 2 0 0 0 3"_s);
    }

    void numbers()
    {
        const auto text = [](const QByteArray &token) { return "[atoms]\natom C C 1 " + token + " 0 0\n"; };
        for (const auto &[token, value] :
             {std::pair("-1.25E+02", -125.0), std::pair("+1.5", 1.5), std::pair("-.5", -0.5),
              std::pair("0.1000000000000000055511151231257827", 0.1),
              std::pair("inf", std::numeric_limits<double>::infinity())})
            QCOMPARE(parsed(text(token)).atoms[0].pos[0], value);
        for (const auto &[number, value] :
             {std::pair("+7", 7), std::pair("-12", -12), std::pair("007", 7), std::pair("+07", 7), std::pair("+9", 9),
              std::pair("-2147483648", std::numeric_limits<int>::min())})
            QCOMPARE(parsed(QByteArray("[atoms]\natom C C ") + number + " 0 0 0\n").atoms[0].No, value);
        for (const char *number : {"+", "-", "++7", "+-7", "7.", "0x7", "1e2", "-2147483649"})
            QVERIFY2(parseError(QByteArray("[atoms]\natom C C ") + number + " 0 0 0\n").startsWith(u"Atom number"_s),
                     number);
        for (const char *token : {"12.3abc", "1,5", "0x10", "1e400", "-"})
            QCOMPARE(parseError(text(token)),
                     u"Atom x-coordinate in line atom C C 1 %1 0 0 cannot be parsed"_s.arg(QLatin1String(token)));
    }

    void labels()
    {
        const QByteArray ms = "[magres]\nms H 01 1 0 0 0 2 0 0 0 3\n[/magres]\n";
        for (const auto &[text, expected] :
             {std::pair("[atoms]\natom H H 1 0 0 0\n[/atoms]\n" + ms, u"H H1 1 0: 0 0 0|H01 1: 1 0 0 0 2 0 0 0 3"_s),
              std::pair("[atoms]\natom H H 1 0 0 0\natom H H_a 1 0 0 0\n[/atoms]\n" + ms,
                        u"H H 1 0: 0 0 0|H H_a 1 1: 0 0 0|H 1: 1 0 0 0 2 0 0 0 3"_s),
              std::pair(ms + "[atoms]\natom H H_a 1 0 0 0\n[/atoms]\n", u"H H_a 1 0: 0 0 0|H01 1: 1 0 0 0 2 0 0 0 3"_s),
              std::pair("[atoms]\natom H H\xC3\xA9 1 0 0 0\n[/atoms]\n" + ms,
                        u"H H\u00E9 1 0: 0 0 0|H 1: 1 0 0 0 2 0 0 0 3"_s)})
            QCOMPARE(described(parsed(text)), expected);
    }

    /// %1 stands for the line.
    void badRecordsAreQuoted()
    {
        const auto row = [](const QByteArray &block, const char *record, const QByteArray &message) {
            // What a comment leaves behind is not trimmed again.
            const QByteArray line = QByteArray(record) + '\t';
            QCOMPARE(parseError("[" + block + "]\n  " + line + "# a comment\n[/" + block + "]\n"),
                     QString::fromLatin1(message).replace(u"%1"_s, QString::fromLatin1(line)));
        };
        for (const auto &[record, what] :
             {std::pair("units atom", "Units record"), std::pair("units", "Units record"),
              std::pair("lattice", "Lattice record"), std::pair("atom", "Atom record"),
              std::pair("lattice 1 0 0 0 1 0 0 0", "Lattice record"), std::pair("atom H H 1 0.0 0.0", "Atom record"),
              std::pair("atom H H 1.0 x y z", "Atom number"), std::pair("atom H H 3000000000 0 0 0", "Atom number"),
              std::pair("atom H H 1 x y z", "Atom x-coordinate"), std::pair("atom H H 1 0 y z", "Atom y-coordinate"),
              std::pair("atom H H 1 0 0 1z", "Atom z-coordinate")})
            row("atoms", record, QByteArray(what) + " in line %1 cannot be parsed");
        for (const auto &[record, what] :
             {std::pair("unitsfoo ppm", "Units record"), std::pair("ms", "Ms record"),
              std::pair("units atom Angstrom 1", "Units record"), std::pair("ms H 1 1 2 3 4 5 6 7 8", "Ms record"),
              std::pair("ms H 1 1 2 3 4 5 6 7 8 9 10 11 12", "Ms record"), std::pair("efg H 1", "EFG record"),
              std::pair("efg H one 1 2 3 4 5 6 7 8 9", "Number"),
              std::pair("ms H 1 1 2 3 4 five 6 7 8 9", "Tensor element")})
            row("magres", record, QByteArray(what) + " in line %1 cannot be parsed");
        row("atoms", "units atom nm", "Only Angstroms are supported as atom units but %1 is found");
        row("magres", "units ms Hz", "Only ppm are supported for shielding but %1 is found");
        row("atoms", "lattice 1 0 0 0 1 0 0 0 x", "Lattice coordinate #1 in line 9 cannot be parsed");
    }

    void commentsStartAtTheLastMark()
    {
        QCOMPARE(parseError("[atoms]\natom H H 1 0 0 0 # 1 # 2\n"),
                 u"Atom record in line atom H H 1 0 0 0 # 1  cannot be parsed"_s);
        QCOMPARE(parsed("[atoms]\natom H #1 1 0 0 0 # 2\n").atoms[0].labels, QByteArrayList{"#1"});
    }

    /// As in text mode: every carriage return is dropped, wherever it stands.
    void carriageReturns()
    {
        QTemporaryFile file;
        QVERIFY(file.open() && file.write("\r#$mag\r\rres-abinit\rio\r\n") > 0 && file.flush());
        QVERIFY(Magres::isMagresFile(file.fileName()));
        QCOMPARE(described(parsed("[at\roms]\r\natom C\r C 1\r2 1 2 3\r\r\n")), u"C C12 12 0: 1 2 3"_s);
    }

    void speciesOfAnotherEncoding()
    {
        // The Latin-1 bytes of the first are the UTF-8 bytes of the second.
        QCOMPARE(described(parsed("[atoms]\natom \xC3\x83\xC2\xA9 x 1 0 0 0\natom \xC3\xA9 x 1 0 0 0\n")),
                 u"\u00C3\u00A9 x 1 0: 0 0 0|\u00E9 x 1 1: 0 0 0"_s);
        // A label that is the species of the next atom, or the word that begins the line.
        QCOMPARE(described(parsed("[atoms]\natom H C 1 0 0 0\natom C atom 1 0 0 0\n")),
                 u"H C 1 0: 0 0 0|C atom 1 1: 0 0 0"_s);
    }

    void unitsAreCheckedUntilAccepted()
    {
        for (const char *text : {"[atoms]\nunits lattice Bohr\n", "[atoms]\nunits atom Angstrom\nunits atom Bohr\n",
                                 "[magres]\nunits ms ppm\nunits ms Hz\n", "[atoms]\nunits atom Angstrom\nunits\n"})
            QCOMPARE(parseError(text), QString());
        for (const char *text : {"[magres]\nunits efg au\nunits ms Hz\n",
                                 "[atoms]\nunits atom Angstrom\n[/atoms]\n[magres]\nunits ms Hz\n"})
            QVERIFY2(!parseError(text).isEmpty(), text);
    }

    void marksOfBlocks()
    {
        const QByteArray atom = "\natom C C 1 0 0 0\n";
        for (const auto &[mark, opens] :
             {std::pair("[atoms]", true), std::pair("<atoms>", true), std::pair("[atoms] of a cell", true),
              std::pair("[atoms>", false), std::pair("<atoms]", false), std::pair("[atoms", false),
              std::pair("(atoms]", false), std::pair("[atomsx]", false), std::pair("[ atoms]", false),
              std::pair("[/atoms]", false), std::pair("[other]", false), std::pair("[Atoms]", false)})
            QVERIFY2(parsed(mark + atom).atoms.size() == (opens ? 1 : 0), mark);
        for (const auto &[mark, closes] :
             {std::pair("[/atoms]", true), std::pair("</atoms> and so on", true), std::pair("[/atoms>", false),
              std::pair("[/atoms", false), std::pair("[atoms]", false), std::pair("[xatoms]", false),
              std::pair("[/other]", false), std::pair("[/]", false), std::pair("[]", false)})
            QVERIFY2(parsed("[atoms]" + atom + mark + atom).atoms.size() == (closes ? 1 : 2), mark);
    }

    void oneAtomsBlockIsUsual()
    {
        QCOMPARE(parseError(QByteArray("[atoms]\natom C C 1 0 0 0\n[/atoms]\n").repeated(20)), QString());
        QCOMPARE(parseError(QByteArray("[atoms]\n").repeated(3) + QByteArray("[/atoms]\n[atoms]\n").repeated(20)),
                 u"The file has more than 20 atoms blocks"_s);
        // Fewer where there are many atoms.
        const QByteArray many = "[atoms]\n" + QByteArray("atom C C 1 0 0 0\n").repeated(2600) + "[/atoms]\n";
        QCOMPARE(parseError(many + QByteArray("[atoms]\n[/atoms]\n").repeated(2)), QString());
        QCOMPARE(parseError(many + QByteArray("[atoms]\n[/atoms]\n").repeated(3)),
                 u"The file has more than 3 atoms blocks"_s);
        // Many are 5000, those of each block once more with each that follows: 1666, 1666 and a few more.
        for (int last : {2, 3}) {
            const QByteArray more = QByteArray("atom C C 1 0 0 0\n").repeated(1666)
                + "[/atoms]\n[atoms]\n[/atoms]\n[atoms]\n" + QByteArray("atom C C 1 0 0 0\n").repeated(last)
                + "[/atoms]\n[atoms]\n";
            QCOMPARE(parseError("[atoms]\n" + more).isEmpty(), last == 2);
        }
    }

    void filesThatCannotBeOpened()
    {
        QTemporaryDir dir;
        for (const QString &name : {dir.filePath(u"missing.magres"_s), dir.path()}) {
            QVERIFY(!Magres::isMagresFile(name));
            MagresData data;
            QCOMPARE(failure([&] { Magres::readMagresFile(name, data); }),
                     "File " + name.toUtf8() + " cannot be opened");
        }
    }

    void mapFormComesBackInKeyOrder()
    {
        const MagresData data = twelveAtoms();
        MagresData back;
        back.fromMap(data.toMap());
        const QList<int> order{0, 1, 10, 11, 2, 3, 4, 5, 6, 7, 8, 9};
        QCOMPARE(back.atoms.size(), order.size());
        for (qsizetype i = 0; i < order.size(); ++i) {
            QCOMPARE(back.atoms[i].toMap(), data.atoms[order[i]].toMap());
            QCOMPARE(back.shieldings[i].principalValues, data.shieldings[order[i]].principalValues);
        }
        QCOMPARE(Magres::atomsInFileOrder(back)[2]->recordNo, 2);
        back.atoms[4].recordNo = 1; // twice: as the list has them
        QCOMPARE(Magres::atomsInFileOrder(back)[2]->No, 3);

        MagresAtom atom;
        atom.fromMap({{u"pos"_s, QVariant::fromValue(DoubleVector{1, 2})}});
        QCOMPARE(atom.pos, (Position{0, 0, 0}));
        MagresData empty;
        empty.fromMap({{u"atoms"_s, 5}, {u"lattice"_s, u"no list"_s}});
        QVERIFY(empty.ID.isNull() && empty.atoms.isEmpty() && empty.lattice.isEmpty() && !empty.numberToLabel);
    }

    /// Every key and value of the map form, as documents have kept it.
    void mapFormIsThatOfDocuments()
    {
        registerSharedMetaTypes();
        MagresData data = twelveAtoms();
        data.atoms = {data.atoms[2]};
        data.shieldings = {data.shieldings[2]};
        data.EFG = {{{"X1", "X2"}, 7, {9, 8, 7, 6, 5, 4, 3, 2, 1}}};
        const auto numbers = [](const DoubleVector &values) { return QVariant::fromValue(values); };
        const auto tensors = [&](const QStringList &labels, int number, const DoubleVector &tensor) {
            return QVariantMap{
                {u"0"_s, QVariantMap{{u"labels"_s, labels}, {u"No"_s, number}, {u"tensor"_s, numbers(tensor)}}}};
        };
        const QVariantMap atom{{u"type"_s, QByteArray("C")},
                               {u"labels"_s, QStringList{u"C3"_s}},
                               {u"No"_s, 3},
                               {u"recordNo"_s, 2},
                               {u"pos"_s, numbers({1.0, 1.25, -2 / 3.0})},
                               {u"bonds"_s, QVariant::fromValue(QList<int>{1})}};
        const QVariantMap kept{{u"ID"_s, data.ID},
                               {u"molItemID"_s, data.molItemID},
                               {u"lattice"_s, QVariant::fromValue(QList<double>{1, 0, 0, 0, 2, 0, 0, 0, 3})},
                               {u"numberToLabel"_s, false},
                               {u"QIso"_s, QVariantMap{{u"Cu"_s, u"65Cu"_s}}},
                               {u"atoms"_s, QVariantMap{{u"0"_s, atom}}},
                               {u"shieldings"_s, tensors({u"C3"_s}, 3, {3, 0.5, 0, 0.5, 3, 0, 0, 0, 7})},
                               {u"EFG"_s, tensors({u"X1"_s, u"X2"_s}, 7, {9, 8, 7, 6, 5, 4, 3, 2, 1})}};
        QCOMPARE(data.toMap(), kept);
        // Documents stream these variants, with the names of their types.
        const auto streamed = [](const QVariantMap &map) {
            QByteArray bytes;
            QDataStream out(&bytes, QIODevice::WriteOnly);
            out << QVariant(map);
            return bytes;
        };
        QCOMPARE(streamed(data.toMap()), streamed(kept));
        QVERIFY(streamed(kept).contains("std::vector<double,std::allocator<double>>"));
        QCOMPARE(QMetaType::fromName("std::vector<double>"), QMetaType::fromType<DoubleVector>());
        QVariant read;
        QDataStream in(streamed(kept));
        in >> read;
        MagresData back;
        back.fromMap(read.toMap());
        QCOMPARE(back.toMap(), kept);
    }

    void settings()
    {
        QTemporaryDir dir;
        QSettings file(dir.filePath(u"settings.ini"_s), QSettings::IniFormat);
        MagresData none, other;
        none.saveSettings(file);
        QVERIFY(file.allKeys().isEmpty());
        twelveAtoms().saveSettings(file);
        QCOMPARE(file.allKeys(), QStringList{u"magresPlugin/QIso"_s});
        none.saveSettings(file); // nothing chosen: what was, stays
        other.loadSettings(file);
        QCOMPARE(other.QIso, twelveAtoms().QIso);
    }

    void moleculeDescription()
    {
        MagresData data = twelveAtoms();
        data.atoms[0].bonds.clear();
        data.atoms[1].type = "Ar";
        const QVariantMap description = Magres::moleculeDescription(data);
        const QVariantList atoms = description[u"Atoms"_s].toList();
        QCOMPARE(atoms.size(), 12);
        QVERIFY(!atoms[0].toMap().contains(u"NB.Num"_s) && !atoms[0].toMap().contains(u"NB.Conn"_s));
        QCOMPARE(atoms[1].toMap()[u"El"_s].toInt(), -1);
        const QVariant one = QVariant::fromValue(QList<int>{1});
        const QVariantMap third = atoms[2].toMap();
        QCOMPARE(QStringList(third.keys()).join(u' '), u"El NB.Conn NB.Num X Y Z nH"_s);
        QCOMPARE(third.values(), (QVariantList{6, one, one, 1.0, 1.25, -2 / 3.0, 0}));
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
        // All but the identities.
        QStringList values;
        for (const QVariant &entry : table.rows) {
            const QVariantMap row = entry.toMap();
            for (auto it = row.begin(); it != row.end(); ++it)
                if (it.key() != u"ID")
                    values.append(it.key() + u'='
                                  + (it->typeId() == QMetaType::Double ? QString::number(it->toDouble(), 'f', 9)
                                                                       : it->toStringList().join(u'+')));
        }
        QCOMPARE(values.join(u' '),
                 u"Cq=-155.027400000 atomNos=0 eq=3.000000000 labels=Cu qIso=63Cu qassym=0.333333333 type=Cu "
                 "aniso=45.000000000 assym=0.333333333 atomNos=1+2 iso=30.000000000 labels=OA type=O "
                 "Cq=0.000000000 atomNos=3 eq=3.000000000 labels=C qIso= qassym=0.333333333 type=C"_s);
        QCOMPARE(data.QIso.value(u"Cu"_s).toString(), u"63Cu"_s);

        // Unlike oxygens that share a label: the row is that of the first atom, however often the data was stored.
        MagresData oxygens;
        for (int i = 12; i > 0; --i) {
            MagresAtom &atom = addAtom(oxygens, "O", i);
            atom.labels = {"O"};
            oxygens.shieldings.append({atom.labels, i, {3.0 * i, 0, 0, 0, 0, 0, 0, 0, 0}});
        }
        for (const auto &[without, shown] : {std::pair(0, 12.0), std::pair(12, 1.0)}) { // 12: the lowest stands in
            MagresData stored = oxygens;
            stored.shieldings.removeIf([&](const MagresTensor &tensor) { return tensor.No == without; });
            for (int times = 0; times < 3; ++times) {
                stored.fromMap(stored.toMap());
                QCOMPARE(Magres::parameterTable(stored, TestNuclei()).rows[0].toMap()[u"iso"_s].toDouble(), shown);
            }
        }

        data.QIso.insert(u"Cu"_s, u"65Cu"_s);
        const QVariantMap changed = Magres::parameterTable(data, TestNuclei()).rows[0].toMap();
        QVERIFY(std::abs(changed[u"Cq"_s].toDouble() - 3.0 * (-20.4 * 2.3489)) < 1e-9);
    }
};

QTEST_GUILESS_MAIN(tst_Reading)
#include "tst_reading.moc"
