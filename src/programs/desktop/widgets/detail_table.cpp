#include "programs/desktop/widgets/detail_table.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStandardItemModel>
#include <utility>

#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/widgets/readable_colours.h"

namespace zel::desktop {

namespace {

constexpr int kColumnGap = 6;

/// A square of a colour. Its frame is visible on a background of the same colour.
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

DetailTable::DetailTable(const QStringList& headers, QString empty_text, QWidget* parent)
    : QTableView(parent),
      m_rows(new QStandardItemModel(0, static_cast<int>(headers.size()), this)),
      m_copy(new QAction(tr("&Copy row"), this)),
      m_empty_text(std::move(empty_text)) {
    constexpr int kRowMargin = 8;
    connect(m_copy, &QAction::triggered, this, &DetailTable::Copy);
    addAction(m_copy);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    m_rows->setHorizontalHeaderLabels(headers);
    setModel(m_rows);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargin);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void DetailTable::Clear() {
    m_rows->setRowCount(0);
}

void DetailTable::AddRow(const QStringList& texts, const QColor& colour) {
    QList<QStandardItem*> items;
    for (const QString& text : texts) {
        items.append(new QStandardItem(text));
        items.back()->setEditable(false);
        items.back()->setToolTip(PlainToolTip(text));
    }
    if (colour.isValid()) items.front()->setData(SwatchOf(colour), Qt::DecorationRole);
    m_rows->appendRow(items);
}

void DetailTable::FitColumns() {
    QHeaderView& header = *horizontalHeader();
    header.setStretchLastSection(false);
    const int last = m_rows->columnCount() - 1;
    for (int column = 0; column < last; ++column) {
        resizeColumnToContents(column);
        setColumnWidth(column, columnWidth(column) + kColumnGap);
    }
    header.resizeSection(last, header.minimumSectionSize());
    header.setStretchLastSection(true);
}

void DetailTable::Copy() {
    QStringList texts;
    for (const QModelIndex& cell : selectionModel()->selectedIndexes()) texts.append(cell.data().toString());
    if (!texts.isEmpty()) QGuiApplication::clipboard()->setText(texts.join(u'\t'));
}

/// The window's own shortcut copies the picture.
bool DetailTable::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

/// Escape removes the selection. An arrow key selects the current row if it is not selected: a table that gets the
/// focus has a current row, but selects nothing.
void DetailTable::keyPressEvent(QKeyEvent* event) {
    const bool selected = selectionModel()->hasSelection();
    if (event->key() == Qt::Key_Escape && selected) return clearSelection();
    const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (arrow && !selected && currentIndex().isValid()) return selectRow(currentIndex().row());
    if (event->matches(QKeySequence::Copy)) return Copy();
    QTableView::keyPressEvent(event);
}

void DetailTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (m_rows->rowCount() != 0) return;
    QPainter painter(viewport());
    painter.setPen(HintColour(palette()));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, m_empty_text);
}

}  // namespace zel::desktop
