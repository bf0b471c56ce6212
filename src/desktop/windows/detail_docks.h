#pragma once

#include <QObject>
#include <QRect>
#include <QString>
#include <vector>

#include "desktop/models/message_details.h"

class QDockWidget;
class QMainWindow;
class QTableView;

namespace desktop {

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
    QTableView* AddTable(QMainWindow* window, const QString& title, const QString& name, const QStringList& heads);
    void Add(QMainWindow* window, const QString& title, const QString& name, QWidget* content);

    MessageDetails m_details;
    std::vector<QDockWidget*> m_docks;
    QTableView* m_rows;
    QTableView* m_fields;
    QTableView* m_fonts;
    QTableView* m_facts;
    PaletteView* m_palette;
};

}  // namespace desktop
