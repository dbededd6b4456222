// SPDX-License-Identifier: BSD-3-Clause
#include "formats/MagresCheck.h"

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

const QByteArray head = "#$magres-abinitio-v1.0\n";
const QByteArray tensor = " 30 0 0 0 31 0 0 0 32\n";

QByteArray atom(const QByteArray &label, int index, const QByteArray &species = {})
{
    const QByteArray element = species.isEmpty() ? label.left(1) : species;
    return "atom " + element + ' ' + label + ' ' + QByteArray::number(index) + " 0 0 " + QByteArray::number(index)
        + '\n';
}

QByteArray atomsBlock(const QByteArray &atoms)
{
    return "[atoms]\nunits lattice Angstrom\nunits atom Angstrom\nlattice 9 0 0 0 9 0 0 0 9\n" + atoms + "[/atoms]\n";
}

QByteArray magresBlock(const QByteArray &records)
{
    return "[magres]\nunits ms ppm\nunits efg au\n" + records + "[/magres]\n";
}

/// As every program writes it.
QByteArray usual()
{
    return head + atomsBlock(atom("H", 1) + atom("C", 100))
        + magresBlock("ms H 1" + tensor + "ms C 100" + tensor + "efg H 1" + tensor + "efg C 100" + tensor
                      + "isc H 1 C 100" + tensor);
}

} // namespace

class TestMagresCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Repaired to nothing: left alone.
    void repairs()
    {
        const auto row = [](const char *name, const QByteArray &text, const QByteArray &repaired) {
            const MagresCheck::Findings findings = MagresCheck::examine(text);
            QVERIFY2(findings.repaired == repaired, name + findings.repaired);
            const QString told = findings.warnings.join(u' ');
            QVERIFY2(told.contains(u"taken apart") == (!repaired.isEmpty() && text.contains('\n')), name);
            if (qstrcmp(name, "both kinds") == 0)
                QCOMPARE(
                    told,
                    u"Label and index stand together in 2 records (the first one: C100 in line 13); they were taken apart, each in the only way that names an atom of the file."_s);
            QVERIFY2(repaired.isEmpty() || MagresCheck::examine(repaired).repaired.isEmpty(), name);
        };
        QByteArray fused = usual();
        fused.replace("ms C 100", "ms C100").replace("efg C 100", "efg C100");
        row("nothing to repair", usual(), {});
        row("both kinds", fused, usual());
        row("Windows", QByteArray(fused).replace("\n", "\r\n"), usual().replace("\n", "\r\n"));
        row("angle brackets and tabs", QByteArray(fused).replace("[", "<").replace("]", ">").replace(" ", "\t"),
            usual()
                .replace("[", "<")
                .replace("]", ">")
                .replace(" ", "\t")
                .replace("ms\tC\t", "ms\tC ")
                .replace("efg\tC\t", "efg\tC "));
        row("lines of old Macs", usual().replace('\n', '\r'), usual());
        row("the atoms last", head + magresBlock("ms C100" + tensor) + atomsBlock(atom("C", 100)),
            head + magresBlock("ms C 100" + tensor) + atomsBlock(atom("C", 100)));

        const auto one = [&](const QByteArray &name, const QByteArray &atoms) {
            return head + atomsBlock(atoms) + magresBlock("ms " + name + tensor);
        };
        row("a label with a digit", one("H1100", atom("H1", 100) + atom("H", 1)),
            one("H1 100", atom("H1", 100) + atom("H", 1)));
        row("two ways to take it apart", one("H1100", atom("H1", 100) + atom("H", 1100)), {});
        row("no such atom", one("H101", atom("H", 100)), {});
        row("one of two is not certain",
            head + atomsBlock(atom("H", 100) + atom("H", 101)) + magresBlock("ms H100" + tensor + "ms H102" + tensor),
            {});
        row("an index does not begin with 0", one("H100", atom("H1", 0)), {});
        row("another fault", one("H100 x", atom("H", 100)), {});
        row("records of a block that nobody reads",
            head + atomsBlock(atom("H", 100)) + "[other]\nms H100" + tensor + "[/other]\n", {});
    }

    /// All there are.
    void warnings()
    {
        const auto row = [](const char *name, const QByteArray &text, const QStringList &warnings) {
            const QStringList found = MagresCheck::examine(text).warnings;
            QVERIFY2(found == warnings, name + found.join(u'\n').toUtf8());
        };
        const QByteArray atoms = atomsBlock(atom("H", 1) + atom("C", 1)),
                         tensors = magresBlock("ms H 1" + tensor + "ms C 1" + tensor);
        row("none", usual(), {});
        row("angle brackets, a closing mark of the other kind",
            head + QByteArray(atoms).replace("[atoms]", "<atoms>") + tensors, {});
        row("no atoms", head + magresBlock({}),
            {u"There is no block [atoms]."_s,
             u"There is neither a shielding (ms) nor an electric-field gradient (efg)."_s});
        row("no tensors", head + atoms, {u"There is no block [magres]."_s});
        row("cut off", head + atoms + QByteArray(tensors).replace("[/magres]\n", ""),
            {u"The block [magres] that begins in line 9 is not closed: the file may have been cut off."_s});
        row("swallowed", head + QByteArray(atoms).replace("[/atoms]\n", "") + tensors,
            {u"The block [atoms] that begins in line 2 is not closed where [magres] begins in line 8, which was therefore read as a part of it."_s});
        row("twice", head + atoms + atoms + tensors,
            {u"There are 2 blocks [atoms]: the atoms of all of them were read as one structure."_s,
             u"Atoms with the label and index of another one: 2 (the first one H 1). Their tensors cannot be told apart."_s});
        row("suffix", head + atomsBlock(atom("H", 1, "H:1") + atom("C", 1)) + tensors,
            {u"A species with a suffix is no element (H:1, atoms: 1): it has no isotopes and is missing in spectra."_s});
        row("orphans",
            head + atoms + magresBlock("ms H 1" + tensor + "ms C 1" + tensor + "ms C 2" + tensor + "efg N 1" + tensor),
            {u"Tensors that belong to no atom of the file: 2 (the first one ms C 2)."_s,
             u"Atoms without efg: 2 of 2 (the first one H 1)."_s});
        row("without", head + atoms + magresBlock("ms H 1" + tensor),
            {u"Atoms without ms: 1 of 2 (the first one C 1)."_s});
        row("no units", QByteArray(head + atoms + tensors).replace("units", "#nits"),
            {u"Units that were not checked: lattice has none, taken as Angstrom, atom has none, taken as Angstrom, ms has none, taken as ppm."_s});
        row("other units", QByteArray(head + atoms + tensors).replace("lattice Angstrom", "lattice Bohr"),
            {u"Units that were not checked: lattice in Bohr, taken as Angstrom."_s});
        row("units that come second",
            QByteArray(head + atoms + tensors).replace("units ms ppm", "units ms ppm\nunits ms au"),
            {u"Units that were not checked: ms in au, taken as ppm."_s});
    }

    void firstLine()
    {
        QVERIFY(MagresCheck::isMagres(usual()));
        const QByteArray rest = usual().mid(head.size());
        for (const auto &[text, why] :
             {std::pair(rest, "this one with \"[atoms]\": if the line was lost"),
              std::pair(QByteArray("\xEF\xBB\xBF") + usual(), "byte order mark"),
              std::pair(QByteArray("\xFF\xFE#\0$\0", 6), "byte order mark"),
              std::pair(QByteArray("\n ") + usual(), "empty lines stand before it"),
              std::pair(QByteArray("H    1 Coordinates      0.1 0.2 0.3   A\n"), "older version"),
              std::pair(QByteArray(), "this one with \"\"")}) {
            QVERIFY(!MagresCheck::isMagres(text));
            const QString told = MagresCheck::whyNotMagres(text);
            QVERIFY2(told.startsWith(u"a MAGRES file begins with") && told.contains(QLatin1String(why)),
                     qPrintable(told));
        }
    }
};

QTEST_GUILESS_MAIN(TestMagresCheck)
#include "tst_magrescheck.moc"
