// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/molecule/MoleculeItem.h"

#include "analysis/Contacts.h"
#include "analysis/PrincipalAxes.h"
#include "data/AtomSelection.h"
#include "items/molecule/ElementStyle.h"
#include "data/PluginCall.h"
#include "items/table/TableItem.h"
#include "support/MetaTypes.h"

#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneWheelEvent>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMap>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>

#include <cmath>

namespace Workbench {

namespace {

const QString idKey = QStringLiteral("ID");
const QString rotationKey = QStringLiteral("Rotation"); // a quaternion: scalar, x, y, z
const QString zoomKey = QStringLiteral("Zoom");
const QString labelsKey = QStringLiteral("Labels");
const QString cellKey = QStringLiteral("Cell");
const QString hydrogensKey = QStringLiteral("Hydrogens");
const QString contentsKey = QStringLiteral("Contents");
const QString cellsKey = QStringLiteral("Cells");
const QString tensorsKey = QStringLiteral("Tensors");
const QString tensorSizeKey = QStringLiteral("TensorSize");
const QString tensorAxesKey = QStringLiteral("TensorAxes");
const QString measurementsKey = QStringLiteral("Measurements"); // lists of atom, cell along a, b, c
const QString contactsKey = QStringLiteral("Contacts");

constexpr double contactReach = 6; // Angstrom
constexpr size_t mostContacts = 12;
constexpr int captionSize = 11;

QString angstrom(double distance)
{
    return QString::number(distance, 'f', 3) + QStringLiteral(" \u00c5");
}

double degrees(double cosine)
{
    return std::acos(std::clamp(cosine, -1.0, 1.0)) * 180 / M_PI;
}

/// "13C" as it is written in print.
QString raised(const QString &nucleus)
{
    QString text;
    for (QChar c : nucleus)
        text += c.isDigit()
            ? QStringLiteral("\u2070\u00b9\u00b2\u00b3\u2074\u2075\u2076\u2077\u2078\u2079")[c.digitValue()]
            : c;
    return text;
}

/// Carbon, hydrogen, then the rest by the alphabet: the Hill order, of everything that is drawn or not.
QString formula(const Molecule &molecule)
{
    QMap<QString, int> counts;
    for (const auto &atom : molecule.atoms)
        ++counts[ElementStyle::symbol(atom.element)];
    QStringList symbols = counts.keys();
    if (symbols.contains(QLatin1String("C"))) {
        for (const char *first : {"H", "C"}) {
            if (symbols.removeOne(QLatin1String(first)))
                symbols.prepend(QLatin1String(first));
        }
    }
    QString text;
    for (const QString &symbol : std::as_const(symbols)) {
        text += symbol;
        for (QChar digit : counts[symbol] > 1 ? QString::number(counts[symbol]) : QString())
            text += QChar(0x2080 + digit.digitValue());
    }
    return text;
}

/// As a document keeps them.
QVariantList measurementNumbers(const QList<QList<AtomImage>> &measurements)
{
    QVariantList all;
    for (const QList<AtomImage> &atoms : measurements) {
        DoubleVector numbers;
        for (const AtomImage &image : atoms) {
            numbers.push_back(image.atom);
            numbers.insert(numbers.end(), image.cell.begin(), image.cell.end());
        }
        if (atoms.size() > 1)
            all.append(QVariant::fromValue(numbers));
    }
    return all;
}

/// Those that make sense for so many atoms.
QList<QList<AtomImage>> measurementsFrom(const QVariantList &stored, int atomCount)
{
    const auto isWhole = [](double x) { return std::abs(x) < 1e6 && x == std::round(x); };
    QList<QList<AtomImage>> measurements;
    for (const QVariant &value : stored) {
        const auto numbers = value.value<DoubleVector>();
        if (numbers.size() < 8 || numbers.size() > 16 || numbers.size() % 4 != 0
            || !std::all_of(numbers.begin(), numbers.end(), isWhole))
            continue;
        QList<AtomImage> atoms;
        for (size_t i = 0; i < numbers.size(); i += 4)
            atoms.append(AtomImage{int(numbers[i]), {int(numbers[i + 1]), int(numbers[i + 2]), int(numbers[i + 3])}});
        if (std::all_of(atoms.cbegin(), atoms.cend(),
                        [&](const AtomImage &image) { return image.atom >= 0 && image.atom < atomCount; }))
            measurements.append(atoms);
    }
    return measurements;
}

} // namespace

MoleculeItem::MoleculeItem(const QVariantMap &description, QGraphicsItem *parent)
    : DocumentItem(description.value(idKey).toUuid(), parent)
{
    setMolMap(description);
}

QVariantMap MoleculeItem::molMap() const
{
    return m_description;
}

void MoleculeItem::setMolMap(QVariantMap description)
{
    // Storing something beside the atoms must not turn the molecule back or drop the selection.
    const auto geometry = [](const QVariantMap &map) {
        return QVariantList{map.value(QStringLiteral("Atoms")), map.value(QStringLiteral("CrystallographicData"))};
    };
    const bool sameGeometry = !m_description.isEmpty() && geometry(description) == geometry(m_description);
    m_description = description;
    m_description.insert(idKey, id());
    m_assignments.reset();
    Q_EMIT assignmentsChanged();
    if (sameGeometry)
        return;
    m_measurements.clear();
    m_view.setMolecule(Molecule::fromDescription(m_description));
    m_tensorsRead = m_tensors == Tensors::None;
    m_view.setLabels(labelTexts());
    setSelectedAtoms(selectedAtoms());
    const QString text = formula(m_view.molecule());
    setTitle(text.isEmpty()               ? tr("Molecule without atoms")
                 : m_view.molecule().cell ? tr("Unit cell: %1").arg(text)
                                          : tr("Molecule: %1").arg(text));
}

const PeakAssignments &MoleculeItem::assignments() const
{
    if (!m_assignments)
        m_assignments = PeakAssignments::fromMolMap(m_description);
    return *m_assignments;
}

void MoleculeItem::setSelectedAtoms(const QSet<int> &atoms)
{
    QSet<int> known;
    for (int atom : atoms) {
        if (atom >= 0 && atom < int(m_view.molecule().atoms.size()))
            known.insert(atom);
    }
    m_view.setSelection(known);
    updateLines();
}

void MoleculeItem::receiveMessage(const QVariantMap &message, const DocumentItem *)
{
    if (AtomSelection::isMessage(message))
        setSelectedAtoms(AtomSelection::fromMessage(message));
}

void MoleculeItem::paintContent(QPainter *painter, const QRectF &content, bool)
{
    readTensors();
    m_view.paint(painter);
    paintContacts(painter, content);
    paintCaption(painter, content);
}

void MoleculeItem::paintPicture(QPainter *painter, const QRectF &area)
{
    painter->save();
    painter->translate(area.topLeft() - contentRect().topLeft());
    paintContent(painter, contentRect(), true);
    painter->restore();
}

void MoleculeItem::paintCaption(QPainter *painter, const QRectF &content) const
{
    QStringList parts;
    if (const auto [a, b, c] = m_view.cells(); a * b * c > 1)
        parts.append(tr("%1 \u00d7 %2 \u00d7 %3 cells").arg(a).arg(b).arg(c));
    switch (m_tensors) {
    case Tensors::None:
        break;
    case Tensors::Shielding:
        parts.append(tr("shielding, semi-axes |\u03c3ii|, scaled for each element"));
        break;
    case Tensors::Anisotropy:
        parts.append(tr("shielding, semi-axes |\u03c3ii \u2212 iso|, scaled for each element"));
        break;
    case Tensors::Gradient:
        parts.append(tr("electric field gradient, semi-axes |Vii|, scaled for each element"));
        break;
    }
    if (m_tensors != Tensors::None && m_view.tensorAxesVisible())
        parts.append(tr("dashed axes: negative"));
    if (parts.isEmpty())
        return;
    QFont font;
    font.setPixelSize(captionSize);
    painter->setFont(font);
    painter->setPen(QColor(0x40, 0x46, 0x4e));
    const QRectF area = content.adjusted(8, 0, -8, -3);
    painter->drawText(area, Qt::AlignLeft | Qt::AlignBottom,
                      QFontMetricsF(font).elidedText(parts.join(QStringLiteral("; ")), Qt::ElideRight, area.width()));
}

void MoleculeItem::layoutContent(const QRectF &content)
{
    m_view.setArea(content);
}

void MoleculeItem::fillContextMenu(QMenu *menu)
{
    fillLabelMenu(menu->addMenu(tr("Labels")));
    const auto add = [&](const QString &text, bool on, void (MoleculeView::*set)(bool)) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(on);
        connect(action, &QAction::toggled, this, [this, set](bool visible) {
            (m_view.*set)(visible);
            update();
        });
    };
    add(tr("Show Unit Cell"), m_view.cellVisible(), &MoleculeView::setCellVisible);
    add(tr("Show Hydrogens"), m_view.hydrogensVisible(), &MoleculeView::setHydrogensVisible);
    fillCrystalMenu(menu->addMenu(tr("Crystal")));
    fillTensorMenu(menu->addMenu(tr("Tensors")));
    const auto addMode = [&](const QString &text, bool on, void (MoleculeItem::*set)(bool)) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(on);
        connect(action, &QAction::toggled, this, set);
    };
    menu->addSeparator();
    addMode(tr("Measure Distances and Angles") + QStringLiteral("\tM"), m_measuring, &MoleculeItem::setMeasuring);
    QAction *remove = menu->addAction(tr("Remove Measurements"));
    remove->setEnabled(!m_measurements.isEmpty());
    connect(remove, &QAction::triggered, this, &MoleculeItem::removeMeasurements);
    addMode(tr("Nearest Contacts of the Selected Atom") + QStringLiteral("\tN"), m_contactsVisible,
            &MoleculeItem::setContactsVisible);
    QAction *copy = menu->addAction(tr("Copy Contacts"));
    copy->setEnabled(contactAtom() >= 0);
    connect(copy, &QAction::triggered, this, &MoleculeItem::copyContacts);
    menu->addSeparator();
    connect(menu->addAction(tr("Reset View") + QStringLiteral("\tHome")), &QAction::triggered, this,
            &MoleculeItem::resetView);
}

