// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "analysis/Contacts.h"
#include "analysis/Integration.h"
#include "items/ItemPicture.h"
#include "items/molecule/MoleculeItem.h"
#include "items/molecule/MoleculeView.h"
#include "items/plot/PlotOptions.h"
#include "items/table/TableItem.h"
#include "support/MetaTypes.h"

#include <QtTest>
#include <QtWidgets>

#include <cmath>
#include <random>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

QVariantMap row(const QString &label, double iso, std::optional<double> cq = {})
{
    QVariantMap map{{u"type"_s, QString(label).remove(QRegularExpression(u"\\d"_s))},
                    {u"labels"_s, QStringList{label}},
                    {u"iso"_s, iso}};
    if (cq)
        map.insert(u"Cq"_s, *cq);
    return map;
}

/// A plug-in's table of labels and shieldings.
class ShieldingTable : public QObject {
    Q_OBJECT

public:
    explicit ShieldingTable(const QVariantList &rows) : m_rows(rows) { }

    Q_INVOKABLE void tableItem_init(QGraphicsWidget *, QAbstractItemView *, QAbstractItemModel *) { }
    Q_INVOKABLE int tableModel_rowCount() { return int(m_rows.size()); }
    Q_INVOKABLE int tableModel_columnCount() { return 2; }
    Q_INVOKABLE QVariantList tableModel_rows() { return m_rows; }
    Q_INVOKABLE QVariantList tableModel_columns()
    {
        return {QVariantMap{{u"Type"_s, 1}}, QVariantMap{{u"Type"_s, 2}, {u"Digits"_s, 2}}};
    }
    Q_INVOKABLE QVariant tableModel_headerData(int section, Qt::Orientation, int role)
    {
        return role == Qt::DisplayRole ? QVariant(section == 0 ? u"Labels"_s : u"Iso, ppm"_s) : QVariant();
    }
    Q_INVOKABLE QVariant tableModel_data(QModelIndex index, int role)
    {
        const QVariantMap map = m_rows[index.row()].toMap();
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return index.column() == 0 ? map[u"labels"_s].toStringList().join(u',') : map[u"iso"_s];
    }

private:
    QVariantList m_rows;
};

const QVariantList rows{row(u"C1"_s, 100), row(u"C10"_s, -5.5), row(u"C2"_s, 50), row(u"O1"_s, 200, 7.25),
                        row(u"Ca3"_s, 1e3, -0.5)};

QStringList shownLabels(const TableItem &table)
{
    QStringList labels;
    for (const QString &line : table.selectionText().split(u'\n', Qt::SkipEmptyParts).mid(1))
        labels.append(line.section(u'\t', 0, 0));
    return labels;
}

/// Atoms in a cell whose origin is theirs.
Molecule crystal(const std::vector<std::pair<int, QVector3D>> &atoms, const std::array<QVector3D, 3> &edges)
{
    Molecule made;
    for (const auto &[element, position] : atoms)
        made.atoms.push_back({element, position, true});
    made.cell = {QVector3D(), edges[0], edges[1], edges[2]};
    return made;
}

const std::array<QVector3D, 3> cubic{QVector3D(4, 0, 0), QVector3D(0, 4, 0), QVector3D(0, 0, 4)};
const std::array<QVector3D, 3> skewed{QVector3D(5, 0, 0), QVector3D(1, 6, 0), QVector3D(0.5, -1, 7)};
const std::vector<std::pair<int, QVector3D>> caesiumChloride{{55, {0, 0, 0}}, {17, {2, 2, 2}}};

} // namespace

