#pragma once

#include <QColor>
#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QPointer>
#include <functional>

#include "programs/desktop/windows/workspace.h"

class QAction;
class QMenu;

namespace zel::desktop {

class CompareCommands;
class DetailDocks;
class ExportCommands;
class FetchCommands;
class FieldCommands;
class FontCommands;
class HelpWindow;
class ImportCommands;
class LibraryCommands;
class PictureCommands;
class PictureView;
class RecentDisks;

/// The menus of the main window. The object name of each action is fixed: the tool bar, the start page and the settings
/// use it.
class MainMenus : public QObject {
    Q_OBJECT

  public:
    /// What the actions call.
    struct Targets {
        LibraryCommands& libraries;
        ImportCommands& imports;
        ExportCommands& exports;
        FetchCommands& fetches;
        FontCommands& fonts;
        PictureCommands& pictures;
        FieldCommands& fields;
        CompareCommands& compares;
        PictureView& picture;
        DetailDocks& docks;
        const RecentDisks& recent;
    };

    /// Adds the menus to the workspace's window. All arguments outlive the object.
    MainMenus(const Workspace& workspace, const Targets& targets);

    /// Appends a toggle to the menu of panels, after a separator.
    void AddToPanels(QAction* toggle);

    /// Enables the actions that are possible now.
    struct State {
        bool has_picture = false;
        bool has_messages = false;
        bool busy = false;
        bool has_fields = false;
        bool can_undo = false;
        bool can_redo = false;
        /// What is undone or done again next, such as "removal".
        QString undo_text{}, redo_text{};
        bool has_warnings = false;
    };
    void Enable(const State& state);

  Q_SIGNALS:
    void stopRequested();
    void fullScreenRequested();
    void undoRequested();

  private:
    void MakeFileMenu();
    void MakeEditMenu();
    void MakeViewMenu();
    void MakeHelpMenu();
    void EditField();
    void AddContextMenus();
    void AddBackgrounds(QMenu* menu);
    void SetBackground(const QString& name);
    QColor BackgroundColour() const;
    void AddSafeSizes(QMenu* menu);
    void AddListOptions(QMenu* menu);
    HelpWindow& Help();
    void AddPanels(QMenu* go_to, QMenu* shown);
    void FillRecentMenu();
    void FillRecentLibraries();
    QAction* AddPath(QMenu* menu, int number, const QString& path, const std::function<void()>& call);
    QAction* Add(QMenu* menu, const char* name, const QString& text, const QList<QKeySequence>& keys,
                 const std::function<void()>& call);
    void AddToggle(QMenu* menu, const char* name, const QString& text, const QKeySequence& keys, bool on,
                   const std::function<void(bool)>& call);

    const Workspace& m_workspace;
    const Targets m_to;
    QMenu* m_recent_menu = nullptr;
    QMenu* m_recent_libraries = nullptr;
    QMenu* m_panels = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_warnings = nullptr;
    QPointer<HelpWindow> m_help;
    QList<QAction*> m_needs_picture, m_needs_fields, m_needs_messages, m_needs_idle, m_needs_task;
};

}  // namespace zel::desktop
