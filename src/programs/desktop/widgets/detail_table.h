#pragma once

#include <QStringList>
#include <QTableView>

class QStandardItemModel;

namespace zel::desktop {

/// A list of facts in columns, a line each; words stand in its middle while it has none.
class DetailTable : public QTableView {
    Q_OBJECT

  public:
    /// @param words  "No rows".
    DetailTable(const QStringList& heads, QString words, QWidget* parent = nullptr);

    void Clear();
    /// @param colour  shown before the first text; an invalid one isn't.
    void AddLine(const QStringList& texts, const QColor& colour = {});
    /// To be called behind the last line: the last column takes what the others leave.
    void FitColumns();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QStandardItemModel* m_lines;
    const QString m_words;
};

}  // namespace zel::desktop
