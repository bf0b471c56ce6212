#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <QUndoStack>
#include <vector>

namespace zel::desktop {

/// The records of a table, one in each row: its number, then a value for each column of the table. Values can be
/// changed, and each change undone. Faults of records are shown beside their numbers.
class RecordTable : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// A value is null if the record does not have it.
    struct Record {
        QString number;
        QStringList values;
    };

    explicit RecordTable(QObject* parent = nullptr);

    /// Shows other records, without faults. Forgets the changes.
    void Set(const QStringList& columns, std::vector<Record> records);
    const QStringList& Columns() const noexcept { return m_columns; }
    const Record& At(int row) const { return m_rows[static_cast<std::size_t>(row)].record; }

    /// Marks columns that are not used, by their index in Columns.
    /// @param reasons  for each column why it is not used; empty for one that is.
    void SetUnused(const QStringList& reasons);
    void SetFaults(int row, const QStringList& faults);
    const QStringList& Faults(int row) const { return m_rows[static_cast<std::size_t>(row)].faults; }
    /// Number of records with faults.
    int FaultCount() const noexcept { return m_fault_count; }

    QUndoStack& Changes() noexcept { return m_changes; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  Q_SIGNALS:
    /// A value of a record was changed.
    void recordChanged(int row);

  private:
    struct Row {
        Record record;
        QStringList faults;
    };
    class Change;
    QVariant NumberData(const Row& row, int role) const;

    QStringList m_columns;
    QStringList m_unused;
    std::vector<Row> m_rows;
    int m_fault_count = 0;
    QUndoStack m_changes;
};

}  // namespace zel::desktop
