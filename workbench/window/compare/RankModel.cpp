// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/RankModel.h"

#include <QFileInfo>

namespace Workbench {

namespace {

QVariant toVariant(const std::optional<double> &value)
{
    return value ? QVariant(*value) : QVariant();
}

/// χ² by degrees of freedom, of a whole row or of one of its nuclei.
template <typename Compared>
QVariant reduced(const Compared &compared)
{
    return compared.chiSquare && compared.degreesOfFreedom && *compared.degreesOfFreedom > 0
        ? QVariant(*compared.chiSquare / *compared.degreesOfFreedom)
        : QVariant();
}

} // namespace

void RankModel::setRows(std::vector<RankRow> rows, const RankLayout &layout, const QString &singleNucleus)
{
    RankTable::sort(rows, layout);
    const bool isSameTable = layout == m_layout && !m_columns.isEmpty();
    if (isSameTable && rows.size() == m_rows.size()) {
        m_rows = std::move(rows);
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    m_layout = layout;
    createColumns(singleNucleus);
    endResetModel();
}

void RankModel::createColumns(const QString &singleNucleus)
{
    using Value = std::optional<double>;
    m_columns.clear();
    const QString chiSquareTip = tr("Sum of squared differences over their expected squares, by degrees of freedom; "
                                    "about 1 for a structure that is right");
    const QString pTip = tr("Of a χ² as large by chance; below 0.001 the structure fits badly, whatever its rank");
    const auto add = [&](const QString &title, const QString &tip, Value RankRow::*member, int decimals) {
        m_columns.append({title, tip, [member](const RankRow &row) { return toVariant(row.*member); }, decimals});
    };
    m_columns.append({tr("Structure"), tr("A click opens it beside the measurement"),
                      [](const RankRow &row) { return QVariant(QFileInfo(row.file).fileName()); }, -1});
    const auto addProbabilities = [&] {
        add(tr("Probability"), tr("In this pool, given that one of its structures is right"), &RankRow::probability, 3);
        add(tr("with 1.5 σ"), tr("The same with errors half as large again"), &RankRow::wideProbability, 3);
    };
    // What the rows are sorted by comes first.
    const bool isByProbability = m_layout.parts() > 1 && !m_layout.plane;
    if (isByProbability)
        addProbabilities();
    for (int part = 0; part < m_layout.parts(); ++part) {
        const QString name = m_layout.nuclei.value(part);
        const QString nucleus = name.isEmpty() ? singleNucleus : name;
        const auto addPart = [&](const QString &title, const QString &tip, Value RankRow::Part::*member, int decimals) {
            m_columns.append({title.arg(nucleus), tip,
                              [member, part](const RankRow &row) {
                                  return row.failed() ? QVariant() : toVariant(row.parts[std::size_t(part)].*member);
                              },
                              decimals});
        };
        addPart(tr("RMSD %1"), tr("Root mean square difference, ppm, with the reference that fits best"),
                &RankRow::Part::rmsd, 2);
        addPart(tr("Reference %1"), tr("That fits best, ppm"), &RankRow::Part::reference, 2);
        m_columns.append({tr("Pairing %1").arg(nucleus), tr("How lines and sites were paired"),
                          [part](const RankRow &row) {
                              return row.failed() ? QVariant() : QVariant(row.parts[std::size_t(part)].pairing);
                          },
                          -1});
        if (m_layout.parts() == 1 || m_layout.plane)
            continue; // a single one has those of the whole
        m_columns.append(
            {tr("χ²/dof %1").arg(nucleus), chiSquareTip,
             [part](const RankRow &row) { return row.failed() ? QVariant() : reduced(row.parts[std::size_t(part)]); },
             2});
        addPart(tr("p %1"), pTip, &RankRow::Part::p, -1);
    }
    m_columns.append({tr("χ²/dof"), chiSquareTip, [](const RankRow &row) { return reduced(row); }, 2});
    add(tr("p"), pTip, &RankRow::p, -1);
    if (!isByProbability)
        addProbabilities();
    m_columns.append({tr("Fit"), tr("Bad: the differences are larger than errors explain"),
                      [](const RankRow &row) {
                          QStringList texts{row.fit == QLatin1String("bad") ? tr("bad") : row.fit, row.message};
                          texts.removeAll(QString());
                          return QVariant(texts.join(QStringLiteral(": ")));
                      },
                      -1});
}

int RankModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int RankModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant RankModel::data(const QModelIndex &index, int role) const
{
    const RankRow &row = m_rows[std::size_t(index.row())];
    const Column &column = m_columns[index.column()];
    const QVariant value = column.value(row);
    const bool isNumber = value.typeId() == QMetaType::Double;
    if (role == Qt::DisplayRole && isNumber) {
        const double number = value.toDouble();
        return column.decimals < 0 ? QString::number(number, 'g', 3) : QString::number(number, 'f', column.decimals);
    }
    if (role == Qt::DisplayRole)
        return value;
    if (role == Qt::TextAlignmentRole)
        return int((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole)
        return !row.message.isEmpty() ? row.message : index.column() == 0 ? row.file : QVariant();
    return {};
}

QVariant RankModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) {
        if (role != Qt::DisplayRole)
            return {};
        return m_rows[std::size_t(section)].failed() ? QVariant(QStringLiteral("–")) : QVariant(section + 1);
    }
    if (role == Qt::DisplayRole)
        return m_columns[section].title;
    if (role == Qt::ToolTipRole)
        return m_columns[section].tip;
    return {};
}

} // namespace Workbench

#include "moc_RankModel.cpp"