/// What views of a table, a crystal and a plot are made from.
class TestViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rowsAreFiltered_data()
    {
        QTest::addColumn<QStringList>("expected");
        const auto filter = [](const char *text, const QString &expected) {
            QTest::newRow(text) << expected.split(u' ', Qt::SkipEmptyParts);
        };
        filter("", u"C1 C10 C2 O1 Ca3"_s);
        filter("c", u"C1 C10 C2"_s); // the element, not calcium
        filter("C,O", u"C1 C10 C2 O1"_s);
        filter("c1", u"C1"_s);
        filter("C1*", u"C1 C10"_s);
        filter("C2..C10", u"C10 C2"_s); // C2 before C10
        filter("iso>50", u"C1 O1 Ca3"_s);
        filter("iso>=50 iso<200", u"C1 C2"_s);
        filter("C iso=-10..60", u"C10 C2"_s);
        filter("iso=60..-10", u"C10 C2"_s);
        filter("cq<10", u"O1 Ca3"_s); // not those without
        filter("cq<10,C2", u"C2 O1 Ca3"_s);
    }
    void rowsAreFiltered()
    {
        QFETCH(QStringList, expected);
        const RowFilter filter = RowFilter::parse(QString::fromLatin1(QTest::currentDataTag()));
        QStringList accepted;
        for (const QVariant &one : rows)
            if (filter.accepts(one.toMap()))
                accepted += one.toMap()[u"labels"_s].toStringList();
        QCOMPARE(accepted, expected);
    }

    void filtersThatAreNoneSayWhatIsWrong()
    {
        for (const auto &[text, message] : {std::pair(u"iso>x"_s, "\"x\" is no number"), std::pair(u"sigma>1"_s, "iso"),
                                            std::pair(u"C1.."_s, "two ends"), std::pair(u"iso=1..y"_s, "\"y\"")}) {
            const QByteArray error = failure([&, text = text] { RowFilter::parse(text); });
            QVERIFY2(error.contains(message), error);
        }
    }

    void tableIsSortedAndFilteredInView()
    {
        TableItem table(new ShieldingTable(rows));
        table.resize(400, 300);
        table.ensureFitted();
        QHeaderView *header = table.view()->horizontalHeader();
        const QList<int> widths{header->sectionSize(0), header->sectionSize(1)};
        header->setSortIndicator(0, Qt::AscendingOrder);
        QCOMPARE(shownLabels(table), u"C1 C2 C10 Ca3 O1"_s.split(u' '));
        QCOMPARE((QList<int>{header->sectionSize(0), header->sectionSize(1)}), widths);
        table.setFilter(u"C"_s);
        header->setSortIndicator(1, Qt::DescendingOrder);
        QCOMPARE(shownLabels(table), u"C1 C2 C10"_s.split(u' '));
        table.view()->selectAll();
        QCOMPARE(table.selectedRowMaps().size(), 3);
        table.setFilter(u"C iso>"_s); // while one types
        QCOMPARE(shownLabels(table).size(), 3);

        TableItem other(new ShieldingTable(rows));
        table.setFilter(u"iso>0"_s);
        other.setViewSettings(table.viewSettings());
        QCOMPARE(shownLabels(other), u"Ca3 O1 C1 C2"_s.split(u' '));
        // The first rows are drawn, although those that are first in the file are hidden.
        other.setFilter(u"O,Ca"_s);
        other.view()->resize(300, 200);
        const QImage drawn = other.view()->viewport()->grab().toImage();
        const QImage first = drawn.copy(2, 2, drawn.width() - 4, 16);
        bool written = false;
        for (int x = 0; x < first.width(); ++x)
            for (int y = 0; y < first.height(); ++y)
                written = written || qGray(first.pixel(x, y)) < 128;
        QVERIFY(written);
        QVERIFY(header->model()->headerData(1, Qt::Horizontal, Qt::ToolTipRole).toString().contains(u"/ 3"));
    }

    void crystalsArePacked_data()
    {
        QTest::addColumn<int>("contents");
        QTest::addColumn<QList<int>>("cells");
        QTest::addColumn<int>("caesium");
        QTest::addColumn<int>("chlorine");
        const int molecules = int(Packing::Contents::Molecules), cell = int(Packing::Contents::Cell);
        QTest::newRow("molecules") << molecules << QList<int>{1, 1, 1} << 1 << 1;
        QTest::newRow("molecules, supercell") << molecules << QList<int>{2, 1, 3} << 6 << 6;
        QTest::newRow("cell: every corner") << cell << QList<int>{1, 1, 1} << 8 << 1;
        QTest::newRow("cells") << cell << QList<int>{2, 1, 3} << 3 * 2 * 4 << 6;
    }
    void crystalsArePacked()
    {
        QFETCH(int, contents);
        QFETCH(QList<int>, cells);
        QFETCH(int, caesium);
        QFETCH(int, chlorine);
        const Packing packing{Packing::Contents(contents), {cells[0], cells[1], cells[2]}};
        const PackedMolecule packed = PackedMolecule::of(crystal(caesiumChloride, cubic), packing);
        const auto count = [&](int atom) {
            return std::count_if(packed.images.begin(), packed.images.end(),
                                 [&](const AtomImage &image) { return image.atom == atom; });
        };
        QCOMPARE(count(0), caesium);
        QCOMPARE(count(1), chlorine);
    }

    void atomsAreBroughtIntoASkewedCell()
    {
        const auto &[a, b, c] = skewed;
        const Molecule original =
            crystal({{6, a * 1.2f - b * 0.3f + c * 0.5f}, {7, a * 0.2f + b * 0.1f - c * 2.7f}}, skewed);
        const PackedMolecule packed = PackedMolecule::of(original, {Packing::Contents::Cell, {1, 1, 1}});
        QCOMPARE(packed.images, (std::vector<AtomImage>{{0, {-1, 1, 0}}, {1, {0, 0, 3}}}));
        const QVector3D expected = a * 0.2f + b * 0.7f + c * 0.5f;
        QVERIFY((packed.molecule.atoms[0].position - packed.shift - expected).length() < 1e-5f);
    }

    void bondsGoOnInTheNextCell()
    {
        Molecule chain = crystal({{14, {0.2f, 2, 2}}, {8, {1.5f, 2, 2}}}, {QVector3D(2.6f, 0, 0), cubic[1], cubic[2]});
        chain.bonds = {{0, 1}};
        const PackedMolecule packed = PackedMolecule::of(chain, {Packing::Contents::Molecules, {3, 1, 1}});
        QCOMPARE(packed.molecule.bonds.size(), size_t(5)); // three, and the two between the cells
        for (const auto &[i, j] : packed.molecule.bonds)
            QVERIFY(std::abs(
                        (packed.molecule.atoms[size_t(i)].position - packed.molecule.atoms[size_t(j)].position).length()
                        - 1.3f)
                    < 1e-4f);
    }

    void contactsAreNearestImages()
    {
        const auto nearest = nearestContacts(crystal(caesiumChloride, cubic), 0, 6, 12);
        QCOMPARE(nearest.size(), size_t(12));
        for (size_t i = 0; i < nearest.size(); ++i) {
            QCOMPARE(nearest[i].image.atom, i < 8 ? 1 : 0);
            QVERIFY(std::abs(nearest[i].distance - (i < 8 ? std::sqrt(12.0) : 4.0)) < 1e-5);
        }
        QCOMPARE(usualNucleus(u"N"_s), u"15N"_s);
        QCOMPARE(usualNucleus(u"H"_s), u"1H"_s);
        QCOMPARE(usualNucleus(u"O"_s), u"17O"_s);

        // Against all images in reach of many cells.
        std::mt19937 random(5);
        std::uniform_real_distribution<float> place(-20, 20);
        std::vector<std::pair<int, QVector3D>> atoms;
        for (int i = 0; i < 5; ++i)
            atoms.push_back({6, {place(random), place(random), place(random)}});
        const Molecule any = crystal(atoms, skewed);
        std::vector<double> expected;
        for (const auto &[element, position] : atoms)
            for (int t = 0; t < 41 * 41 * 41; ++t) {
                const QVector3D image = position + skewed[0] * float(t % 41 - 20) + skewed[1] * float(t / 41 % 41 - 20)
                    + skewed[2] * float(t / 1681 - 20);
                const double distance = double((image - atoms[2].second).length());
                if (distance > 1e-3 && distance <= 7)
                    expected.push_back(distance);
            }
        std::sort(expected.begin(), expected.end());
        const auto found = nearestContacts(any, 2, 7, 1000);
        QCOMPARE(found.size(), expected.size());
        for (size_t i = 0; i < found.size(); ++i)
            QVERIFY(std::abs(found[i].distance - expected[i]) < 1e-4);
    }

    /// Principal values 4, 2 and 1 along axes that lie 30 degrees from the screen's, and 1 towards the viewer.
    void ellipsoidsShowTheTensor()
    {
        Molecule molecule;
        molecule.atoms.push_back({6, {}, true});
        MoleculeView view;
        view.setMolecule(molecule);
        view.setArea({0, 0, 401, 401});
        view.setRotation({}, 1);
        const double angle = M_PI / 6, values[] = {4, 2};
        const float c = float(std::cos(angle)), s = float(std::sin(angle));
        view.setTensors({{{4, -2, 1}, {QVector3D(c, s, 0), QVector3D(-s, c, 0), QVector3D(0, 0, 1)}, true}}, 1);
        QImage image(401, 401, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        view.paint(&painter);
        painter.end();
        const QPoint centre = view.atomPosition(0).toPoint();
        const auto isDrawn = [&](double x, double y) {
            return image.pixelColor(centre + QPointF(x, -y).toPoint()) != Qt::white;
        };
        double reach = 0; // along the longest axis
        while (isDrawn((reach + 1) * std::cos(angle), (reach + 1) * std::sin(angle)))
            ++reach;
        QVERIFY(reach > 30);
        QRect box;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                box |= image.pixelColor(x, y) != Qt::white ? QRect(x, y, 1, 1) : QRect();
        }
        const double unit = reach / values[0];
        const double width = 2 * unit * std::hypot(values[0] * std::cos(angle), values[1] * std::sin(angle));
        const double height = 2 * unit * std::hypot(values[0] * std::sin(angle), values[1] * std::cos(angle));
        QVERIFY2(std::abs(box.width() - width) < 4 && std::abs(box.height() - height) < 4,
                 qPrintable(u"%1×%2, expected %3×%4"_s.arg(box.width()).arg(box.height()).arg(width).arg(height)));
        QVERIFY(!isDrawn(0.8 * reach * std::cos(angle), -0.8 * reach * std::sin(angle)));
    }

    void areas()
    {
        const std::vector<double> ramp{0, 1, 2, 3, 4, 5, 6, 7, 8};
        for (const auto &[from, to, expected] :
             {std::tuple(2.5, 7.25, 23.15625), std::tuple(7.25, 2.5, 23.15625), std::tuple(3.2, 3.7, 1.725),
              std::tuple(-5.0, 100.0, 32.0), std::tuple(9.0, 12.0, 0.0), std::tuple(std::nan(""), 1.0, 0.0)})
            QVERIFY(std::abs(integral(ramp, from, to) - expected) < 1e-12);
    }

    void settingsComeBack()
    {
        PlotOptions options;
        options.overlay = options.hertz = options.sharesRange = true;
        options.title = u"13C of form II"_s;
        const QUuid entry = QUuid::createUuid();
        options.traces[entry] = {2.5, -0.25, 4};
        options.integrals = {{entry, 7.5, 6.25}, {entry, 3, 2}};
        options.integralReference = 1;
        options.referenceValue = 3;
        options.distances = {{{1, 2}, {3, 4}}};
        QVERIFY(PlotOptions::fromMap(options.toMap()) == options);
        QVariantMap damaged = options.toMap();
        damaged[u"Distances"_s] = QVariantList{QVariant::fromValue(DoubleVector{1, std::nan(""), 3, 4}), u"x"_s};
        damaged[u"IntegralReference"_s] = 7;
        damaged[u"ReferenceValue"_s] = 0.0;
        const PlotOptions mended = PlotOptions::fromMap(damaged);
        QVERIFY(mended.distances.isEmpty() && mended.integralReference == 1 && mended.referenceValue == 1);

        QVariantList atoms;
        for (double x : {0.0, 1.5, 2.0})
            atoms.append(QVariantMap{{u"El"_s, 6}, {u"X"_s, x}, {u"Y"_s, x * x}, {u"Z"_s, 0.0}});
        QVariantMap description{
            {u"Atoms"_s, atoms},
            {u"CrystallographicData"_s,
             QVariantMap{{u"Lattice"_s, QVariant::fromValue(DoubleVector{5, 0, 0, 1, 6, 0, 0.5, -1, 7})}}}};
        MoleculeItem molecule(description);
        QVariantMap settings = molecule.viewSettings();
        settings[u"Cells"_s] = QVariant::fromValue(DoubleVector{2, 1, 3});
        settings[u"Contents"_s] = int(Packing::Contents::Cell);
        settings[u"Measurements"_s] = QVariantList{QVariant::fromValue(DoubleVector{0, 0, 0, 0, 1, 0, 0, 0}),
                                                   QVariant::fromValue(DoubleVector{0, 0, 0, 0, 9, 0, 0, 0})};
        molecule.setViewSettings(settings);
        QCOMPARE(molecule.packing(), (Packing{Packing::Contents::Cell, {2, 1, 3}}));
        QCOMPARE(molecule.measurements(), QStringList{u"C1\u2013C2  2.704 \u00c5"_s}); // not the one of atom 9
        QCOMPARE(molecule.viewSettings()[u"Measurements"_s].toList().size(), 1);
    }

    void picturesHaveTheItemsSize()
    {
        MoleculeItem molecule(
            {{u"Atoms"_s, QVariantList{QVariantMap{{u"El"_s, 6}, {u"X"_s, 0.0}, {u"Y"_s, 0.0}, {u"Z"_s, 0.0}}}}});
        molecule.resize(200, 150);
        for (const auto &[suffix, magic] :
             {std::pair(u"png"_s, "\x89PNG"), std::pair(u"SVG"_s, "<?xml"), std::pair(u"pdf"_s, "%PDF")}) {
            QBuffer file;
            file.open(QIODevice::ReadWrite);
            ItemPicture::write(molecule, suffix, file);
            QVERIFY(file.data().startsWith(magic));
            if (suffix == u"png") {
                const QImage image = QImage::fromData(file.data());
                QCOMPARE(image.size(), (molecule.contentRect().size() * 3).toSize());
                const QColor middle = image.pixelColor(image.width() / 2 + 20, image.height() / 2 + 20);
                QVERIFY(middle != QColor(Qt::white) && image.pixelColor(3, 3) == QColor(Qt::white));
            }
        }
        QVERIFY(failure([&] {
                    QBuffer file;
                    ItemPicture::write(molecule, u"doc"_s, file);
                }).contains(".svg"));
    }
};

QTEST_MAIN(TestViews)
#include "tst_views.moc"
