#include "programs/desktop/models/record_table.h"

#include <QApplication>
#include <QStyle>
#include <utility>

#include "programs/desktop/common/plain_text.h"

namespace zel::desktop {

namespace {

QIcon WarningIcon() {
    return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
}

}  // namespace

/// Puts a value in place of another one.
class RecordTable::Change : public QUndoCommand {
  public:
    Change(RecordTable& table, const QModelIndex& index, QString value)
        : m_table(table), m_row(index.row()), m_column(index.column() - 1), m_other(std::move(value)) {
        setText(table.m_columns[m_column]);
    }

    void undo() override { Exchange(); }
    void redo() override { Exchange(); }

  private:
    void Exchange() {
        std::swap(m_table.m_rows[static_cast<std::size_t>(m_row)].record.values[m_column], m_other);
        const QModelIndex index = m_table.index(m_row, static_cast<int>(m_column) + 1);
        Q_EMIT m_table.dataChanged(index, index);
        Q_EMIT m_table.recordChanged(m_row);
    }

    RecordTable& m_table;
    const int m_row;
    const qsizetype m_column;
    /// The value that is not in the table.
    QString m_other;
};

RecordTable::RecordTable(QObject* parent) : QAbstractTableModel(parent) {}

void RecordTable::Set(const QStringList& columns, std::vector<Record> records) {
    beginResetModel();
    m_changes.clear();
    m_columns = columns;
    m_unused = QStringList(columns.size(), QString());
    m_rows.clear();
    for (Record& record : records) m_rows.push_back({std::move(record), {}});
    m_fault_count = 0;
    endResetModel();
}

void RecordTable::SetUnused(const QStringList& reasons) {
    m_unused = reasons;
    Q_EMIT headerDataChanged(Qt::Horizontal, 1, static_cast<int>(m_columns.size()));
}

void RecordTable::SetFaults(int row, const QStringList& faults) {
    Row& changed = m_rows[static_cast<std::size_t>(row)];
    if (changed.faults == faults) return;
    m_fault_count += (faults.isEmpty() ? 0 : 1) - (changed.faults.isEmpty() ? 0 : 1);
    changed.faults = faults;
    Q_EMIT dataChanged(index(row, 0), index(row, 0));
}

int RecordTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int RecordTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size()) + 1;
}

QVariant RecordTable::NumberData(const Row& row, int role) const {
    const bool good = row.faults.isEmpty();
    switch (role) {
        case Qt::DisplayRole:
            return row.record.number;
        case Qt::DecorationRole:
            return good ? QVariant() : WarningIcon();
        case Qt::ToolTipRole:
            return PlainToolTip(row.faults.join(u'\n'));
        case Qt::AccessibleTextRole:
            return good ? tr("Record %1").arg(row.record.number)
                        : tr("Record %1, faulty: %2").arg(row.record.number, row.faults.join(QStringLiteral("; ")));
        default:
            return {};
    }
}

QVariant RecordTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    if (index.column() == 0) return NumberData(row, role);
    const QString& value = row.record.values[index.column() - 1];
    if (role == Qt::DisplayRole || role == Qt::EditRole) return value;
    return role == Qt::ToolTipRole ? QVariant(PlainToolTip(value)) : QVariant();
}

QVariant RecordTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (section == 0) return role == Qt::DisplayRole ? QVariant(tr("Record")) : QVariant();
    const qsizetype column = section - 1;
    if (column >= m_columns.size()) return {};
    const QString& unused = m_unused[column];
    switch (role) {
        case Qt::DisplayRole:
            return m_columns[column];
        case Qt::DecorationRole:
            return unused.isEmpty() ? QVariant() : WarningIcon();
        case Qt::ToolTipRole:
            return PlainToolTip(unused.isEmpty() ? m_columns[column] : unused);
        case Qt::AccessibleTextRole:
            return unused.isEmpty() ? m_columns[column] : m_columns[column] + QStringLiteral(", ") + unused;
        default:
            return {};
    }
}

bool RecordTable::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || index.column() == 0) return false;
    const QString text = value.toString();
    if (text != index.data(Qt::EditRole).toString()) m_changes.push(new Change(*this, index, text));
    return true;
}

Qt::ItemFlags RecordTable::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() != 0 ? flags | Qt::ItemIsEditable : flags;
}

}  // namespace zel::desktop
