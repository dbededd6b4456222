// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "ItemData.h"
#include "Shapes.h"
#include "analysis/Integration.h"
#include "data/AtomSelection.h"
#include "data/JsonValues.h"
#include "items/ItemPicture.h"
#include "items/NumberBox.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/Contours.h"
#include "items/plot/Decimation.h"
#include "items/plot/LabelPlacement.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PeakLabelBand.h"
#include "items/plot/PlotContent.h"
#include "items/plot/PlotOptions.h"
#include "items/plot/SharedLabel.h"
#include "items/plot/StackedTraces.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"
#include "support/MetaTypes.h"

#include <numeric>
#include <set>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

QVariant numbers(const DoubleVector &values)
{
    return QVariant::fromValue(values);
}

QVariantMap row(const QString &label, double iso, std::optional<double> cq = {})
{
    QVariantMap map{{u"type"_s, QString(label).remove(QRegularExpression(u"\\d"_s))},
                    {u"labels"_s, QStringList{label}},
                    {u"iso"_s, iso}};
    if (cq)
        map.insert(u"Cq"_s, *cq);
    return map;
}

/// A plug-in's table: of labels and shieldings, or of columns and cells as they are given.
class StubTable : public QObject {
    Q_OBJECT

public:
    explicit StubTable(const QVariantList &rows, const QUuid &data = {}) : m_rows(rows), m_data(data) { }
    StubTable(const QVariantList &columns, const QList<QStringList> &own) : cells(own), m_columns(columns) { }

    QList<QStringList> cells;
    QList<QVariantMap> messages;

    Q_INVOKABLE QList<QUuid> tableItem_sharedDataIds() { return {m_data}; }
    Q_INVOKABLE void tableItem_init(QGraphicsWidget *item, QAbstractItemView *, QAbstractItemModel *) { m_item = item; }
    Q_INVOKABLE void tableItem_onLMessage(QVariantMap message)
    {
        messages.append(message);
        // As a plug-in does whose selection follows: it reports whole rows.
        QMetaObject::invokeMethod(m_item, "sendMessage", Q_ARG(QVariant, AtomSelection::toMessage({0, 1})));
    }
    Q_INVOKABLE int tableModel_rowCount() { return int(m_rows.size() + cells.size()); }
    Q_INVOKABLE int tableModel_columnCount() { return int(m_columns.size()); }
    Q_INVOKABLE QVariantList tableModel_rows() { return m_rows; }
    Q_INVOKABLE QVariantList tableModel_columns() { return m_columns; }
    Q_INVOKABLE QVariant tableModel_headerData(int section, Qt::Orientation, int role)
    {
        return role == Qt::DisplayRole ? QVariant(section == 0 ? u"Labels"_s : u"Iso, ppm"_s) : QVariant();
    }
    Q_INVOKABLE QVariant tableModel_data(QModelIndex index, int role)
    {
        if (!cells.isEmpty())
            return role == Qt::DisplayRole ? cells[index.row()][index.column()] : QVariant();
        const QVariantMap map = m_rows[index.row()].toMap();
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return index.column() == 0 ? map[u"labels"_s].toStringList().join(u',') : map[u"iso"_s];
    }

private:
    QVariantList m_rows, m_columns{QVariantMap{{u"Type"_s, 1}}, QVariantMap{{u"Type"_s, 2}, {u"Digits"_s, 2}}};
    QGraphicsWidget *m_item = nullptr;
    QUuid m_data;
};

const QVariantList rows{row(u"C1"_s, 100), row(u"C10"_s, -5.5), row(u"C2"_s, 50), row(u"O1"_s, 200, 7.25),
                        row(u"Ca3"_s, 1e3, -0.5)};

/// JSON with apostrophes.
QString text(const QVariantMap &settings)
{
    return QString::fromUtf8(QJsonDocument(toJson(settings).toObject()).toJson(QJsonDocument::Compact))
        .replace(u'"', u'\'');
}

/// The entries in sight, menus with theirs in brackets: "+" is on, "-" off, "!" grey.
QString entries(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (!action->isVisible() || action->isSeparator())
            continue;
        const QString sign = !action->isCheckable() ? QString() : action->isChecked() ? u"+"_s : u"-"_s;
        const QString inside = action->menu() ? u" (%1)"_s.arg(entries(action->menu())) : QString();
        texts.append((action->isEnabled() ? QString() : u"!"_s) + sign + action->text().replace(u'\t', u'|') + inside);
    }
    return texts.join(u", "_s);
}

/// The entry of that text, also of a menu in it: "Crystal/Molecules".
void choose(const QMenu *menu, const QString &path)
{
    for (QAction *action : menu->actions()) {
        if (action->text().section(u'\t', 0, 0) != path.section(u'/', 0, 0))
            continue;
        return action->menu() ? choose(action->menu(), path.section(u'/', 1)) : action->trigger();
    }
    QFAIL(qPrintable(path));
}

/// Formaldehyde-like: carbon, oxygen and nitrogen in a skewed cell, not symmetric in any way.
QVariantMap description(bool inCell = true)
{
    const QVariantList atoms{atom(6, 0, 0, 0), atom(8, 1.2, 0.25, -0.5), atom(7, -0.5, 1.5, 1)};
    QVariantMap made{{u"Atoms"_s, atoms}};
    if (inCell)
        made[u"CrystallographicData"_s] = QVariantMap{{u"Lattice"_s, numbers({4, 0, 0, 1, 5, 0, 0.5, -1, 6})}};
    return made;
}

QStringList shownLabels(const TableItem &table)
{
    QStringList labels;
    for (const QString &line : table.selectionText().split(u'\n', Qt::SkipEmptyParts).mid(1))
        labels.append(line.section(u'\t', 0, 0));
    return labels;
}

} // namespace

