#include "programs/desktop/windows/detail_docks.h"

#include <QAction>
#include <QDockWidget>
#include <QFile>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <algorithm>
#include <utility>

#include "programs/desktop/widgets/detail_table.h"
#include "programs/desktop/widgets/palette_view.h"

namespace zel::desktop {

DetailDocks::DetailDocks(QMainWindow* window)
    : QObject(window),
      m_window(window),
      m_rows(
          AddTable(tr("Rows"), QStringLiteral("rows"), tr("No rows"), {tr("Row"), tr("Y"), tr("Height"), tr("Text")})),
      m_fields(AddTable(tr("Tab fields"), QStringLiteral("fields"), tr("No tab fields"),
                        {tr("Name"), tr("Row"), tr("Left"), tr("Top"), tr("Right"), tr("Bottom")})),
      m_fonts(AddTable(tr("Fonts"), QStringLiteral("fonts"), tr("No fonts"),
                       {tr("Slot"), tr("Number"), tr("Height"), tr("Name")})),
      m_palette(new PaletteView) {
    m_properties =
        AddTable(tr("Details"), QStringLiteral("facts"), tr("No message selected"), {tr("Property"), tr("Value")});
    Add(tr("Palette"), QStringLiteral("palette_dock"), m_palette);
    m_fonts->setToolTip(tr("Press Enter or double-click to show the glyphs of a font"));
    m_fields->setToolTip(tr("Press Enter or double-click to change the text of a tab field"));
    Arrange();
    ConnectTables();
    connect(m_palette, &PaletteView::pointedAt, this, &DetailDocks::pointedAt);
}

/// From above: the contents of the picture, its sources, its colours.
void DetailDocks::Arrange() {
    enum { kRows, kFields, kFonts, kProperties, kPalette };
    m_window->splitDockWidget(m_docks[kRows], m_docks[kFonts], Qt::Vertical);
    m_window->splitDockWidget(m_docks[kFonts], m_docks[kPalette], Qt::Vertical);
    m_window->tabifyDockWidget(m_docks[kRows], m_docks[kFields]);
    m_window->tabifyDockWidget(m_docks[kFonts], m_docks[kProperties]);
    m_docks[kRows]->raise();
    m_docks[kFonts]->raise();
    for (QDockWidget* const dock : m_docks) {
        for (const auto& changed : {&QDockWidget::topLevelChanged, &QDockWidget::visibilityChanged})
            connect(dock, changed, this, &DetailDocks::UpdateTitlesSoon);
        connect(dock, &QDockWidget::dockLocationChanged, this, &DetailDocks::UpdateTitlesSoon);
    }
}

void DetailDocks::ConnectTables() {
    for (const auto& [table, other] : {std::pair(m_rows, m_fields), std::pair(m_fields, m_rows)}) {
        connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                [this, table = table, other = other] {
                    if (table->selectionModel()->hasSelection()) other->clearSelection();
                    MarkSelected();
                });
    }
    connect(m_fields, &QTableView::activated, this, [this](const QModelIndex& index) {
        if (static_cast<std::size_t>(index.row()) < m_details.fields.size()) Q_EMIT fieldOpened(index.row());
    });
    connect(m_fonts, &QTableView::activated, this, [this](const QModelIndex& index) {
        const auto at = static_cast<std::size_t>(index.row());
        if (at < m_details.fonts.size()) Q_EMIT fontOpened(QFile::decodeName(m_details.fonts[at].file.c_str()));
    });
}

int DetailDocks::SelectedField() const {
    const QModelIndexList rows = m_fields->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}

void DetailDocks::SelectField(int field) {
    m_fields->selectRow(field);
}

/// At most one of the two tables has a selected row.
void DetailDocks::MarkSelected() {
    const auto part_of = [](const DetailTable* table, const auto& list, auto part) {
        const QModelIndexList rows = table->selectionModel()->selectedRows();
        const auto at = rows.isEmpty() ? list.size() : static_cast<std::size_t>(rows.front().row());
        return at < list.size() ? list[at].*part : QRect();
    };
    const QRect band = part_of(m_rows, m_details.rows, &RowDetail::band);
    Q_EMIT marked(band.isNull() ? part_of(m_fields, m_details.fields, &FieldDetail::frame) : band);
}

DetailTable* DetailDocks::AddTable(const QString& title, const QString& name, const QString& empty_text,
                                   const QStringList& headers) {
    auto* const table = new DetailTable(headers, empty_text);
    table->setObjectName(name);
    table->setAccessibleName(title);
    Add(title, name + QStringLiteral("_dock"), table);
    return table;
}

void DetailDocks::Add(const QString& title, const QString& name, QWidget* content) {
    auto* const dock = new QDockWidget(title, m_window);
    dock->setObjectName(name);
    dock->setWidget(content);
    m_window->addDockWidget(Qt::RightDockWidgetArea, dock);
    m_docks.push_back(dock);
}

/// The docks signal a change before it is complete.
void DetailDocks::UpdateTitlesSoon() {
    if (!std::exchange(m_titles_pending, true))
        QMetaObject::invokeMethod(this, &DetailDocks::UpdateTitles, Qt::QueuedConnection);
}

/// A dock among tabs shows its title on the tab only.
void DetailDocks::UpdateTitles() {
    m_titles_pending = false;
    const auto is_shown = [](const QDockWidget* dock) { return dock->toggleViewAction()->isChecked(); };
    for (QDockWidget* const dock : m_docks) {
        const QList<QDockWidget*> beside = m_window->tabifiedDockWidgets(dock);
        const bool has_tab = !dock->isFloating() && std::any_of(beside.begin(), beside.end(), is_shown);
        if (has_tab == (dock->titleBarWidget() != nullptr)) continue;
        QWidget* const before = dock->titleBarWidget();
        dock->setTitleBarWidget(has_tab ? new QWidget(dock) : nullptr);
        if (before != nullptr) before->deleteLater();
    }
}

void DetailDocks::Show(const MessageDetails& details) {
    m_details = details;
    for (DetailTable* const table : {m_rows, m_fields, m_fonts, m_properties}) table->Clear();
    for (const RowDetail& row : details.rows) {
        m_rows->AddRow({QString::number(row.index), QString::number(row.band.top()), QString::number(row.band.height()),
                        row.text});
    }
    for (const FieldDetail& field : details.fields) {
        const QRect& frame = field.frame;
        m_fields->AddRow(
            {field.name, QString::number(field.row), QString::number(frame.left()), QString::number(frame.top()),
             QString::number(frame.left() + frame.width()), QString::number(frame.top() + frame.height())},
            field.colour);
    }
    for (const FontDetail& font : details.fonts) {
        m_fonts->AddRow({QString::number(font.slot), QStringLiteral("%1").arg(font.number, 4, 10, QLatin1Char('0')),
                         QString::number(font.height), font.name});
    }
    for (const auto& [name, value] : details.properties) m_properties->AddRow({name, value});
    for (DetailTable* const table : {m_rows, m_fields, m_fonts, m_properties}) table->FitColumns();
    m_palette->Show(details.palette);
}

}  // namespace zel::desktop
