#pragma once

#include <QMainWindow>
#include <QSettings>
#include <memory>
#include <optional>

#include "programs/desktop/windows/compare_commands.h"
#include "programs/desktop/windows/export_commands.h"
#include "programs/desktop/windows/fetch_commands.h"
#include "programs/desktop/windows/field_commands.h"
#include "programs/desktop/windows/font_commands.h"
#include "programs/desktop/windows/import_commands.h"
#include "programs/desktop/windows/library_commands.h"
#include "programs/desktop/windows/picture_commands.h"
#include "programs/desktop/windows/recent_disks.h"
#include "programs/desktop/windows/workspace.h"
#include "programs/desktop/work/module_desktop.h"

class QStackedWidget;

namespace zel::desktop {

class DetailDocks;
class FullScreenView;
class MainMenus;
class PictureView;
class StartPage;

/// The main window: the library, the picture of the current message and its details. It is the module's screen during
/// its lifetime.
class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    explicit MainWindow(const Places& places);
    /// Cancels running tasks. Messages that have arrived are recorded.
    ~MainWindow() override;

    /// Imports messages, folders and disks; shows fonts. Reports any other path in a notice.
    void Open(const QStringList& paths);

    void ShowNotice(const QString& text);

    /// An import, export or fetch is running.
    bool IsBusy() const;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void LayOut();
    void FillStartPage();
    void RestoreLayout();
    void ShowLibrary(const QString& file);
    void RememberLibrary();
    void StorePlace();
    void RestorePlace();
    void Connect();
    void ConnectFields();
    void ShowCurrent();
    void ShowRecording(const QString& error);
    void ShowChangedFields(int field);
    void ShowTitle();
    bool MayLeave();
    void Undo();
    bool UndoesRemoval() const;
    void ShowCount();
    void ShowFullScreen();
    void ShowPointed(const QString& description);
    void EnableActions();
    void StopTask();

    Places m_places;
    QSettings m_settings;
    ModuleDesktop m_desktop;
    LibraryPanel* m_library;
    PictureView* m_picture;
    FullScreenView* m_full_screen;
    StartPage* m_start;
    QStackedWidget* m_centre;
    NoticeBar* m_notice;
    StatusLine* m_status;
    DetailDocks* m_docks = nullptr;

    std::optional<library::Recording> m_current;
    /// Of the current message.
    QString m_title;
    /// One line about the current message.
    QString m_summary;
    const Workspace m_workspace;
    RecentDisks m_recent;
    FontCommands m_fonts;
    LibraryCommands m_libraries;
    ImportCommands m_imports;
    ExportCommands m_exports;
    FetchCommands m_fetches;
    PictureCommands m_pictures;
    FieldCommands m_fields;
    CompareCommands m_compares;
    /// The user decides on unsaved changes.
    bool m_asking = false;
    /// The last thing that can be undone is a removal, not a change of a field.
    bool m_removed_last = false;
    std::unique_ptr<MainMenus> m_menus;
};

}  // namespace zel::desktop