void MoleculeItem::fillLabelMenu(QMenu *menu)
{
    auto *group = new QActionGroup(menu);
    for (const auto &[text, labels] : {std::pair(tr("None"), Labels::None), std::pair(tr("Element"), Labels::Elements),
                                       std::pair(tr("Element and Number"), Labels::Numbers),
                                       std::pair(tr("Label of the File"), Labels::FileLabels)}) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(labels == m_labels);
        action->setEnabled(labels != Labels::FileLabels || !fileLabels().isEmpty());
        action->setVisible(labels != Labels::Numbers || fileLabels().isEmpty());
        connect(action, &QAction::triggered, this, [this, labels = labels] { setLabels(labels); });
    }
}

void MoleculeItem::fillCrystalMenu(QMenu *menu)
{
    menu->setEnabled(m_view.molecule().cell.has_value());
    const auto add = [&](QActionGroup *group, const QString &text, const Packing &packing) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(packing == m_view.packing());
        connect(action, &QAction::triggered, this, [this, packing] { setPacking(packing); });
    };
    const Packing now = m_view.packing();
    auto *contents = new QActionGroup(menu);
    add(contents, tr("Molecules"), {Packing::Contents::Molecules, now.cells});
    add(contents, tr("Cell Contents"), {Packing::Contents::Cell, now.cells});
    menu->addSeparator();
    auto *cells = new QActionGroup(menu);
    for (int n : {1, 2, 3})
        add(cells, tr("%1 \u00d7 %1 \u00d7 %1").arg(n), {now.contents, {n, n, n}});
    connect(menu->addAction(tr("Other Numbers of Cells...")), &QAction::triggered, this, &MoleculeItem::askForCells);
}