/// What views of a table, a crystal and a plot are made from.
class TestViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarningsOfQt(); }

    void rowsAreFiltered()
    {
        // An element is no beginning of another, labels are ordered as C2 C10, and what has no value is in no range.
        const QString table =
            u" → C1 C10 C2 O1 Ca3 | c → C1 C10 C2 | C,O → C1 C10 C2 O1 | c1 → C1 | C1* → C1 C10 | C2..C10 → C10 C2 | "
            "C1..C2 → C1 C2 | ca3..o1 → O1 Ca3 | iso>50 → C1 O1 Ca3 | iso>100 → O1 Ca3 | iso>=100 → C1 O1 Ca3 | "
            "iso<50 → C10 | iso<=50 → C10 C2 | iso=50 → C2 | iso=50..100 → C1 C2 | iso=60..-10 → C10 C2 | "
            "iso>=50 iso<200 → C1 C2 | C iso=-10..60 → C10 C2 | CQ=-0.5 , , → Ca3 | cq<10 → O1 Ca3 | "
            "cq<10,C2 → C2 O1 Ca3"_s;
        for (const QString &line : table.split(u" | "_s)) {
            const RowFilter filter = RowFilter::parse(line.section(u" → "_s, 0, 0));
            QStringList accepted;
            for (const QVariant &one : rows)
                if (filter.accepts(one.toMap()))
                    accepted += one.toMap()[u"labels"_s].toStringList();
            QCOMPARE(line.section(u" → "_s, 0, 0) + u" → "_s + accepted.join(u' '), line);
        }
    }

    void filtersThatAreNoneSayWhatIsWrong()
    {
        for (const auto &[text, message] :
             {std::pair(u"C iso>x"_s, "\"iso>x\": \"x\" is no number"),
              {u"iso>nan"_s, "\"iso>nan\": \"nan\" is no number"},
              {u"sigma>1"_s, "\"sigma>1\": the numbers are iso, aniso, eta, eq, etaq and cq"},
              {u"C1.."_s, "\"C1..\": a range of labels has two ends, as in C2..C10"},
              {u"..C1"_s, "\"..C1\": a range of labels has two ends, as in C2..C10"},
              {u"iso=1..y"_s, "\"iso=1..y\": \"y\" is no number"}})
            QCOMPARE(failure([&, text = text] { RowFilter::parse(text); }), QByteArray(message));
        const QVariantMap one{{u"assym"_s, 0.25}, {u"qassym"_s, -0.5}, {u"aniso"_s, 12.0}, {u"eq"_s, 3}};
        for (const QString &text : {u"eta<0.3"_s, u"\u03b7>0.2"_s, u"etaq<\u22120.4"_s, u"\u03b7(q)=\u22120.5"_s,
                                    u"aniso=12 eq=3"_s, u"aniso=13,eq=3"_s, QString()})
            QVERIFY2(RowFilter::parse(text).accepts(one), qPrintable(text));
    }

    void areas()
    {
        const std::vector<double> ramp{0, 1, 2, 3, 4, 5, 6, 7, 8};
        for (const auto &[from, to, expected] :
             {std::tuple(2.5, 7.25, 23.15625), std::tuple(7.25, 2.5, 23.15625), std::tuple(3.2, 3.7, 1.725),
              std::tuple(-5.0, 100.0, 32.0), std::tuple(9.0, 12.0, 0.0), std::tuple(std::nan(""), 1.0, 0.0)})
            QVERIFY(std::abs(integral(ramp, from, to) - expected) < 1e-12);
    }

    void numbersArePastedAsPrinted()
    {
        for (const char *language : {"C", "de_DE"})
            for (const auto &[text, value] :
                 {std::pair(" 172,4 ppm ", 172.4), std::pair("−0.98", -0.98), std::pair("7", 7.0)}) {
                NumberBox box;
                box.setLocale(QLocale(QLatin1String(language)));
                box.setRange(-1e4, 1e4);
                box.setSuffix(u" ppm"_s);
                box.selectAll();
                QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
                QTest::keySequence(&box, QKeySequence::Paste);
                QCOMPARE(box.value(), value);
            }
    }

    void settingsComeBack()
    {
        PlotOptions options;
        options.overlay = options.hertz = options.sharesRange = true;
        const QUuid entry = QUuid::createUuid();
        options.traces[entry] = {2.5, -0.25, 4};
        options.integrals = {{entry, 7.5, 6.25}, {entry, 3, 2}};
        options.integralReference = 1;
        options.referenceValue = 3;
        options.distances = {{{1, 2}, {3, 4}}};
        options.contours = {0.02, 1.4, 7};
        options.sticks = true;
        options.crosses = options.labels = options.legend = false;
        QVERIFY(PlotOptions::fromMap(options.toMap()) == options);
        QVERIFY(PlotOptions::fromMap({}) == PlotOptions());
        for (const auto &[wanted, bounded] : {std::pair(ContourLevels{1e-6, 1, 0}, ContourLevels{1e-5, 1.05, 1}),
                                              {{1, 11, 51}, {0.99, 10, 50}},
                                              {{std::nan(""), INFINITY, 3}, {0.05, 1.6, 3}}})
            QVERIFY(wanted.bounded() == bounded);
        for (const bool PlotOptions::*only :
             {&PlotOptions::sticks, &PlotOptions::overlay, &PlotOptions::hertz, &PlotOptions::sharesRange}) {
            PlotOptions one;
            one.*const_cast<bool PlotOptions::*>(only) = true;
            QVERIFY(PlotOptions::fromMap(one.toMap()) == one);
        }
        QVariantMap damaged = options.toMap();
        damaged[u"Distances"_s] = QVariantList{numbers({1, std::nan(""), 3, 4}), u"x"_s};
        damaged[u"IntegralReference"_s] = 7;
        damaged[u"ReferenceValue"_s] = 0.0;
        const PlotOptions mended = PlotOptions::fromMap(damaged);
        QVERIFY(mended.distances.isEmpty() && mended.integralReference == 0 && mended.referenceValue == 1);
    }

    /// A crystal whose table names two of three atoms, with the shielding of one: all entries, and what each does.
    void moleculeMenu()
    {
        MoleculeItem molecule(description());
        molecule.resize(600, 400);
        molecule.setViewSettings({{u"Rotation"_s, numbers({0.5, 0.5, -0.5, 0.5})}, {u"Zoom"_s, 0.75}});
        QCOMPARE(
            entries(molecule.contextMenu()),
            u"Labels (+None, -Element, -Element and Number, !-Label of the File), +Show Unit Cell, +Show Hydrogens, Crystal (+Molecules, -Cell Contents, +1 × 1 × 1, -2 × 2 × 2, -3 × 3 × 3, Other Numbers of Cells...), Tensors (+None, !-Shielding, !-Anisotropic Part of the Shielding, !-Electric Field Gradient, -Principal Axes, -50 % of their size, +100 % of their size, -150 % of their size, -200 % of their size), -Measure Distances and Angles|M, !Remove Measurements, -Nearest Contacts of the Selected Atom|N, !Copy Contacts, Reset View|Home, Picture (Copy, Save..., Print...)"_s);
        QStringList reports;
        connect(&molecule, &DocumentItem::reported, [&](const QString &text) { reports.append(text); });
        const QUuid data = QUuid::createUuid();
        QVariantMap first = row(u"C7"_s, 1), third = row(u"N9"_s, 2);
        first[u"atomNos"_s] = QVariantList{0};
        third[u"atomNos"_s] = QVariantList{2, 3, -1};
        TableItem table(new StubTable({first, third}, data));
        table.linkObject(&molecule);
        molecule.setDataSource([&](const QUuid &id) {
            const QVariantMap name{{u"labels"_s, QStringList{u"N"_s}}, {u"No"_s, 1}};
            QVariantMap tensor = name, atom = name;
            tensor[u"tensor"_s] = numbers({10, 0, 0, 0, 40, 0, 0, 0, -20});
            atom[u"recordNo"_s] = 2;
            return id == data ? QVariantMap{{u"atoms"_s, QVariantMap{{u"a"_s, atom}}},
                                            {u"shieldings"_s, QVariantMap{{u"a"_s, tensor}}}}
                              : QVariantMap();
        });
        molecule.setSelectedAtoms({2, 1});
        for (const QString &path :
             {u"Labels/Label of the File"_s, u"Show Unit Cell"_s, u"Show Hydrogens"_s, u"Crystal/Cell Contents"_s,
              u"Crystal/2 × 2 × 2"_s, u"Tensors/Anisotropic Part of the Shielding"_s, u"Tensors/Principal Axes"_s,
              u"Tensors/150 % of their size"_s, u"Measure Distances and Angles"_s,
              u"Nearest Contacts of the Selected Atom"_s})
            choose(molecule.contextMenu(), path);
        // Beside the labels of the file numbers of our own have no place.
        QCOMPARE(
            entries(molecule.contextMenu()),
            u"Labels (-None, -Element, +Label of the File), -Show Unit Cell, -Show Hydrogens, Crystal (-Molecules, +Cell Contents, -1 × 1 × 1, +2 × 2 × 2, -3 × 3 × 3, Other Numbers of Cells...), Tensors (-None, -Shielding, +Anisotropic Part of the Shielding, !-Electric Field Gradient, +Principal Axes, -50 % of their size, -100 % of their size, +150 % of their size, -200 % of their size), +Measure Distances and Angles|M, !Remove Measurements, +Nearest Contacts of the Selected Atom|N, Copy Contacts, Reset View|Home, Picture (Copy, Save..., Print...)"_s);
        QCOMPARE(reports.size(), 1);
        QVERIFY(reports[0].startsWith(u"Measuring: "_s));
        QVariantMap settings = molecule.viewSettings();
        QCOMPARE(
            text(settings),
            u"{'Cell':false,'Cells':[2,2,2],'Contacts':true,'Contents':1,'Hydrogens':false,'Labels':3,'Measurements':[],'Rotation':[0.5,0.5,-0.5,0.5],'TensorAxes':true,'TensorSize':1.5,'Tensors':2,'Zoom':0.75}"_s);
        // By numpy.
        choose(molecule.contextMenu(), u"Copy Contacts"_s);
        QCOMPARE(QGuiApplication::clipboard()->text().replace(u'\t', u'|'),
                 uR"(atom|neighbour|cell|distance / Å|nuclei|dipolar coupling / kHz
O2|C7|0 0 0|1.3238|17O 13C|1.7649
O2|N9|0 0 0|2.5889|17O 15N|-0.0951
O2|C7|1 0 0|2.8553|17O 13C|0.1759
O2|N9|1 0 0|3.0170|17O 15N|-0.0601
O2|O2|-1 0 0|4.0000|17O 17O|-0.0345
O2|O2|1 0 0|4.0000|17O 17O|-0.0345
O2|N9|1 -1 0|4.2429|17O 15N|-0.0216
O2|C7|0 1 0|4.7804|17O 13C|0.0375
O2|N9|0 -1 0|4.8582|17O 15N|-0.0144
O2|O2|0 -1 0|5.0990|17O 17O|-0.0167
O2|O2|0 1 0|5.0990|17O 17O|-0.0167
O2|C7|-1 0 0|5.2300|17O 13C|0.0286
)"_s);
        const auto picture = [&] {
            return Shapes::of({600, 400},
                              [&](QPainter *painter) { molecule.paintPicture(painter, QRectF(10, 20, 580, 360)); });
        };
        // The list lies on the other side than its atom; names and nuclei to the left, numbers to the right.
        const QStringList list = picture().filter(QRegularExpression(u"^(text|path #b8bec6)"_s));
        QStringList written;
        for (const QString &shape : list.mid(1))
            written.append(shape.section(u' ', 5));
        QCOMPARE(written.mid(0, 9).join(u'|'),
                 u"Nearest to O2|C7|1.324 Å|¹⁷O–¹³C|1.76 kHz|N9|2.589 Å|¹⁷O–¹⁵N|−0.095 kHz"_s);
        QCOMPARE(written.mid(45, 4).join(u'|'), u"C7|5.230 Å|¹⁷O–¹³C|0.029 kHz"_s);
        QFont font;
        font.setPixelSize(11);
        const QFontMetricsF metrics(font);
        std::array<double, 4> widths{};
        for (int i = 0; i < 48; ++i)
            widths[i % 4] = std::max(widths[i % 4], metrics.horizontalAdvance(written[i + 1]) + 10);
        const double line = metrics.height() + 1, width = widths[0] + widths[1] + widths[2] + widths[3] + 6;
        const bool isLeft = molecule.atomPosition(1).x() >= molecule.contentRect().center().x();
        const double left = isLeft ? 16 : 600 - width; // of a content from 10 to 606
        QString expected = filled(u"path #b8bec6:1 #f0ffffff %1 %2\ntext #000000 %3 %4 0 Nearest to O2\n"_s,
                                  {left + width / 2, 26 + (13 * line + 6) / 2, left + 6, 29 + line / 2});
        for (int i = 0; i < 48; ++i) {
            double x = left + 6 + std::accumulate(widths.begin(), widths.begin() + i % 4, 0.0);
            if (i % 2 == 1)
                x += widths[i % 4] - 8 - metrics.horizontalAdvance(written[i + 1]);
            expected +=
                filled(u"text #000000 %1 %2 0 "_s, {x, 29 + line / 2 + (1 + i / 4) * line}) + written[i + 1] + u'\n';
        }
        VERIFY_DRAWN(list.mid(0, 50), expected);
        QCOMPARE(
            written.mid(49).join(QString()), // in pieces where a font lacks a letter
            u"2 × 2 × 2 cells; shielding, semi-axes |σii − iso|, scaled for each element; dashed axes: negative"_s);
        VERIFY_DRAWN({list.value(50).section(u' ', 0, 4)},
                     filled(u"text #40464e 18 %1 0"_s, {392 - metrics.height() / 2}));
        // Each ellipsoid has its sections and axes: semi-axes |σii − 10| of 30, 30 and nothing.
        QCOMPARE(picture().filter(u":0.8 "_s).size(), 8);
        QCOMPARE(picture().filter(u"curve"_s).size(), 24);
        QCOMPARE(picture().filter(u"#c63d00"_s).size(), 8);
        // Seven of the twelve neighbours lie beyond what is shown.
        settings[u"Contents"_s] = 0;
        settings[u"Cells"_s] = numbers({2, 1, 3});
        settings[u"Measurements"_s] =
            QVariantList{numbers({0, 0, 0, 0, 1, 1, 0, 0}), numbers({0, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0}),
                         numbers({0, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 2, 0, 0, -1}),
                         numbers({0, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 1})};
        molecule.setViewSettings(settings);
        QCOMPARE(molecule.viewSettings(), settings);
        QCOMPARE(molecule.measurements(),
                 (QStringList{u"C7–O2  5.230 Å"_s, u"C7–O2–N9  43.7°"_s, u"C7–O2–N9–N9  -91.1°"_s,
                              u"C7–O2–N9–C7  79.4°"_s}));
        const auto lines = [&] { return picture().filter(u"line #8e24aa:1.6:2"_s); };
        QCOMPARE(lines().size(), 12 + 1 + 3 + 3 + 3);
        // Dotted where no atom is shown: seven neighbours and an end of a torsion angle.
        QCOMPARE(picture().filter(u"ellipse #8e24aa:1:3 "_s).size(), 8);
        // An angle at its atom, a torsion angle at its middle bond; the picture lies by (8, -3) from the item.
        const QPointF oxygen = molecule.atomPosition(1), bond = (oxygen + molecule.atomPosition(2)) / 2;
        const QStringList values = picture().filter(u"path - #6d1c83"_s);
        QCOMPARE(values.size(), 4);
        for (const auto &[i, at] : {std::pair(1, oxygen), {2, bond}, {3, bond}}) {
            const QPointF found(values[i].section(u' ', 3, 3).toDouble(), values[i].section(u' ', 4).toDouble());
            QVERIFY2(QLineF(found, at + QPointF(8, -3)).length() < 4, qPrintable(values[i]));
        }
        // They go along with the atom, as if the document were opened so.
        choose(molecule.contextMenu(), u"Crystal/Cell Contents"_s);
        const QStringList moved = lines();
        molecule.setViewSettings(molecule.viewSettings());
        QCOMPARE(moved, lines());
        choose(molecule.contextMenu(), u"Remove Measurements"_s);
        choose(molecule.contextMenu(), u"Measure Distances and Angles"_s);
        choose(molecule.contextMenu(), u"Nearest Contacts of the Selected Atom"_s);
        QCOMPARE(reports.mid(1), QStringList{QString()});
        QVERIFY(molecule.measurements().isEmpty() && picture().filter(u"#8e24aa"_s).isEmpty());
        molecule.setSelectedAtoms({});
        molecule.setContactsVisible(true);
        QCOMPARE(reports.last(), u"Click an atom to see what is near it"_s);
        // Only what has been written by somebody else can be nonsense.
        const QVariantList nonsense{numbers({0, 0, 0, 0}), numbers({0, 0, 0, 0, 1, 0, 0.5, 0}),
                                    numbers({0, 0, 0, 0, 3, 0, 0, 0}), numbers({0, 0, 0, 0, -1, 0, 0, 0}),
                                    numbers(DoubleVector(20))};
        molecule.setViewSettings({{u"Labels"_s, 4},
                                  {u"Tensors"_s, 4},
                                  {u"TensorSize"_s, 11.0},
                                  {u"Cells"_s, numbers({0.9, 100, 99})},
                                  {u"Measurements"_s, nonsense}});
        QCOMPARE(
            text(molecule.viewSettings()),
            u"{'Cell':true,'Cells':[1,1,99],'Contacts':false,'Contents':0,'Hydrogens':true,'Labels':0,'Measurements':[],'Rotation':[0.5,0.5,-0.5,0.5],'TensorAxes':false,'TensorSize':10,'Tensors':0,'Zoom':0.75}"_s);
    }

    void moleculeTitles()
    {
        for (const auto &[title, elements, inCell] :
             {std::tuple(u"Molecule without atoms"_s, QList<int>(), true),
              {u"Molecule: C₂H₃Br"_s, {1, 6, 35, 1, 6, 1}, false},
              {u"Unit cell: CH₁₂Au"_s, QList<int>{79, 6} + QList<int>(12, 1), true},
              {u"Molecule: AlHO"_s, {1, 8, 13}, false}}) { // by the alphabet without carbon
            QVariantMap made = description(inCell);
            QVariantList atoms;
            for (int element : elements)
                atoms.append(atom(element, double(atoms.size()), 0, 0));
            made[u"Atoms"_s] = atoms;
            QCOMPARE(MoleculeItem(made).title(), title);
        }
    }

    void tableMenuAndPaper()
    {
        TableItem table(new StubTable(rows));
        table.resize(400, 300);
        QStringList reports;
        connect(&table, &DocumentItem::reported, [&](const QString &text) { reports.append(text); });
        const QString expected =
            u"Select All|Ctrl+A, Copy|Ctrl+C, Filter Rows|Ctrl+F, &Columns (+Labels  –  The sites' labels in the file, %1Iso, ppm  –  Isotropic shielding), Picture (Copy, Save..., Print...)"_s;
        QCOMPARE(entries(table.contextMenu()), expected.arg(u"+"_s));
        choose(table.contextMenu(), u"&Columns/Iso, ppm  –  Isotropic shielding"_s);
        choose(table.contextMenu(), u"&Columns/Labels  –  The sites' labels in the file"_s);
        QCOMPARE(entries(table.contextMenu()), expected.arg(u"-"_s));
        QCOMPARE(reports, QStringList{u"A table has at least one column"_s});

        const auto paper = [&](int height) {
            return Shapes::of({300, height}, [&](QPainter *painter) {
                table.paintPicture(painter, QRectF(10, 20, 280, height - 30));
            });
        };
        table.setFilter(u"c  iso<60"_s);
        VERIFY_DRAWN(paper(200), uR"(
rect - #ffffff 10 20 280 170
text #000000 16 30.5 0 Labels
line #000000:1 10 41 * 41
text #000000 16 51.5 0 C10
line #dde1e6:0.5 10 62 * 62
text #000000 16 72.5 0 C2
line #dde1e6:0.5 10 83 * 83
text #50565e 16 93.5 0 of the rows with c iso<60)"_s);
        VERIFY_DRAWN(paper(113).mid(3), uR"(
text #000000 16 51.5 0 C10
line #dde1e6:0.5 10 62 * 62
text #50565e 16 72.5 0 and 1 more row(s) of the rows with c iso<60)"_s);
        table.setFilter({});
        table.setColumns({});
        table.view()->horizontalHeader()->setSortIndicator(1, Qt::AscendingOrder);
        table.view()->selectAll(); // in whatever order, as one range: their number costs time
        QCOMPARE(table.view()->selectionModel()->selection().value(0).height(), 5);
        table.view()->clearSelection();
        const auto whole = [](int count) {
            QString lines =
                u"rect - #ffffff 10 20 280 *\ntext #000000 16 30.5 0 Labels\ntext #000000 * 30.5 0 Iso, ppm\nline #000000:1 10 41 * 41\n"_s;
            const QString row = u"text #000000 16 %1 0 %3\ntext #000000 * %1 0 %4\nline #dde1e6:0.5 10 %2 * %2\n"_s;
            const QStringList cells = u"C10 -5.5 C2 50 C1 100 O1 200 Ca3 1000"_s.split(u' ');
            for (int i = 0; i < count; ++i)
                lines += filled(row, {51.5 + 21 * i, 62.0 + 21 * i}).arg(cells[2 * i], cells[2 * i + 1]);
            return lines;
        };
        VERIFY_DRAWN(paper(20 + 10 + 6 * 21), whole(5));
        VERIFY_DRAWN(paper(20 + 10 + 6 * 21 - 1), whole(3) + u"text #50565e 16 114.5 0 and 2 more row(s)"_s);
        // The item that shows all of it: the line of the filter, the titles, and the rows; narrower without a scroll
        // bar.
        const QSizeF frame = table.size() - table.contentRect().size();
        QCOMPARE(table.fullSize().height(), frame.height() + 24 + 6 * 21 + 2);
        QCOMPARE(table.fullWidth(table.fullSize().height()), table.fullSize().width());
        const int bar = table.view()->verticalScrollBar()->sizeHint().width();
        QCOMPARE(table.fullWidth(table.fullSize().height() - 1), table.fullSize().width() + bar);
        QCOMPARE(table.fullSize().width(), frame.width() + table.view()->horizontalHeader()->length() + bar + 2);
    }

    void tableSettingsComeBack()
    {
        TableItem table(new StubTable(rows));
        table.resize(400, 300);
        table.ensureFitted();
        QCOMPARE(text(table.viewSettings()), u"{'Descending':false,'Filter':'','SortColumn':-1}"_s);
        table.view()->horizontalHeader()->resizeSection(1, 77);
        choose(table.contextMenu(), u"&Columns/Labels  –  The sites' labels in the file"_s);
        table.setFilter(u"iso>=50"_s);
        table.view()->horizontalHeader()->setSortIndicator(1, Qt::DescendingOrder);
        const QString settings =
            u"{'ColumnWidths':{'2':77},'Descending':true,'Filter':'iso>=50','HiddenColumns':['1'],'SortColumn':1}"_s;
        QCOMPARE(text(table.viewSettings()), settings);
        TableItem other(new StubTable(rows));
        other.setViewSettings(table.viewSettings());
        QCOMPARE(text(other.viewSettings()), settings);
        QCOMPARE(other.selectionText(), u"Iso, ppm\n1000\n200\n100\n50\n"_s);
        other.ensureFitted();
        QCOMPARE(other.view()->columnWidth(1), 77);
        const auto *result = other.view()->parentWidget()->findChild<QLabel *>();
        QCOMPARE(result->text(), u"4 of 5"_s);
        other.setFilter(u"iso>a"_s);
        QCOMPARE(result->text() + result->toolTip(), u"not understood\"iso>a\": \"a\" is no number"_s);
        other.selectShown();
        QCOMPARE(other.selectedRowMaps(), (QVariantList{rows[4], rows[3], rows[0], rows[2]}));
        other.setFilter(u"O"_s);
        QCOMPARE(result->text() + result->toolTip(), u"1 of 5"_s);
        QCOMPARE(other.selectedRowMaps(), QVariantList{rows[3]});
        QTest::keyClick(other.view(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"Iso, ppm\n200\n"_s);
        // What makes no sense is left out: widths of nothing and of more than a screen, a column that there is not.
        other.setViewSettings({{u"ColumnWidths"_s, QVariantMap{{u"1"_s, 0}, {u"2"_s, 2001}, {u"3"_s, 2000}}},
                               {u"SortColumn"_s, 2},
                               {u"HiddenColumns"_s, QStringList{u"7"_s, u"7"_s}}});
        QCOMPARE(text(other.viewSettings()),
                 u"{'ColumnWidths':{'3':2000},'Descending':true,'Filter':'','HiddenColumns':['7'],'SortColumn':1}"_s);
        other.setViewSettings(
            {{u"HiddenColumns"_s, QStringList{u"7"_s}}, {u"ColumnWidths"_s, QVariantMap{{u"2"_s, 88}}}});
        other.ensureFitted();
        QCOMPARE(other.view()->columnWidth(1), 88);
        // The line of the filter above the view, a number at its end; a column as wide as its texts, to a limit.
        TableItem wide(new StubTable(QVariantList(rows) << row(QString(200, u'C'), 3)));
        wide.resize(400, 300);
        wide.ensureFitted();
        QTableView *view = wide.view();
        QWidget *panel = view->parentWidget();
        panel->layout()->activate();
        const QRect line = panel->findChild<QLineEdit *>()->geometry(),
                    number = panel->findChild<QLabel *>()->geometry();
        QCOMPARE(QRect(line.topLeft(), QSize(number.left() - line.right(), line.height())), QRect(2, 1, 7, 22));
        QCOMPARE(view->geometry(), QRect(0, 24, 396, 251));
        QCOMPARE(QSize(view->rowHeight(0), view->horizontalHeader()->height()), QSize(21, 21));
        QCOMPARE(view->columnWidth(0), 260);
        QStringList orders;
        QHeaderView *header = view->horizontalHeader();
        for (int click = 0; click < 3; ++click) {
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {header->sectionViewportPosition(1) + 20, 15});
            orders.append(shownLabels(wide).mid(0, 2).join(u' '));
        }
        QCOMPARE(orders,
                 (QStringList{u"C10 "_s + QString(200, u'C'), u"Ca3 O1"_s, u"C1 C10"_s})); // up, down, the file's
        header->setSortIndicator(1, Qt::DescendingOrder);
        wide.showColumn(1, false);
        QCOMPARE(header->sortIndicatorSection(), -1);
        QCOMPARE(shownLabels(wide).mid(0, 2).join(u' '), u"C1 C10"_s);
    }

    /// Numbers by size, then texts, what is empty last, whichever the order.
    /// As many of the selected rows as can be, the first one in any case.
    void selectedRowsComeIntoSight()
    {
        TableItem table(new StubTable(QVariantList(60, row(u"C1"_s, 1))));
        table.resize(400, 300);
        table.ensureFitted();
        QTableView *view = table.view();
        const auto sight = [&](int first, int last) {
            const auto whole = QItemSelectionModel::Select | QItemSelectionModel::Rows;
            view->selectionModel()->clear();
            for (int selected : {last, first})
                view->selectionModel()->select(view->model()->index(selected, 0), whole);
            table.receiveMessage({}, nullptr);
            const int bottom = view->rowAt(view->viewport()->height() - 1);
            return std::pair(view->rowAt(0) <= first && bottom >= first, view->rowAt(0) <= last && bottom >= last);
        };
        for (const auto &[first, last, both] : {std::tuple(30, 34, true), {5, 50, false}, {20, 59, false}})
            QCOMPARE(sight(first, last), std::pair(true, both));
    }

    void cellsAreOrdered()
    {
        QVariantList mixed{row(u"A"_s, 3), row(u"B"_s, 0), row(u"C"_s, std::nan("")), row(u"D"_s, -2), row(u"E"_s, 3),
                           row(u"F"_s, 0), row(u"G"_s, 0)};
        for (const auto &[i, value] : {std::pair(1, QVariant(u"n10"_s)), {5, QVariant(u"n9"_s)}, {6, QVariant()}}) {
            QVariantMap map = mixed[i].toMap();
            map[u"iso"_s] = value;
            mixed[i] = map;
        }
        TableItem table(new StubTable(mixed));
        for (const auto &[order, expected] :
             {std::pair(Qt::AscendingOrder, "D A E F B C G"), {Qt::DescendingOrder, "B F A E D C G"}}) {
            table.view()->horizontalHeader()->setSortIndicator(1, order);
            QCOMPARE(shownLabels(table).join(u' '), QLatin1String(expected));
        }
        table.view()->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
        QCOMPARE(shownLabels(table).join(u' '), u"A B C D E F G"_s);

        TableItem labels(new StubTable(rows));
        labels.view()->horizontalHeader()->setSortIndicator(0, Qt::AscendingOrder);
        QCOMPARE(shownLabels(labels).join(u' '), u"C1 C2 C10 Ca3 O1"_s);
        labels.setFilter(u"C"_s);
        labels.setFilter(u"C iso>"_s); // while one types
        QCOMPARE(shownLabels(labels).join(u' '), u"C1 C2 C10"_s);
        // The first rows are drawn, although those that are first in the file are hidden.
        labels.setFilter(u"O,Ca"_s);
        labels.resize(400, 300);
        QStringList words;
        const auto paint = [&](QPainter *painter) { labels.view()->viewport()->render(painter); };
        for (const QString &shape : Shapes::of({400, 300}, paint).filter(u"text "_s))
            words.append(shape.section(u' ', 5));
        QCOMPARE(words.join(u' '), u"Ca3 1000 O1 200"_s);
        QHeaderView *header = labels.view()->horizontalHeader();
        for (const bool up : {true, false}) {
            header->setSortIndicator(1, up ? Qt::AscendingOrder : Qt::DescendingOrder);
            const double middle = header->sectionViewportPosition(1) + (header->sectionSize(1) - 1) / 2 + 0.5;
            const auto title = [&](QPainter *painter) { header->viewport()->render(painter); };
            VERIFY_DRAWN(Shapes::of({400, 21}, title).filter(u"polygon - #1f6fb5"_s),
                         filled(u"polygon - #1f6fb5 %1 %4 %2 %4 %3 %5"_s,
                                {middle - 5, middle + 5, middle, up ? 5.0 : 1.0, up ? 1.0 : 5.0}));
        }
    }

    /// Codes of columns as they come; what a row's map calls them.
    void columnsByTheirCode()
    {
        const int codes[] = {0, 3, 4, 6, 5, 7}, digits[] = {-1, 2, 3, 3, 1, 0};
        QVariantList columns;
        for (int i = 0; i < 6; ++i)
            columns.append(QVariantMap{{u"Type"_s, codes[i]}, {digits[i] < 0 ? u"none"_s : u"Digits"_s, digits[i]}});
        columns.append(QVariantMap());
        StubTable source(columns,
                         {u"-0 0.00 0.412 0.500 1.5 -0 x"_s.split(u' '), u"C -0.00 0.3 0.7 0.0 -3 "_s.split(u' '),
                          u"H -7.10 -0.000 0.25 9  -0"_s.split(u' ')});
        TableModel model(&source);
        QString shown;
        for (int i = 0; i < 21; ++i)
            shown += model.index(i / 7, i % 7).data().toString() + (i % 7 == 6 ? u'|' : u' ');
        // An asymmetry says nothing where there is no anisotropy.
        QCOMPARE(shown, u"-0 0.00 – 0.500 1.5 0 x|C 0.00 – – 0.0 -3 |H -7.10 0.000 0.25 9  -0|"_s);
        const QStringList
            keys = u"0 type|3 aniso|4 assym|6 qassym|5 eq|7 Cq,qIso|#6 "_s.split(u'|'),
            formulas =
                u";σzz − (σxx + σyy) / 2;(σyy − σxx) / (σzz − iso);(|Vxx| − |Vyy|) / |Vzz|;|Vzz|;2.3489;"_s.split(u';');
        for (int column = 0; column < 7; ++column) {
            QCOMPARE(model.columnKey(column) + u' ' + model.rowKeys(column).join(u','), keys[column]);
            QCOMPARE(model.columnOfKey(model.columnKey(column)), column);
            const auto head = [&](int role) { return model.headerData(column, Qt::Horizontal, role); };
            QVERIFY2(head(Qt::ToolTipRole).toString().contains(formulas[column]), qPrintable(keys[column]));
            const int side = (column % 6 == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter; // texts, numbers
            QCOMPARE(head(Qt::TextAlignmentRole).toInt(), side);
            QCOMPARE(model.index(1, column).data(Qt::TextAlignmentRole).toInt(), side);
        }
        QCOMPARE(model.columnOfKey(u"9"_s), -1);
        QVERIFY(!model.headerData(7, Qt::Horizontal).isValid() && !model.headerData(-1, Qt::Horizontal).isValid());
        model.offerSiteColumns();
        QCOMPARE(model.columnCount(), 7 + int(siteColumns().size()));
        QVERIFY(!model.siteColumnAt(6) && model.columnKey(7) == u"delta11" && model.siteColumnAt(18)
                && !model.siteColumnAt(19));
        QCOMPARE(model.rowKeys(9), QStringList{u"delta33"_s});
        QVERIFY(!model.index(0, 7).data().isValid() && !model.hasSites());
        QCOMPARE(model.columnCode(7), -1);
    }

    /// All entries of plots of one and two dimensions, what each does to the options, and the numbers that are copied.
    void plotMenus()
    {
        QGraphicsScene scene;
        NmrItem item;
        item.resize(500, 400);
        const QVariantList peaks{peak(1, u"C1"_s, 60, 6, 2.5), peak(2, u"C2"_s, 50, 3, 4)};
        const QUuid first = item.nmrData()->addEntry(spectrum(70, {1, -2.5, 1e-7}), u"one"_s);
        scene.addItem(&item);
        const QString menu =
            u"Show Full Range|Home, Show (%1, -Axis in Hz, -Same Range as Other Plots of the Nucleus), Appearance (Colour (+By its place in the stack, -Blue, -Vermilion, -Green, -Purple, -Orange, -Sky blue, -Black), !Own Height and Place Again), Measure (%2Mark Integrals|I, Mark Distances|D, !Set Integral (), !Remove the Last Integral, !Remove the Last Distance, !Remove All), Edit Title..., Copy Numbers%3, Picture (Copy, Save..., Print...)"_s;
        QCOMPARE(entries(item.contextMenu()),
                 menu.arg(u"-Peak Sticks, +Peak Labels, +Legend, -Spectra on One Base Line"_s, QString(), QString()));
        QCOMPARE(item.numbersText(), u"ppm\tintensity\n70\t1\n60\t-2.5\n50\t1e-07\n"_s);
        item.plot()->xAxis->setRange(55, 65);
        choose(item.contextMenu(), u"Copy Numbers"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"ppm\tintensity\n60\t-2.5\n"_s);
        for (const QString &path :
             {u"Show/Peak Sticks"_s, u"Show/Peak Labels"_s, u"Show/Legend"_s, u"Show/Spectra on One Base Line"_s,
              u"Show/Axis in Hz"_s, u"Show/Same Range as Other Plots of the Nucleus"_s, u"Appearance/Colour/Purple"_s})
            choose(item.contextMenu(), path);
        PlotOptions expected;
        expected.sticks = expected.overlay = expected.hertz = expected.sharesRange = true;
        expected.labels = expected.legend = false;
        expected.traces[first].color = 3;
        QVERIFY(item.plot()->options() == expected);
        expected.traces[first] = {2, 0.5, 3};
        expected.integrals = {{first, 66, 52}, {first, 60, 55}};
        expected.integralReference = 1;
        expected.referenceValue = 6;
        expected.distances = {{{60, 0.2}, {55, 0.2}}};
        item.plot()->setOptions(expected);
        QCOMPARE(
            entries(item.contextMenu()),
            u"Show Full Range|Home, Show (+Peak Sticks, -Peak Labels, -Legend, +Spectra on One Base Line, +Axis in Hz, +Same Range as Other Plots of the Nucleus), Appearance (Colour (-By its place in the stack, -Blue, -Vermilion, -Green, +Purple, -Orange, -Sky blue, -Black), Own Height and Place Again), Measure (Mark Integrals|I, Mark Distances|D, Set Integral (-66.00 to 52.00 ppm..., +60.00 to 55.00 ppm...), Remove the Last Integral, Remove the Last Distance, Remove All), Edit Title..., Copy Numbers, Picture (Copy, Save..., Print...)"_s);
        choose(item.contextMenu(), u"Appearance/Own Height and Place Again"_s);
        choose(item.contextMenu(), u"Measure/Remove the Last Integral"_s);
        QVERIFY(item.plot()->options().traces[first] == (TraceStyle{1, 0, 3}));
        const auto reference = [&] { // the integral that is set, and to what
            return std::pair(item.plot()->options().integralReference, item.plot()->options().referenceValue);
        };
        QVERIFY(reference() == std::pair(0, 1.0) && item.plot()->options().integrals.size() == 1);
        choose(item.contextMenu(), u"Measure/Remove the Last Distance"_s);
        QVERIFY(item.plot()->options().distances.isEmpty());
        expected.integralReference = 0;
        item.plot()->setOptions(expected);
        choose(item.contextMenu(), u"Measure/Remove the Last Integral"_s);
        QVERIFY(reference() == std::pair(0, 6.0)); // another one was set
        choose(item.contextMenu(), u"Measure/Remove All"_s);
        QVERIFY(reference() == std::pair(0, 1.0));
        choose(item.contextMenu(), u"Appearance/Colour/By its place in the stack"_s);
        QVERIFY(item.plot()->options().integrals.isEmpty() && item.plot()->options().distances.isEmpty());
        QCOMPARE(item.plot()->options().traces[first].color, -1);

        NmrItem second;
        second.resize(500, 400);
        second.nmrData()->addEntry(spectrum(70, {1, 2, 3, 4, 5, 6}, peaks, 3), {});
        QCOMPARE(second.title(), u"¹³C–¹H spectrum, 2D"_s);
        QCOMPARE(entries(second.contextMenu()),
                 menu.arg(u"+Peak Crosses, +Peak Labels, +Legend"_s, u"!"_s, u", Contour Levels..."_s));
        QCOMPARE(second.numbersText(),
                 u"label\tppm F2\tppm F1\theight\nC1\t60\t6\t2.5\n"_s); // the other one lies outside
        second.nmrData()->setEntryName(second.nmrData()->activeEntryId(), u"map"_s, {});
        QCOMPARE(second.title(), u"¹³C–¹H of map"_s);
        const QUuid list = item.nmrData()->addEntry({{u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}}}}, u"list"_s);
        item.nmrData()->setActiveEntryId(list);
        QCOMPARE(item.title(), u"list"_s);
        item.plot()->content();
        item.plot()->xAxis->setRange(55, 65);
        QCOMPARE(item.numbersText(), u"label\tppm\theight\nC1\t60\t2.5\n"_s);
        choose(item.contextMenu(), u"Show Full Range"_s);
        QCOMPARE(item.numbersText(), u"label\tppm\theight\nC1\t60\t2.5\nC2\t50\t4\n"_s);
    }

    void labelsArePlacedBeside()
    {
        const QRectF what(50, 40, 10, 6), area(0, 0, 200, 100);
        const QSizeF size(12, 8);
        std::vector<QRectF> taken;
        // To the right, above, below, to the left, then the corners; each place goes to one label only.
        for (const QPointF &corner : {QPointF(62, 39), QPointF(49, 30), QPointF(49, 48), QPointF(36, 39),
                                      QPointF(62, 30), QPointF(62, 48), QPointF(36, 30), QPointF(36, 48)}) {
            const auto place = LabelPlacement::beside(what, size, 2, area, taken);
            QVERIFY(place && *place == QRectF(corner, size));
            taken.push_back(*place);
        }
        QVERIFY(!LabelPlacement::beside(what, size, 2, area, taken));
        QCOMPARE(LabelPlacement::beside(what, size, 2, {0, 0, 74, 100}, {})->topLeft(), QPointF(62, 39));
        QCOMPARE(LabelPlacement::beside(what, size, 2, {0, 0, 73, 100}, {})->topLeft(), QPointF(49, 30));
        // Pools about their own means, in the order that was wanted; the last ones pushed back from the end.
        QCOMPARE(LabelPlacement::spread({10, 12, 40, 41, 42}, 6, 0, 100), (std::vector<double>{8, 14, 35, 41, 47}));
        QCOMPARE(LabelPlacement::spread({1, 50, 99}, 10, 5, 95), (std::vector<double>{5, 50, 95}));
        QCOMPARE(LabelPlacement::spread({50, 50, 50, 90, 99}, 10, 5, 95), (std::vector<double>{40, 50, 60, 85, 95}));
        QCOMPARE(LabelPlacement::spread({50, 51}, 80, 0, 60), (std::vector<double>{0, 80})); // no room at all

        SharedLabel label;
        for (const auto &[number, name] : {std::pair(1, u"C10"_s), {2, u"C2"_s}, {3, QString()}, {4, u"C2"_s}})
            label.add(QUuid(uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0), name);
        QCOMPARE(label.text() + u'|' + label.fullText(), u"C2,C10|C2, C10"_s);
        SharedLabel more;
        more.add({}, u"C1"_s);
        more.add({}, u"N1"_s);
        label.add(more);
        QCOMPARE(label.text() + u'|' + label.fullText(), u"C1,C2,C10 +1|C1, C2, C10, N1"_s);
        QCOMPARE(label.peaks().size(), 6);
        label.add({}, u"H1,H2"_s);
        QCOMPARE(label.text(), u"C1 +4"_s);
        SharedLabel longOne;
        longOne.add({}, QString(24, u'x'));
        QCOMPARE(longOne.text(), QString(24, u'x'));
        longOne.add({}, QString(23, u'x'));
        longOne.add({}, QString(22, u'w'));
        longOne.add({}, QString(22, u'v'));
        QCOMPARE(longOne.text(), QString(20, u'v') + u"… +1"_s);
    }

    /// Frame, title bar, mode and notes: where they lie and what they leave to the content.
    void frames()
    {
        MoleculeItem item(description());
        item.setGeometry(0, 0, 300, 200);
        QCOMPARE(item.contentRect(), QRectF(2, 23, 296, 175));
        item.setGivenName(u"Form II"_s);
        item.setCurrent(true);
        item.setMode(u"Editing"_s);
        // On paper a thin frame, a rule and the title; in the window a blue frame, a grey bar and the mode in a box.
        const QStringList paper =
            Shapes::of({300, 200}, [&](QPainter *painter) { item.paint(painter, nullptr, nullptr); });
        VERIFY_DRAWN(paper.mid(paper.size() - 3),
                     u"line #b8bec6:1 0 22 300 22\nrect #b8bec6:1 - 0.5 0.5 299 199\ntext #242c36 8 11 0 Form II"_s);
        QImage window(300, 200, QImage::Format_RGB32);
        QWidget widget;
        item.paint(std::make_unique<QPainter>(&window).get(), nullptr, &widget);
        using Places = QList<QPoint>;
        for (const auto &[color, places] :
             {std::pair(0x1f6fb5, Places{{0, 100}, {1, 100}, {298, 100}, {150, 199}, {150, 0}}),
              {0xf1f3f6, {{150, 4}, {297, 4}, {296, 2}, {296, 19}}},
              {0xd7eed9, {{296, 4}, {296, 18}}},
              {0xffffff, {{2, 100}}}})
            for (const QPoint &at : places)
                QCOMPARE(window.pixelColor(at), QColor(color));
        int run = 0;
        item.setNotes({{u"Short."_s, {}, {}}, {u"Another one."_s, u"Do it"_s, [&] { ++run; }}});
        const NoteBar *bar = item.noteBar();
        const double height = bar->height() / 2;
        QCOMPARE(item.contentRect(), QRectF(2, 23 + 2 * height, 296, 175 - 2 * height));
        QVERIFY(bar->actionRect(0).isNull());
        QCOMPARE(bar->actionRect(1).topRight(), QPointF(296, height));
        QCOMPARE(bar->actionRect(1).height(), height);
        QCOMPARE(bar->toolTip(), u"Short.\n\nAnother one."_s);
        const auto notes = [&] {
            return Shapes::of({300, 200},
                              [&](QPainter *painter) { const_cast<NoteBar *>(bar)->paint(painter, nullptr, nullptr); });
        };
        const QString bars = uR"(rect - #fff7dc 0 %1 296 %1
line #e6d594:1 0 %2 296 %2
ellipse #4a3800:1 - 12 %3 6.5 6.5
text #4a3800 9.8 %3 0 !
text #4a3800 24 %3 0 Another one.
text #0b5799 * %3 0 Do it)"_s;
        VERIFY_DRAWN(notes().mid(5, 6), filled(bars, {height, 2 * height, height + 11}));
        QVERIFY(entries(item.contextMenu()).startsWith(u"Do it, Labels ("_s));
        choose(item.contextMenu(), u"Do it"_s);
        QCOMPARE(run, 1);
        item.setOnPaper(true);
        QVERIFY(notes().filter(u"Do it"_s).isEmpty());
        QCOMPARE(item.contentRect(), QRectF(2, 23, 296, 175));
        item.setOnPaper(true, true);
        QCOMPARE(item.contentRect().top(), 23 + 2 * height);
        item.setOnPaper(false);
        // The first words count, where a note is too long.
        item.setNotes({{u"First "_s + u"long "_s.repeated(80) + u"last"_s, {}, {}}});
        const QString drawn = notes().join(u'\n');
        QVERIFY2(drawn.contains(u"First long") && drawn.contains(u"…"_s) && !drawn.contains(u"last"),
                 qPrintable(drawn));
        // Three lines each: more than a third of the item, so that all but the first wait to be asked for.
        item.setNotes(QList<ItemNote>(9, {u"Long. "_s.repeated(80), {}, {}}));
        QVERIFY(bar->height() > 3 * (height - 9) + 8 + height && bar->height() <= 3 * (height - 8) + 9 + height);
        const QString folded = notes().join(u'\n');
        QVERIFY2(folded.contains(u"and 8 more note(s)"_s) && folded.contains(u"Show All"_s), qPrintable(folded));
        QGraphicsScene scene;
        scene.addItem(&item);
        QGraphicsSceneMouseEvent click(QEvent::GraphicsSceneMouseRelease);
        click.setPos(bar->actionRect(1).center());
        scene.sendEvent(const_cast<NoteBar *>(bar), &click);
        scene.removeItem(&item);
        QCOMPARE(item.contentRect().top(), 23 + 200 / 3.0);
        QVERIFY(bar->height() > 9 * (3 * (height - 9) + 8) && bar->height() <= 9 * (3 * (height - 8) + 9) + height);

        item.setSource(u"a.magres"_s);
        QCOMPARE(item.title(), u"Form II"_s);
        item.setGivenName({});
        QCOMPARE(item.title(), u"a.magres – Unit cell: CNO"_s);
        item.setSource({});
        QCOMPARE(item.title(), u"Unit cell: CNO"_s);
    }

    void picturesHaveTheItemsSize()
    {
        MoleculeItem molecule({{u"Atoms"_s, QVariantList{atom(6, 0, 0, 0)}}});
        molecule.resize(200, 150);
        const auto written = [&](const QString &suffix) {
            QBuffer file;
            file.open(QIODevice::ReadWrite);
            ItemPicture::write(molecule, suffix, file);
            return file.data();
        };
        const QImage image = QImage::fromData(written(u"png"_s), "PNG");
        QCOMPARE(image.size(), QSize(3 * 196, 3 * 125));
        QCOMPARE(QSize(image.dotsPerMeterX(), image.dotsPerMeterY()), QSize(11339, 11339)); // 288 an inch
        QVERIFY(image.pixelColor(314, 208) != QColor(Qt::white) && image.pixelColor(3, 3) == QColor(Qt::white));
        QVERIFY(written(u"SVG"_s).contains("viewBox=\"0 0 196 125\""));
        QVERIFY(written(u"pdf"_s).contains("/MediaBox [0 0 147")); // in points
        QVERIFY(failure([&] { written(u"doc"_s); }).contains(".svg"));
        QSignalSpy told(&molecule, &DocumentItem::reported);
        choose(molecule.contextMenu(), u"Picture/Copy"_s);
        const QMimeData *copied = QGuiApplication::clipboard()->mimeData();
        QCOMPARE(qvariant_cast<QImage>(copied->imageData()), image);
        QVERIFY(copied->data(u"image/svg+xml"_s).contains("<title>Molecule: C</title>"));
        QCOMPARE(told.value(0).value(0), u"The picture is on the clipboard"_s);
    }

    // --- table

    void tableModelKeepsTheRulesOfModels()
    {
        QObject bare; // offers nothing: an empty table
        TableModel model(&bare);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.columnCount(), 0);
        const QVariantList columns{QVariantMap(), QVariantMap{{u"Type"_s, 7}}};
        auto table = std::make_unique<StubTable>(columns, QList<QStringList>{{u"0"_s, u"1"_s}, {u"10"_s, u"11"_s}});
        model.setTable(table.get());
        QCOMPARE(model.index(1, 1).data(), u"11"_s);
        QCOMPARE(model.columnCode(1), 7);
        QCOMPARE(model.columnCode(2), -1);

        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        model.beginResetModel();
        table->cells.removeLast();
        model.endResetModel();
        model.endResetModel(); // without a begin
        QCOMPARE(resets.count(), 1);
        QCOMPARE(model.rowCount(), 1);
        QVERIFY(!model.data(model.index(5, 0)).isValid());
        table.reset();
        QCOMPARE(resets.count(), 2);
        QCOMPARE(model.rowCount(), 0);
    }

    // --- links and selection

    void messagesGoBothWaysAndDoNotComeBack()
    {
        auto *table = new StubTable(rows);
        TableItem tableItem(table);
        MoleculeItem molecule(description(false));
        tableItem.linkObject(&molecule);
        tableItem.linkObject(&molecule); // again: still one link
        tableItem.linkObject(std::make_unique<MoleculeItem>(description(false)).get()); // gone at once
        QCOMPARE(tableItem.linkedItems().size(), 1);

        tableItem.sendMessage(AtomSelection::toMessage({1, 2, 7, -1}));
        QCOMPARE(molecule.selectedAtoms(), (QSet<int>{1, 2}));
        tableItem.sendMessage(QVariantMap{{u"type"_s, 5}, {u"data"_s, QVariantList{0}}});
        QCOMPARE(molecule.selectedAtoms(), (QSet<int>{1, 2}));

        // The table answers with its whole row, which must not overwrite what the user selected.
        molecule.setSelectedAtoms({1});
        molecule.sendMessage(AtomSelection::toMessage({1}));
        QCOMPARE(table->messages.size(), 1);
        QCOMPARE(table->messages.first(), (QVariantMap{{u"type"_s, 22}, {u"data"_s, QVariantList{1}}}));
        QCOMPARE(molecule.selectedAtoms(), QSet<int>{1});
    }

    // --- molecule

    void damagedDescriptionsAreDrawnAsFarAsTheyGo()
    {
        const double nan = std::nan("");
        for (const QVariantMap &bad : {atom(6, nan, 0, 0, {0}), atom(6, 0, 0, -1e300, {0}), QVariantMap{{u"El"_s, 6}},
                                       atom(6, 1, 1, 1, {99, -3, 3, 0}), atom(-7, 1, 1, 1), atom(6, 0, 0, 0, {0})}) {
            QVariantMap made = description(false);
            made[u"Atoms"_s] = made.value(u"Atoms"_s).toList() << bad;
            const QVariant lattice = QVariant::fromValue(DoubleVector{3, 0, 0, 3, 0, 0, nan, 0, 0});
            made[u"CrystallographicData"_s] = QVariantMap{{u"Lattice"_s, lattice}};
            MoleculeItem molecule(made);
            molecule.resize(200, 200);
            Shapes::of({200, 200}, [&](QPainter *painter) { molecule.paint(painter, nullptr, nullptr); });
            // The molecule is there, fitted and told apart by its atoms.
            for (int i = 0; i < 3; ++i)
                QVERIFY(molecule.contentRect().contains(molecule.atomPosition(i)));
            QVERIFY(QLineF(molecule.atomPosition(1), molecule.atomPosition(2)).length() > 20);
        }
    }

    // --- NMR data

    /// Each change is told, in order, with its name and how many entries there were before.
    void stacksTellTheirChanges()
    {
        NmrData data;
        QStringList told;
        connect(&data, &NmrData::aboutToBeEdited, [&] { told += u"about"_s; });
        connect(&data, &NmrData::entriesChanged, [&] { told += u"entries"_s; });
        connect(&data, &NmrData::entryChanged, [&](const QUuid &id) { told += u"entry "_s + data.entryName(id); });
        connect(&data, &NmrData::activeEntryChanged,
                [&](const QUuid &id) { told += u"active "_s + data.entryName(id); });
        connect(&data, &NmrData::edited, [&](const QString &what, const NmrStack &before) {
            told += u"%1 of %2"_s.arg(what).arg(before.entries.size());
        });
        const auto said = [&] { return std::exchange(told, {}).join(u", "_s); };
        const QVariantMap list{{u"Peaks"_s, QVariantMap{{u"PeakList"_s, QVariantList{peak(1, {}, 5, 0, 1)}}}}};
        const QUuid a = data.addEntry(list, u"a"_s), b = data.addEntry(spectrum(70, {1, 2, 3}), u"b"_s),
                    c = data.addEntry(spectrum(50, {4, 5}), u"c"_s);
        QCOMPARE(
            said(),
            u"about, active a, entries, Add Spectrum of 0, about, entries, Add Spectrum of 1, about, entries, Add Spectrum of 2"_s);
        QCOMPARE(data.shownSpectrum().real().size(), 3U); // the first with points
        data.setEntryOrigParams(b, u"magres"_s, {{u"k"_s, 1}});
        QVERIFY(data.simulatedEntry() == b && data.isSimulated(b) && !data.isSimulated(a));
        const NmrStack three = data.stack();
        for (const QUuid &id : {b, b, QUuid::createUuid()})
            data.setActiveEntryId(id);
        QCOMPARE(said() + data.entryOrigParams(b, u"magres"_s)[u"k"_s].toString(), u"active b1"_s);
        for (const QUuid &id : {b, c, c})
            data.removeEntry(id);
        data.insertSpectrum(c, list); // which a plug-in was busy with
        data.insertSpectrum({}, list);
        QCOMPARE(
            said(),
            u"about, active c, entries, Remove Spectrum of 3, about, active a, entries, Remove Spectrum of 2, about, entries, Add Spectrum of 1"_s);
        data.setStack(three);
        data.setActiveEntryId(c);
        data.setStack(three);
        data.insertSpectrum(b, list);
        data.setEntryName(a, u"A"_s, u"Name"_s);
        data.setEntryPeaks(QUuid(), {}, u"Peaks"_s);
        QCOMPARE(
            said(),
            u"entries, active c, entry a, entry b, entry c, active a, about, entry b, Change Spectrum of 3, about, entry A, Name of 3"_s);
        data.announceEdit(u"All"_s);
        data.setEntryPeaks(a, {{u"k"_s, 1}}, u"Peaks"_s);
        QVERIFY(!data.withdrawEdit() && data.entryPeakList(a).size() == 1);
        data.announceEdit(u"All"_s);
        for (int value : {5, 5})
            data.setEntryValue(a, u"k"_s, value, u"Value"_s);
        QCOMPARE(said() + data.entry(a)[u"k"_s].toString(), u"about, entry A, All of 3, about, entry A, Value of 35"_s);
        data.setActiveEntryId(b);
        QVERIFY(said() == u"active b" && data.withdrawEdit() && !data.entry(a).contains(u"k"_s));
        QCOMPARE(said(), u"entry A, entry b, entry c, active A"_s); // also which one is active again
        QVERIFY(data.entry({}).isEmpty() && data.entryPeakList({}).isEmpty() && data.spectrum({}).isEmpty());
    }

    void damagedEntriesShowANote()
    {
        QVariantMap map = spectrum(70, DoubleVector(8, 0.0));
        map[u"DataPoints"_s] = QVariantList{1, 2};
        NmrItem item;
        item.nmrData()->addEntry(map, {});
        item.resize(600, 200);
        const QStringList drawn =
            Shapes::of({600, 200}, [&](QPainter *painter) { item.plot()->paintTo(painter, QRectF(0, 0, 600, 200)); });
        QVERIFY2(!drawn.filter(u"The spectrum has no data points"_s).isEmpty(), qPrintable(drawn.join(u'\n')));
    }

    // --- plots

    /// Against the plainest way, on numbers at random: groups of 20 points, blocks of 3 by 2 and less at the ends.
    void decimationKeepsWhatEveryPartHas()
    {
        std::mt19937 random(11);
        DoubleVector values(1100);
        for (double &v : values)
            v = random() % 9 == 0 ? std::nan("") : double(random() % 2001) / 1000 - 1;
        std::vector<QPointF> expected;
        for (int group = 0; group < 50; ++group) {
            int low = -1, high = -1, first = -1, last = -1;
            for (int i = 70 + 20 * group; i < 90 + 20 * group; ++i) {
                if (std::isnan(values[i]))
                    continue;
                first = first < 0 ? i : first;
                last = i;
                low = low < 0 || values[i] < values[low] ? i : low;
                high = high < 0 || values[i] > values[high] ? i : high;
            }
            for (int i : std::set<int>{first, low, high, last})
                expected.emplace_back(i, values[i]);
        }
        QVERIFY(Decimation::envelope(values, 70, 1069, 50) == expected);
        QCOMPARE(Decimation::envelope(DoubleVector(100, 1.0), -7, 40, 10).size(), size_t(2 * 10)); // more than 4 each
        QCOMPARE(Decimation::envelope(DoubleVector(100, 1.0), 60, 140, 10).size(), size_t(40)); // each of them
        QVERIFY(Decimation::envelope(values, 20, 19, 10).empty());
        // Of groups that do not divide the number of points, and beyond both ends.
        values[1] = 40;
        values[1098] = -30;
        values[1099] = 0;
        const auto all = Decimation::envelope(values, -5, 1000000, 30);
        const auto [low, high] =
            std::minmax_element(all.begin(), all.end(), [](auto a, auto b) { return a.y() < b.y(); });
        QVERIFY(std::is_sorted(all.begin(), all.end(), [](auto a, auto b) { return a.x() < b.x(); }));
        QVERIFY(*high == QPointF(1, 40) && *low == QPointF(1098, -30) && all.back() == QPointF(1099, 0));
        QVERIFY(all.size() <= 4 * 30);

        constexpr int width = 13;
        for (int top : {0, 2}) {
            const auto grid = Decimation::blockMaxima({values.data(), 13 * 12}, width, {1, 11}, {top, top + 6}, 4, 4);
            QCOMPARE(QSize(grid.columns, grid.rows), QSize(4, 4));
            QVERIFY(grid.firstColumn == 2 && grid.columnStep == 3 && grid.firstRow == top + 0.5 && grid.rowStep == 2);
            for (int row = 0; row < 4; ++row)
                for (int column = 0; column < 4; ++column) {
                    double largest = 0;
                    for (int y = top + 2 * row; y <= std::min(top + 6, top + 2 * row + 1); ++y)
                        for (int x = 1 + 3 * column; x <= std::min(11, 3 + 3 * column); ++x)
                            if (std::abs(values[y * width + x]) > std::abs(largest))
                                largest = values[y * width + x];
                    QCOMPARE(grid.cell(column, row), largest);
                }
        }
        QCOMPARE(Decimation::blockMaxima(values, width, {5, 4}, {0, 3}, 4, 4).columns, 0);
        const auto projections = Decimation::projections(DoubleVector{1, 5, 3, -1, -2, 9}, 3);
        QCOMPARE(projections.columns, (DoubleVector{1, 5, 9}));
        QCOMPARE(projections.rows, (DoubleVector{5, 9}));
    }

    /// A line has a point on each edge of the grid that the level crosses, and goes from edge to edge of a square.
    void contoursCrossEdgesOnce()
    {
        std::mt19937 random(3);
        for (int round = 0; round < 40; ++round) {
            const int columns = 5 + round % 4, rows = 4 + round % 3;
            DoubleVector values(size_t(columns * rows));
            for (double &v : values)
                v = double(random() % 1000) + 0.25;
            const double level = 400 + 5 * round;
            std::map<std::pair<int, int>, int> crossings; // of places in thousandths: how many lines should be there
            const auto at = [](const QPointF &p) { return std::pair(qRound(1e3 * p.x()), qRound(1e3 * p.y())); };
            const auto edge = [&](int x, int y, int dx, int dy) {
                const double a = values[y * columns + x], b = values[(y + dy) * columns + x + dx];
                if ((a >= level) != (b >= level))
                    ++crossings[at(QPointF(x, y) + QPointF(dx, dy) * ((level - a) / (b - a)))];
            };
            for (int y = 0; y < rows; ++y)
                for (int x = 0; x < columns; ++x) {
                    if (x + 1 < columns)
                        edge(x, y, 1, 0);
                    if (y + 1 < rows)
                        edge(x, y, 0, 1);
                }
            for (const QPolygonF &line : Contours::lines(values, columns, rows, level)) {
                const auto isEnd = [&](const QPointF &p) {
                    return p.x() == 0 || p.y() == 0 || p.x() == columns - 1 || p.y() == rows - 1;
                };
                QVERIFY(line.isClosed() || (isEnd(line.first()) && isEnd(line.last())));
                for (qsizetype i = line.isClosed() ? 1 : 0; i < line.size(); ++i)
                    --crossings[at(line[i])];
                for (qsizetype i = 1; i < line.size(); ++i) {
                    const QPointF middle = (line[i] + line[i - 1]) / 2, step = line[i] - line[i - 1];
                    const QRectF square(std::floor(middle.x()), std::floor(middle.y()), 1, 1);
                    QVERIFY(square.contains(line[i]) && square.contains(line[i - 1]) && !step.isNull());
                }
            }
            for (const auto &[place, left] : crossings)
                QCOMPARE(left, 0);
        }
        using Levels = std::vector<double>;
        QCOMPARE(Contours::levels(DoubleVector{0, 8, -2}, 0.25, 2, 10), (Levels{2, 4})); // neither 8 nor -2 itself
        QCOMPARE(Contours::levels(DoubleVector{0, 3, -8}, 0.25, 2, 2), (Levels{2, -2, -4}));
        QCOMPARE(Contours::levels(DoubleVector{0, 10, -4}, 0.1, 2, 10), (Levels{1, -1, 2, -2, 4, 8}));
        QCOMPARE(Contours::levels(DoubleVector{-1, -8}, 0.25, 2, 1), (Levels{-2}));
        QCOMPARE(Contours::levels(DoubleVector{0, 0}, 0.25, 2, 3), Levels());
    }

    /// Two summits in opposite corners: apart when the middle lies below the level, joined when above.
    void contoursAtSaddles()
    {
        for (const auto &[level, x] : {std::pair(0.6, 0.2), std::pair(0.4, 0.8)}) {
            const auto lines = Contours::lines(DoubleVector{1, 0, 0, 1}, 2, 2, level);
            QCOMPARE(lines.size(), size_t(2));
            for (const QPolygonF &line : lines)
                QVERIFY(std::abs(QLineF(line.first(), line.last()).length() - 0.4 * M_SQRT2) < 1e-12);
            QVERIFY(lines[0].boundingRect().contains(QPointF(x, 0.2))
                    || lines[1].boundingRect().contains(QPointF(x, 0.2)));
        }
    }

    void plotsKeepTheirSizeAtEveryResolution()
    {
        NmrItem item;
        const QVariantList peaks{peak(1, u"C1"_s, 50, 0, 1), peak(2, u"C2"_s, 50, 0, 1)};
        item.nmrData()->addEntry(spectrum(70, {0, 0, 1, 0, 0, 0, 0}, peaks), {});
        const auto box = [&](int dotsPerMeter) { // of all pixels that are not white
            QImage image(400, 300, QImage::Format_RGB32);
            image.fill(Qt::white);
            image.setDotsPerMeterX(dotsPerMeter);
            image.setDotsPerMeterY(dotsPerMeter);
            item.plot()->paintTo(std::make_unique<QPainter>(&image).get(), QRectF(20, 20, 350, 250));
            QRect ink;
            for (int i = 0; i < 400 * 300; ++i)
                if (image.pixel(i % 400, i / 400) != qRgb(255, 255, 255))
                    ink |= QRect(i % 400, i / 400, 1, 1);
            return ink;
        };
        QCOMPARE(box(47244), box(3780)); // 1200 and 96 dpi
        QVERIFY(box(3780).width() > 300 && box(3780).height() > 200);
        const auto *traces = dynamic_cast<StackedTraces *>(item.plot()->content());
        QCOMPARE(traces->labelBand()->visibleTexts(), QStringList{u"C1,C2  50.0"_s});
    }

    /// What is removed just before another size or a turn in sight comes is not drawn on.
    void plotIsDrawnAnewAtAnotherSize()
    {
        const auto shown = [](const NmrItem &item, const QSize &size) {
            item.plot()->resize(size);
            QImage image(size, QImage::Format_RGB32);
            image.fill(Qt::white);
            item.plot()->render(&image);
            return image;
        };
        NmrItem one, two;
        for (NmrItem *item : {&one, &two})
            item->nmrData()->addEntry(spectrum(70, {1, 2, 3}), {});
        QUuid second = two.nmrData()->addEntry(spectrum(60, {0, 1, 0}), {});
        QVERIFY(two.plot()->isVisible());
        QVERIFY(shown(two, {400, 300}) != shown(one, {400, 300}));
        two.nmrData()->removeEntry(second);
        QCOMPARE(shown(two, {420, 310}), shown(one, {420, 310}));
        second = two.nmrData()->addEntry(spectrum(60, {0, 1, 0}), {});
        shown(two, {420, 310});
        two.setVisible(false);
        two.nmrData()->removeEntry(second);
        QVERIFY(two.plot()->content()); // somebody asks while it is out of sight
        two.setVisible(true);
        QCOMPARE(shown(two, {420, 310}), shown(one, {420, 310}));
        // A legend of three names in two columns has a place without a name.
        for (int i = 0; i < 2; ++i)
            two.nmrData()->addEntry(spectrum(60, {0, 1, 0}), u"a long name of a spectrum"_s);
        const QImage before = shown(two, {420, 310});
        shown(two, {400, 310});
        QCOMPARE(shown(two, {420, 310}), before);
    }

    void plotFollowsItsData()
    {
        NmrItem item;
        const QUuid id = item.nmrData()->addEntry(spectrum(70, {1, 2, 3}), {});
        QVERIFY(item.plot()->content());
        item.plot()->xAxis->setRange(55, 65);
        item.nmrData()->insertSpectrum(id, spectrum(70, {3, 2, 1}));
        QVERIFY(item.plot()->content());
        QCOMPARE(item.plot()->xAxis->range().upper, 65.0); // an edit keeps what one looks at
        QVERIFY(QMetaObject::invokeMethod(item.plot(), "fullReset") && item.plot()->content());
        QVERIFY(item.plot()->xAxis->range().upper > 69.9);
        const auto part = [&](int i) {
            const QCPRange range = item.plot()->content()->ranges()[i];
            return u"%1 %2"_s.arg(range.lower, 0, 'f', 5).arg(range.upper, 0, 'f', 5);
        };
        item.plot()->scaleIntensity(2); // about the base line: half of -0.09 to 3.06
        QCOMPARE(part(1), u"0.01429 0.51429"_s);
        item.nmrData()->insertSpectrum(id, spectrum(70, {3, 1, 2}));
        QCOMPARE(part(1), u"0.01429 0.51429"_s);
        const QUuid second = item.nmrData()->addEntry(spectrum(70, {0, 1}), {}); // all of what comes is shown
        QCOMPARE(part(0) + u' ' + part(1) + u' ' + part(2), u"50.00000 70.00000 0.00000 1.00000 0.00000 1.00000"_s);
        item.plot()->scaleIntensity(3);
        item.nmrData()->setEntryName(second, u"b"_s);
        QCOMPARE(part(1) + u' ' + part(2), u"0.00000 1.00000 0.00000 3.00000"_s);
        item.nmrData()->removeEntry(second);
        item.nmrData()->insertSpectrum(id, spectrum(70, {0, 0, 0}));
        QVERIFY(item.plot()->content() && std::abs(item.plot()->yAxis->range().lower + 0.133) < 1e-9
                && std::abs(item.plot()->yAxis->range().upper - 1.022) < 1e-9);
        item.nmrData()->removeEntry(id);
        QVERIFY(!item.plot()->content());
    }
};

QTEST_MAIN(TestViews)
#include "tst_views.moc"
