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

/// What a message holds, beside its picture: rows, tab fields, fonts, palette, details.
class DetailDocks : public QObject {
    Q_OBJECT

  public:
    explicit DetailDocks(QMainWindow* window);

    void Show(const MessageDetails& details);
    const std::vector<QDockWidget*>& Docks() const noexcept { return m_docks; }

  Q_SIGNALS:
    /// A row or field is chosen: its part of the picture.
    void marked(const QRect& part);
    void fontOpened(const QString& file);
    void pointedAt(const QString& name);

  private:
    DetailTable* AddTable(const QString& title, const QString& name, const QString& words, const QStringList& heads);
    void Add(const QString& title, const QString& name, QWidget* content);
    void TitleSoon();
    void Title();

    QMainWindow* m_window;
    MessageDetails m_details;
    std::vector<QDockWidget*> m_docks;
    bool m_titles_due = false;
    DetailTable* m_rows;
    DetailTable* m_fields;
    DetailTable* m_fonts;
    PaletteView* m_palette;
    DetailTable* m_facts;
};

}  // namespace zel::desktop