void MoleculeItem::askForCells()
{
    const auto [a, b, c] = m_view.packing().cells;
    bool accepted = false;
    const QPointer<MoleculeItem> stillThere(this);
    const QString text =
        QInputDialog::getText(viewWindow(), tr("Supercell"), tr("Numbers of cells along a, b and c:"),
                              QLineEdit::Normal, QStringLiteral("%1 %2 %3").arg(a).arg(b).arg(c), &accepted);
    if (!accepted || !stillThere)
        return;
    const QStringList words = text.split(QRegularExpression(QStringLiteral("[^0-9]+")), Qt::SkipEmptyParts);
    Packing packing = m_view.packing();
    for (size_t axis = 0; axis < 3; ++axis)
        packing.cells[axis] = words.value(qsizetype(axis)).toInt();
    if (words.size() != 3 || *std::min_element(packing.cells.begin(), packing.cells.end()) < 1)
        Q_EMIT reported(tr("\"%1\" is not understood: three whole numbers such as 2 2 1 are wanted").arg(text));
    else
        setPacking(packing);
}

void MoleculeItem::setPacking(const Packing &packing)
{
    m_view.setPacking(packing);
    const auto cells = m_view.cells();
    if (cells != packing.cells && m_view.molecule().cell)
        Q_EMIT reported(tr("%1 \u00d7 %2 \u00d7 %3 cells are shown: no more than %4 atoms can be")
                            .arg(cells[0])
                            .arg(cells[1])
                            .arg(cells[2])
                            .arg(PackedMolecule::mostAtoms));
    updateLines(); // those to contacts begin where the atom is shown now
}

