#include "desktop/windows/detail_docks.h"

#include <QDockWidget>
#include <QFile>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <QStandardItemModel>
#include <QTableView>

#include "desktop/widgets/palette_view.h"

namespace desktop {

namespace {

QStandardItemModel& ModelOf(const QTableView& table) {
    return *static_cast<QStandardItemModel*>(table.model());
}

void AddLine(const QTableView& table, const QStringList& texts, const QColor& colour = {}) {
    QList<QStandardItem*> items;
    for (const QString& text : texts) {
        items.append(new QStandardItem(text));
        items.back()->setEditable(false);
        items.back()->setToolTip(text);
    }
    if (colour.isValid()) items.front()->setData(colour, Qt::DecorationRole);
    ModelOf(table).appendRow(items);
}

/// The last column takes what is left.
void FitColumns(QTableView& table) {
    QHeaderView& heads = *table.horizontalHeader();
    heads.setStretchLastSection(false);
    const int last = ModelOf(table).columnCount() - 1;
    for (int column = 0; column < last; ++column) table.resizeColumnToContents(column);
    heads.resizeSection(last, heads.minimumSectionSize());
    heads.setStretchLastSection(true);
}

}  // namespace

DetailDocks::DetailDocks(QMainWindow* window)
    : QObject(window),
      m_rows(AddTable(window, tr("Rows"), QStringLiteral("rows"), {tr("Row"), tr("Y"), tr("Lines"), tr("Text")})),
      m_fields(AddTable(window, tr("Tab fields"), QStringLiteral("fields"),
                        {tr("Name"), tr("Row"), tr("Left"), tr("Top"), tr("Right"), tr("Bottom")})),
      m_fonts(
          AddTable(window, tr("Fonts"), QStringLiteral("fonts"), {tr("Slot"), tr("Number"), tr("Lines"), tr("Name")})),
      m_facts(AddTable(window, tr("Details"), QStringLiteral("facts"), {tr("What"), tr("Value")})),
      m_palette(new PaletteView) {
    Add(window, tr("Palette"), QStringLiteral("palette_dock"), m_palette);
    // Rows above, the palette and the rest below, a tab each.
    QDockWidget* const rows = m_docks[0];
    QDockWidget* const fields = m_docks[1];
    QDockWidget* const fonts = m_docks[2];
    QDockWidget* const facts = m_docks[3];
    QDockWidget* const palette = m_docks[4];
    window->splitDockWidget(rows, fonts, Qt::Vertical);
    window->splitDockWidget(fonts, palette, Qt::Vertical);
    window->tabifyDockWidget(rows, fields);
    window->tabifyDockWidget(fonts, facts);
    rows->raise();
    fonts->raise();
    const auto mark = [this](const auto& list, const QModelIndex& index, auto part) {
        const auto at = static_cast<std::size_t>(index.row());
        Q_EMIT marked(index.isValid() && at < list.size() ? list[at].*part : QRect());
    };
    connect(m_rows->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this, mark](const QModelIndex& index) { mark(m_details.rows, index, &RowDetail::band); });
    connect(m_fields->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this, mark](const QModelIndex& index) { mark(m_details.fields, index, &FieldDetail::frame); });
    connect(m_fonts, &QTableView::activated, this, [this](const QModelIndex& index) {
        const auto at = static_cast<std::size_t>(index.row());
        if (at < m_details.fonts.size()) Q_EMIT fontOpened(QFile::decodeName(m_details.fonts[at].file.c_str()));
    });
    connect(m_palette, &PaletteView::pointedAt, this, &DetailDocks::pointedAt);
    m_fonts->setToolTip(tr("Enter or a double click shows a font's glyphs"));
}

QTableView* DetailDocks::AddTable(QMainWindow* window, const QString& title, const QString& name,
                                  const QStringList& heads) {
    auto* const table = new QTableView;
    auto* const model = new QStandardItemModel(0, static_cast<int>(heads.size()), table);
    model->setHorizontalHeaderLabels(heads);
    table->setObjectName(name);
    table->setAccessibleName(title);
    table->setModel(model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    Add(window, title, name + QStringLiteral("_dock"), table);
    return table;
}

void DetailDocks::Add(QMainWindow* window, const QString& title, const QString& name, QWidget* content) {
    auto* const dock = new QDockWidget(title, window);
    dock->setObjectName(name);
    dock->setWidget(content);
    window->addDockWidget(Qt::RightDockWidgetArea, dock);
    m_docks.push_back(dock);
}

void DetailDocks::Show(const MessageDetails& details) {
    m_details = details;
    for (QTableView* const table : {m_rows, m_fields, m_fonts, m_facts}) ModelOf(*table).setRowCount(0);
    for (const RowDetail& row : details.rows) {
        AddLine(*m_rows, {QString::number(row.index), QString::number(row.band.top()),
                          QString::number(row.band.height()), row.text});
    }
    for (const FieldDetail& field : details.fields) {
        const QRect& frame = field.frame;
        AddLine(*m_fields,
                {field.name, QString::number(field.row), QString::number(frame.left()), QString::number(frame.top()),
                 QString::number(frame.left() + frame.width()), QString::number(frame.top() + frame.height())},
                field.colour);
    }
    for (const FontDetail& font : details.fonts) {
        AddLine(*m_fonts, {QString::number(font.slot), QStringLiteral("%1").arg(font.number, 4, 10, QLatin1Char('0')),
                           QString::number(font.height), font.name});
    }
    for (const auto& [name, value] : details.facts) AddLine(*m_facts, {name, value});
    for (QTableView* const table : {m_rows, m_fields, m_fonts, m_facts}) FitColumns(*table);
    m_palette->Show(details.palette);
}

}  // namespace desktop
