#include "programs/desktop/widgets/detail_table.h"

#include <QHeaderView>
#include <QPainter>
#include <QStandardItemModel>
#include <utility>

namespace zel::desktop {

namespace {

constexpr int kBetweenColumns = 6;

/// A frame around it shows also a colour that is the table's own.
QPixmap SwatchOf(const QColor& colour) {
    constexpr int kSide = 14;
    QPixmap swatch(kSide, kSide);
    swatch.fill(colour);
    QPainter painter(&swatch);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, kSide - 1, kSide - 1);
    return swatch;
}

}  // namespace

DetailTable::DetailTable(const QStringList& heads, QString words, QWidget* parent)
    : QTableView(parent),
      m_lines(new QStandardItemModel(0, static_cast<int>(heads.size()), this)),
      m_words(std::move(words)) {
    constexpr int kAroundText = 8;
    m_lines->setHorizontalHeaderLabels(heads);
    setModel(m_lines);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kAroundText);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void DetailTable::Clear() {
    m_lines->setRowCount(0);
}

void DetailTable::AddLine(const QStringList& texts, const QColor& colour) {
    QList<QStandardItem*> items;
    for (const QString& text : texts) {
        items.append(new QStandardItem(text));
        items.back()->setEditable(false);
        items.back()->setToolTip(text);
    }
    if (colour.isValid()) items.front()->setData(SwatchOf(colour), Qt::DecorationRole);
    m_lines->appendRow(items);
}

void DetailTable::FitColumns() {
    QHeaderView& heads = *horizontalHeader();
    heads.setStretchLastSection(false);
    const int last = m_lines->columnCount() - 1;
    for (int column = 0; column < last; ++column) {
        resizeColumnToContents(column);
        setColumnWidth(column, columnWidth(column) + kBetweenColumns);
    }
    heads.resizeSection(last, heads.minimumSectionSize());
    heads.setStretchLastSection(true);
}

void DetailTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (m_lines->rowCount() != 0) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, m_words);
}

}  // namespace zel::desktop