void MoleculeItem::fillTensorMenu(QMenu *menu)
{
    auto *group = new QActionGroup(menu);
    for (const auto &[text, tensors] :
         {std::pair(tr("None"), Tensors::None), std::pair(tr("Shielding"), Tensors::Shielding),
          std::pair(tr("Anisotropic Part of the Shielding"), Tensors::Anisotropy),
          std::pair(tr("Electric Field Gradient"), Tensors::Gradient)}) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(tensors == m_tensors);
        action->setEnabled(tensors == Tensors::None || !tensorShapes(tensors).empty());
        connect(action, &QAction::triggered, this, [this, tensors = tensors] { setTensors(tensors); });
    }
    menu->addSeparator();
    QAction *axes = menu->addAction(tr("Principal Axes"));
    axes->setCheckable(true);
    axes->setChecked(m_view.tensorAxesVisible());
    connect(axes, &QAction::toggled, this, [this](bool visible) {
        m_view.setTensorAxesVisible(visible);
        update();
    });
    auto *sizes = new QActionGroup(menu);
    for (double size : {0.5, 1.0, 1.5, 2.0}) {
        QAction *action = menu->addAction(tr("%1 % of their size").arg(100 * size));
        action->setCheckable(true);
        action->setActionGroup(sizes);
        action->setChecked(size == m_tensorSize);
        connect(action, &QAction::triggered, this, [this, size] { setTensorSize(size); });
    }
}

void MoleculeItem::setTensors(Tensors tensors)
{
    m_tensors = tensors;
    m_tensorsRead = false;
    update();
}

void MoleculeItem::setTensorSize(double factor)
{
    m_tensorSize = factor;
    setTensors(m_tensors);
}

void MoleculeItem::readTensors()
{
    if (m_tensorsRead)
        return;
    const std::vector<TensorShape> shapes = tensorShapes(m_tensors);
    m_view.setTensors(shapes, m_tensorSize);
    // While a document is opened the data may come later than the molecule.
    m_tensorsRead = m_tensors == Tensors::None || !shapes.empty();
}

std::vector<TensorShape> MoleculeItem::tensorShapes(Tensors tensors) const
{
    if (!m_dataSource || tensors == Tensors::None)
        return {};
    QUuid data;
    for (DocumentItem *item : linkedItems()) {
        if (auto *table = qobject_cast<TableItem *>(item); table && data.isNull())
            data = callPlugin<QList<QUuid>>(table->table(), "tableItem_sharedDataIds()").value(0);
    }
    std::vector<TensorShape> shapes(m_view.molecule().atoms.size());
    bool any = false;
    for (const CrystalAtom &atom : CrystalStructure::fromData(m_dataSource(data)).atoms) {
        const auto &tensor = tensors == Tensors::Gradient ? atom.gradient : atom.shielding;
        if (!tensor || atom.record < 0 || size_t(atom.record) >= shapes.size())
            continue;
        const PrincipalAxes principal(*tensor);
        const double iso = (principal.values[0] + principal.values[1] + principal.values[2]) / 3;
        TensorShape &shape = shapes[size_t(atom.record)];
        for (size_t k = 0; k < 3; ++k) {
            shape.values[k] = principal.values[k] - (tensors == Tensors::Anisotropy ? iso : 0);
            shape.axes[k] =
                QVector3D(float(principal.axes[k][0]), float(principal.axes[k][1]), float(principal.axes[k][2]));
        }
        shape.exists = any = true;
    }
    return any ? shapes : std::vector<TensorShape>();
}

