#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QSettings>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "programs/desktop/models/message_details.h"
#include "programs/desktop/work/disk_import.h"
#include "programs/desktop/work/export_task.h"
#include "programs/desktop/work/fetch_task.h"
#include "programs/desktop/work/module_desktop.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QMimeData;

namespace zel::desktop {

class DetailDocks;
class LibraryPanel;
class NoticeBar;
class PictureView;
class StartPage;

/// Where the program keeps what it knows.
struct Places {
    std::string library;  ///< file; made when it is missing.
    QString settings;     ///< file of the windows' own settings.
};

/// The library, the picture of the chosen message and what it holds; and the ways into the library and out of it. The
/// module's screen for as long as it lives.
class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    explicit MainWindow(const Places& places);
    /// What is under way is stopped; what has arrived is recorded.
    ~MainWindow() override;

    /// Imports messages, folders and disks; shows fonts. Everything else is told.
    void Open(const QStringList& paths);

    /// Tells what a person should know.
    void Tell(const QString& text) { Warn(text); }

    bool IsBusy() const;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    // main_window.cpp
    void LayOut();
    void ShowCurrent();
    void ShowCount();
    void ShowPointed(const QString& name);
    void RestoreLayout();
    void Warn(const QString& text, const QString& advice = {});
    void ShowTask(const QString& what, int done, int total);
    void EndTask(const QString& result);
    host::HostOptions ImportOptions(const QStringList& places) const;

    // main_menus.cpp
    void MakeMenus();
    void MakeFileMenu();
    void MakeEditMenu();
    void MakeViewMenu();
    void MakeHelpMenu();
    QAction* AddAction(QMenu* menu, const QString& name, const QString& text, const QList<QKeySequence>& keys,
                       const std::function<void()>& call);
    QAction* AddToggle(QMenu* menu, const QString& name, const QString& text, const QKeySequence& keys, bool on,
                       const std::function<void(bool)>& call);
    void MakeGrounds(QMenu* menu);
    void MakePanels(QMenu* go_to, QMenu* shown);
    void EnableActions();
    void ShowRecentDisks();
    /// The newest first.
    QStringList RecentDisks() const;
    void Remember(const QString& place);

    // main_toolbar.cpp
    void MakeToolbar();

    // main_work.cpp
    void ImportByModule();
    QString StartFolder(const QString& setting, const QString& in_disk) const;
    void ImportFiles();
    void ImportFolder();
    void AddPlace(const QString& path);
    void ImportEnded(const ImportSummary& summary);
    void ShowFont(const QString& file);
    void MakeFont();
    void Export();
    void BatchExport();
    void ExportEnded(const ExportResult& result, const QString& directory);
    void Fetch();
    void FetchEnded(const FetchResult& result, const QString& directory, bool imports);
    void StopTask();
    void ChangeImportOptions();

    // main_picture.cpp
    std::unique_ptr<QMimeData> PictureData() const;
    void CopyPicture();
    void DragPicture();
    void SavePicture();
    void RemoveSelected();

    const Places m_places;
    mutable QSettings m_settings;
    ModuleDesktop m_desktop;
    seam::Desktop* m_previous_desktop;
    LibraryPanel* m_library;
    PictureView* m_picture;
    StartPage* m_start;
    QStackedWidget* m_centre;
    NoticeBar* m_notice;
    DetailDocks* m_docks = nullptr;
    QLabel* m_pointed;
    QLabel* m_zoom;
    QLabel* m_task;
    QLabel* m_count;
    QProgressBar* m_progress;
    QPushButton* m_stop;
    QMenu* m_recent = nullptr;
    QMenu* m_panels = nullptr;
    QList<QAction*> m_needs_picture, m_needs_messages, m_needs_module, m_needs_task;

    std::optional<library::Recording> m_current;
    QString m_summary;  // of it
    DiskNames m_names;
    DiskImport* m_import;
    QPointer<ExportTask> m_export;
    QPointer<FetchTask> m_fetch;
    QTemporaryDir m_dragged;
};

}  // namespace zel::desktop
