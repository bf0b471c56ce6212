#pragma once

#include <QStringList>
#include <QTableView>

class QStandardItemModel;

namespace zel::desktop {

/// A read-only table. While it is empty, it shows a message in its middle.
class DetailTable : public QTableView {
    Q_OBJECT

  public:
    /// @param empty_text  shown while the table is empty, such as "No rows".
    DetailTable(const QStringList& headers, QString empty_text, QWidget* parent = nullptr);

    void Clear();
    /// @param colour  shown before the first text, if valid.
    void AddRow(const QStringList& texts, const QColor& colour = {});
    /// Call after the last AddRow. The last column gets the remaining width.
    void FitColumns();
    /// Copies the text of the selected row, as text separated by tabs.
    void Copy();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QStandardItemModel* m_rows;
    QAction* m_copy;
    const QString m_empty_text;
};

}  // namespace zel::desktop