void MoleculeItem::setMeasuring(bool measuring)
{
    if (measuring == m_measuring)
        return;
    m_measuring = measuring;
    setCursor(measuring ? Qt::CrossCursor : Qt::ArrowCursor);
    endMeasurement();
    updateLines();
    Q_EMIT reported(measuring
                        ? tr("Measuring: click two atoms for their distance, a third for an angle, a fourth for a "
                             "torsion angle; beside the atoms to start anew; Esc ends")
                        : QString());
}

void MoleculeItem::removeMeasurements()
{
    m_measurements.clear();
    updateLines();
}

void MoleculeItem::endMeasurement()
{
    if (!m_measurements.isEmpty() && m_measurements.last().size() < 2)
        m_measurements.removeLast();
    m_measurementEnded = true;
}

void MoleculeItem::measure(const std::optional<AtomImage> &picked)
{
    const bool open = !m_measurements.isEmpty() && m_measurements.last().size() < 4 && !m_measurementEnded;
    if (!picked || (open && m_measurements.last().last() == *picked)) {
        endMeasurement();
    } else {
        if (!open)
            m_measurements.append(QList<AtomImage>());
        m_measurementEnded = false;
        m_measurements.last().append(*picked);
        Q_EMIT reported(measurementText(m_measurements.last()));
    }
    updateLines();
}

QString MoleculeItem::measuredValue(const QList<AtomImage> &atoms) const
{
    QList<QVector3D> steps;
    for (qsizetype i = 1; i < atoms.size(); ++i)
        steps.append(m_view.position(atoms[i]) - m_view.position(atoms[i - 1]));
    const auto cosine = [](const QVector3D &a, const QVector3D &b) {
        return double(QVector3D::dotProduct(a, b)) / std::max(1e-30, double(a.length()) * double(b.length()));
    };
    const QString degree(QChar(0xb0));
    switch (steps.size()) {
    case 1:
        return angstrom(double(steps[0].length()));
    case 2:
        return QString::number(degrees(cosine(-steps[0], steps[1])), 'f', 1) + degree;
    case 3: {
        // Positive when, looking along the middle bond, the far one lies clockwise of the near one (IUPAC).
        const QVector3D first = QVector3D::crossProduct(steps[0], steps[1]);
        const QVector3D second = QVector3D::crossProduct(steps[1], steps[2]);
        const double sign = QVector3D::dotProduct(first, steps[2]) < 0 ? -1 : 1;
        return QString::number(sign * degrees(cosine(first, second)), 'f', 1) + degree;
    }
    default:
        return {};
    }
}

QString MoleculeItem::measurementText(const QList<AtomImage> &atoms) const
{
    QStringList names;
    for (const AtomImage &image : atoms)
        names.append(atomName(image.atom));
    return names.join(QChar(0x2013)) + QStringLiteral("  ") + measuredValue(atoms);
}

QStringList MoleculeItem::measurements() const
{
    QStringList texts;
    for (const QList<AtomImage> &atoms : m_measurements)
        if (atoms.size() > 1)
            texts.append(measurementText(atoms));
    return texts;
}

void MoleculeItem::setContactsVisible(bool visible)
{
    m_contactsVisible = visible;
    if (visible && contactAtom() < 0)
        Q_EMIT reported(tr("Click an atom to see what is near it"));
    updateLines();
}

int MoleculeItem::contactAtom() const
{
    const QSet<int> &selection = m_view.selection();
    return selection.isEmpty() ? -1 : *std::min_element(selection.cbegin(), selection.cend());
}

std::vector<Contact> MoleculeItem::contacts() const
{
    return nearestContacts(m_view.molecule(), contactAtom(), contactReach, mostContacts);
}

