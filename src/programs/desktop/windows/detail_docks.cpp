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
          AddTable(tr("Rows"), QStringLiteral("rows"), tr("No rows"), {tr("Row"), tr("Y"), tr("Lines"), tr("Text")})),
      m_fields(AddTable(tr("Tab fields"), QStringLiteral("fields"), tr("No tab fields"),
                        {tr("Name"), tr("Row"), tr("Left"), tr("Top"), tr("Right"), tr("Bottom")})),
      m_fonts(AddTable(tr("Fonts"), QStringLiteral("fonts"), tr("No fonts"),
                       {tr("Slot"), tr("Number"), tr("Lines"), tr("Name")})),
      m_palette(new PaletteView) {
    m_facts = AddTable(tr("Details"), QStringLiteral("facts"), tr("No message is chosen"), {tr("What"), tr("Value")});
    // What is in the picture above, where it comes from and its colours below.
    enum { kRows, kFields, kFonts, kFacts, kPalette };
    Add(tr("Palette"), QStringLiteral("palette_dock"), m_palette);
    window->splitDockWidget(m_docks[kRows], m_docks[kFonts], Qt::Vertical);
    window->splitDockWidget(m_docks[kFonts], m_docks[kPalette], Qt::Vertical);
    window->tabifyDockWidget(m_docks[kRows], m_docks[kFields]);
    window->tabifyDockWidget(m_docks[kFonts], m_docks[kFacts]);
    m_docks[kRows]->raise();
    m_docks[kFonts]->raise();
    for (QDockWidget* const dock : m_docks) {
        for (const auto& changed : {&QDockWidget::topLevelChanged, &QDockWidget::visibilityChanged})
            connect(dock, changed, this, &DetailDocks::TitleSoon);
        connect(dock, &QDockWidget::dockLocationChanged, this, &DetailDocks::TitleSoon);
    }
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

DetailTable* DetailDocks::AddTable(const QString& title, const QString& name, const QString& words,
                                   const QStringList& heads) {
    auto* const table = new DetailTable(heads, words);
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

/// The docks tell of a change before they are where they go.
void DetailDocks::TitleSoon() {
    if (!std::exchange(m_titles_due, true)) QMetaObject::invokeMethod(this, &DetailDocks::Title, Qt::QueuedConnection);
}

/// A dock among tabs has its title on the tab.
void DetailDocks::Title() {
    m_titles_due = false;
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
    for (DetailTable* const table : {m_rows, m_fields, m_fonts, m_facts}) table->Clear();
    for (const RowDetail& row : details.rows) {
        m_rows->AddLine({QString::number(row.index), QString::number(row.band.top()),
                         QString::number(row.band.height()), row.text});
    }
    for (const FieldDetail& field : details.fields) {
        const QRect& frame = field.frame;
        m_fields->AddLine(
            {field.name, QString::number(field.row), QString::number(frame.left()), QString::number(frame.top()),
             QString::number(frame.left() + frame.width()), QString::number(frame.top() + frame.height())},
            field.colour);
    }
    for (const FontDetail& font : details.fonts) {
        m_fonts->AddLine({QString::number(font.slot), QStringLiteral("%1").arg(font.number, 4, 10, QLatin1Char('0')),
                          QString::number(font.height), font.name});
    }
    for (const auto& [name, value] : details.facts) m_facts->AddLine({name, value});
    for (DetailTable* const table : {m_rows, m_fields, m_fonts, m_facts}) table->FitColumns();
    m_palette->Show(details.palette);
}

}  // namespace zel::desktop
