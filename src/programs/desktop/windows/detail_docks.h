#pragma once

#include <QObject>
#include <QRect>
#include <QString>
#include <vector>

#include "programs/desktop/models/message_details.h"

class QDockWidget;
class QMainWindow;

namespace zel::desktop {

class DetailTable;
class PaletteView;

/// Panels with the contents of a message: rows, tab fields, fonts, palette, details.
class DetailDocks : public QObject {
    Q_OBJECT

  public:
    explicit DetailDocks(QMainWindow* window);

    void Show(const MessageDetails& details);
    const std::vector<QDockWidget*>& Docks() const noexcept { return m_docks; }
    /// The selected tab field, an index in MessageDetails::fields; -1 for none.
    int SelectedField() const;
    void SelectField(int field);

  Q_SIGNALS:
    /// A row or field is selected, or none any more.
    /// @param part  its part of the picture; empty for none.
    void marked(const QRect& part);
    /// A font is opened.
    void fontOpened(const QString& file);
    /// A tab field is opened, by its index in MessageDetails::fields.
    void fieldOpened(int field);
    /// Describes the selected entry of the palette; empty for none.
    void pointedAt(const QString& description);

  private:
    DetailTable* AddTable(const QString& title, const QString& name, const QString& empty_text,
                          const QStringList& headers);
    void Add(const QString& title, const QString& name, QWidget* content);
    void Arrange();
    void ConnectTables();
    void MarkSelected();
    void UpdateTitlesSoon();
    void UpdateTitles();

    QMainWindow* m_window;
    MessageDetails m_details;
    std::vector<QDockWidget*> m_docks;
    bool m_titles_pending = false;
    DetailTable* m_rows;
    DetailTable* m_fields;
    DetailTable* m_fonts;
    PaletteView* m_palette;
    DetailTable* m_properties;
};

}  // namespace zel::desktop