QString MoleculeItem::contactsText() const
{
    const int atom = contactAtom();
    if (atom < 0)
        return {};
    const auto element = [&](int of) { return ElementStyle::symbol(m_view.molecule().atoms[size_t(of)].element); };
    const QString nucleus = usualNucleus(element(atom));
    QStringList lines{tr("atom\tneighbour\tcell\tdistance / \u00c5\tnuclei\tdipolar coupling / kHz")};
    for (const Contact &contact : contacts()) {
        const QString other = usualNucleus(element(contact.image.atom));
        const double coupling = dipolarCoupling(nucleus, other, contact.distance) / 1000;
        const auto &[a, b, c] = contact.image.cell;
        lines.append(QStringList{atomName(atom), atomName(contact.image.atom),
                                 QStringLiteral("%1 %2 %3").arg(a).arg(b).arg(c),
                                 QString::number(contact.distance, 'f', 4), nucleus + u' ' + other,
                                 coupling == 0 ? QString() : QString::number(coupling, 'f', 4)}
                         .join(u'\t'));
    }
    return lines.join(u'\n') + u'\n';
}

void MoleculeItem::copyContacts() const
{
    QGuiApplication::clipboard()->setText(contactsText());
}

void MoleculeItem::updateLines()
{
    QList<AtomLine> lines;
    for (const QList<AtomImage> &atoms : std::as_const(m_measurements)) {
        for (qsizetype i = 1; i < atoms.size(); ++i)
            lines.append({atoms[i - 1], atoms[i], {}});
        if (atoms.size() == 1)
            lines.append({atoms[0], atoms[0], QStringLiteral("?")});
        else if (atoms.size() == 3)
            lines.append({atoms[1], atoms[1], measuredValue(atoms)});
        else if (atoms.size() == 2 || atoms.size() == 4)
            lines[lines.size() - (atoms.size() == 2 ? 1 : 2)].text = measuredValue(atoms);
    }
    if (m_contactsVisible) {
        for (const Contact &contact : contacts()) {
            // From where the atom is shown.
            const AtomImage from = m_view.firstImage(contactAtom());
            AtomImage to = contact.image;
            for (size_t axis = 0; axis < 3; ++axis)
                to.cell[axis] += from.cell[axis];
            lines.append({from, to, {}});
        }
    }
    m_view.setLines(lines);
    update();
}

void MoleculeItem::paintContacts(QPainter *painter, const QRectF &content) const
{
    const int atom = contactAtom();
    if (!m_contactsVisible || atom < 0)
        return;
    const auto element = [&](int of) { return ElementStyle::symbol(m_view.molecule().atoms[size_t(of)].element); };
    const QString nucleus = usualNucleus(element(atom));
    QFont font;
    font.setPixelSize(captionSize);
    const QFontMetricsF metrics(font);
    QList<QStringList> rows;
    for (const Contact &contact : contacts()) {
        const QString other = usualNucleus(element(contact.image.atom));
        const double coupling = dipolarCoupling(nucleus, other, contact.distance) / 1000;
        const QString kilohertz = QString::number(coupling, 'f', std::abs(coupling) < 0.1 ? 3 : 2);
        rows.append({atomName(contact.image.atom), angstrom(contact.distance),
                     raised(nucleus) + u'\u2013' + raised(other),
                     coupling == 0 ? QString() : QString(kilohertz).replace(u'-', QChar(0x2212)) + tr(" kHz")});
    }
    std::array<double, 4> widths{};
    for (const QStringList &row : std::as_const(rows))
        for (size_t column = 0; column < 4; ++column)
            widths[column] = std::max(widths[column], metrics.horizontalAdvance(row[qsizetype(column)]) + 10);
    const double height = metrics.height() + 1;
    const QString title = tr("Nearest to %1").arg(atomName(atom));
    const double width = std::max(widths[0] + widths[1] + widths[2] + widths[3], metrics.horizontalAdvance(title) + 10);
    QRectF box(content.left() + 6, content.top() + 6, width + 6, height * double(rows.size() + 1) + 6);
    // On the other side than the atom.
    if (m_view.atomPosition(atom).x() < content.center().x())
        box.moveRight(content.right() - 6);
    painter->save();
    painter->setPen(QPen(QColor(0xb8, 0xbe, 0xc6), 1));
    painter->setBrush(QColor(255, 255, 255, 240));
    painter->drawRoundedRect(box, 3, 3);
    painter->setPen(Qt::black);
    double y = box.top() + 3;
    font.setBold(true);
    painter->setFont(font);
    painter->drawText(QRectF(box.left() + 6, y, width, height), Qt::AlignVCenter, title);
    font.setBold(false);
    painter->setFont(font);
    for (const QStringList &row : std::as_const(rows)) {
        y += height;
        double x = box.left() + 6;
        for (size_t column = 0; column < 4; ++column) {
            const Qt::Alignment side = column % 2 == 1 ? Qt::AlignRight : Qt::AlignLeft; // numbers to the right
            painter->drawText(QRectF(x, y, widths[column] - 8, height), int(side | Qt::AlignVCenter),
                              row[qsizetype(column)]);
            x += widths[column];
        }
    }
    painter->restore();
}

QString MoleculeItem::atomName(int atom) const
{
    const QStringList labels = m_labels == Labels::Numbers ? QStringList() : fileLabels();
    const QString label = labels.value(atom);
    return label.isEmpty()
        ? ElementStyle::symbol(m_view.molecule().atoms[size_t(atom)].element) + QString::number(atom + 1)
        : label;
}

void MoleculeItem::setLabels(Labels labels)
{
    m_labels = labels;
    m_view.setLabels(labelTexts());
    update();
}

QStringList MoleculeItem::labelTexts() const
{
    if (m_labels == Labels::None)
        return {};
    // A number of our own beside the file's labels would name other atoms than the table does.
    if (const QStringList ofTable = fileLabels();
        m_labels == Labels::FileLabels || (m_labels == Labels::Numbers && !ofTable.isEmpty()))
        return ofTable;
    QStringList texts;
    for (const Molecule::Atom &atom : m_view.molecule().atoms) {
        texts.append(ElementStyle::symbol(atom.element));
        if (m_labels == Labels::Numbers)
            texts.last() += QString::number(texts.size());
    }
    return texts;
}

QStringList MoleculeItem::fileLabels() const
{
    QStringList texts(qsizetype(m_view.molecule().atoms.size()));
    bool any = false;
    for (DocumentItem *item : linkedItems()) {
        auto *table = qobject_cast<TableItem *>(item);
        for (const QVariant &row : table ? table->rowMaps() : QVariantList()) {
            const QString label = row.toMap().value(QStringLiteral("labels")).toStringList().join(u',');
            for (const QVariant &number : row.toMap().value(QStringLiteral("atomNos")).toList()) {
                const int atom = number.toInt();
                if (atom >= 0 && atom < texts.size()) {
                    texts[atom] = label;
                    any = true;
                }
            }
        }
    }
    return any ? texts : QStringList();
}

QVariantMap MoleculeItem::viewSettings() const
{
    const QQuaternion turn = m_view.rotation();
    return {{rotationKey, QVariant::fromValue(DoubleVector{turn.scalar(), turn.x(), turn.y(), turn.z()})},
            {zoomKey, m_view.zoomFactor()},
            {labelsKey, int(m_labels)},
            {cellKey, m_view.cellVisible()},
            {hydrogensKey, m_view.hydrogensVisible()},
            {contentsKey, int(packing().contents)},
            {cellsKey, QVariant::fromValue(DoubleVector(packing().cells.begin(), packing().cells.end()))},
            {tensorsKey, int(m_tensors)},
            {tensorSizeKey, m_tensorSize},
            {tensorAxesKey, m_view.tensorAxesVisible()},
            {measurementsKey, measurementNumbers(m_measurements)},
            {contactsKey, m_contactsVisible}};
}

QVariantMap MoleculeItem::madeSettings() const
{
    QVariantMap settings = viewSettings();
    settings.remove(rotationKey);
    settings.remove(zoomKey);
    return settings;
}

void MoleculeItem::setViewSettings(const QVariantMap &settings)
{
    const auto turn = settings.value(rotationKey).value<DoubleVector>();
    if (turn.size() == 4)
        m_view.setRotation(QQuaternion(float(turn[0]), float(turn[1]), float(turn[2]), float(turn[3])),
                           settings.value(zoomKey).toDouble());
    m_view.setCellVisible(settings.value(cellKey, true).toBool());
    m_view.setHydrogensVisible(settings.value(hydrogensKey, true).toBool());
    const auto cells = settings.value(cellsKey).value<DoubleVector>();
    Packing packing;
    if (settings.value(contentsKey).toInt() == int(Packing::Contents::Cell))
        packing.contents = Packing::Contents::Cell;
    for (size_t axis = 0; axis < 3 && cells.size() == 3; ++axis)
        packing.cells[axis] = cells[axis] >= 1 && cells[axis] <= 99 ? int(cells[axis]) : 1;
    m_view.setPacking(packing);
    const int tensors = settings.value(tensorsKey).toInt();
    m_view.setTensorAxesVisible(settings.value(tensorAxesKey).toBool());
    m_tensorSize = std::clamp(settings.value(tensorSizeKey, 1.0).toDouble(), 0.1, 10.0);
    setTensors(tensors >= 0 && tensors <= int(Tensors::Gradient) ? Tensors(tensors) : Tensors::None);
    m_measurements = measurementsFrom(settings.value(measurementsKey).toList(), int(m_view.molecule().atoms.size()));
    m_measurementEnded = true;
    m_contactsVisible = settings.value(contactsKey).toBool();
    updateLines();
    const int labels = settings.value(labelsKey).toInt();
    setLabels(labels >= 0 && labels <= int(Labels::FileLabels) ? Labels(labels) : Labels::None);
}

void MoleculeItem::keyPressEvent(QKeyEvent *event)
{
    constexpr QPointF step(12, 12); // pixels of a drag
    const auto turn = [&](double x, double y) { m_view.rotate({}, {x * step.x(), y * step.y()}); };
    if (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier))
        return DocumentItem::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Left:
        turn(-1, 0);
        break;
    case Qt::Key_Right:
        turn(1, 0);
        break;
    case Qt::Key_Up:
        turn(0, -1);
        break;
    case Qt::Key_Down:
        turn(0, 1);
        break;
    case Qt::Key_Plus:
    case Qt::Key_PageUp:
        m_view.zoom(1.25);
        break;
    case Qt::Key_Minus:
    case Qt::Key_PageDown:
        m_view.zoom(0.8);
        break;
    case Qt::Key_Home:
        return resetView();
    case Qt::Key_M:
        setMeasuring(!m_measuring);
        break;
    case Qt::Key_N:
        setContactsVisible(!m_contactsVisible);
        break;
    case Qt::Key_Escape:
        if (!m_measuring)
            return DocumentItem::keyPressEvent(event);
        setMeasuring(false);
        break;
    default:
        return DocumentItem::keyPressEvent(event);
    }
    update();
    event->accept();
}

void MoleculeItem::resetView()
{
    m_view.resetView();
    update();
}

void MoleculeItem::selectByClick(int atom, bool toggle)
{
    QSet<int> atoms = toggle ? selectedAtoms() : QSet<int>();
    if (atom >= 0 && toggle && atoms.contains(atom))
        atoms.remove(atom);
    else if (atom >= 0)
        atoms.insert(atom);
    if (atoms == selectedAtoms())
        return;
    setSelectedAtoms(atoms);
    sendMessage(AtomSelection::toMessage(atoms));
}

void MoleculeItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    DocumentItem::mousePressEvent(event);
    m_pressedInside = event->button() == Qt::LeftButton && !isTitleBar(event->pos());
    m_rotating = false;
}

void MoleculeItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (!m_pressedInside) {
        DocumentItem::mouseMoveEvent(event);
        return;
    }
    const QPointF moved = event->screenPos() - event->buttonDownScreenPos(Qt::LeftButton);
    m_rotating = m_rotating || moved.manhattanLength() >= QApplication::startDragDistance();
    if (m_rotating) {
        m_view.rotate(event->lastPos(), event->pos());
        update();
    }
}

void MoleculeItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    DocumentItem::mouseReleaseEvent(event);
    if (m_pressedInside && !m_rotating && m_measuring)
        measure(m_view.imageAt(event->pos()));
    else if (m_pressedInside && !m_rotating)
        selectByClick(m_view.atomAt(event->pos()), event->modifiers().testFlag(Qt::ControlModifier));
    m_pressedInside = false;
}

void MoleculeItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    const bool inside = event->button() == Qt::LeftButton && !isTitleBar(event->pos());
    if (inside && m_view.atomAt(event->pos()) < 0 && !m_measuring)
        resetView();
}

void MoleculeItem::wheelEvent(QGraphicsSceneWheelEvent *event)
{
    if (!isCurrent())
        return event->ignore();
    m_view.zoom(std::pow(1.0015, event->delta()));
    update();
    event->accept();
}

} // namespace Workbench

#include "moc_MoleculeItem.cpp"
