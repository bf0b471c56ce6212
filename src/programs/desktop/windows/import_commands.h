#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

#include "programs/desktop/windows/workspace.h"
#include "programs/desktop/work/disk_import.h"
#include "programs/desktop/work/message_files.h"

namespace zel::desktop {

class FontCommands;
class ModuleDesktop;
class RecentDisks;
class WarningsWindow;

/// Imports messages: from files and folders, and with the module's dialog.
class ImportCommands : public QObject {
    Q_OBJECT

  public:
    /// All outlive the object.
    ImportCommands(const Workspace& workspace, ModuleDesktop& desktop, RecentDisks& recent, FontCommands& fonts);

    /// Imports messages, folders and disks; shows fonts. Reports any other path as an error.
    void Open(const QStringList& paths);
    /// Asks for message files and imports them.
    void ImportFiles();
    /// Asks for a disk or folder and imports it.
    void ImportFolder();
    void ImportByModule();
    void ChangeOptions();

    /// Reads the library again, and with it the names of the disks.
    void ReloadLibrary();

    /// Lists the warnings of the last import in a window.
    void ShowWarnings();
    bool HasWarnings() const noexcept { return !m_warnings.empty(); }
    /// Another library is open.
    void ForgetWarnings() { SetWarnings({}); }

    bool IsRunning() const { return m_import.IsRunning(); }
    void Cancel() { m_import.Cancel(); }

  Q_SIGNALS:
    /// HasWarnings may have changed.
    void warningsChanged();

  private:
    void OpenOne(const QString& path);
    void StartImport(const QString& path, const MessageSource& source);
    void WarnOfNoMessages(const QString& path);
    void Ended(const ImportSummary& summary);
    void FillModulesDialog();
    void SetWarnings(std::vector<MessageWarnings> warnings);

    const Workspace& m_workspace;
    ModuleDesktop& m_desktop;
    RecentDisks& m_recent;
    FontCommands& m_fonts;
    DiskNames m_names;
    DiskImport m_import;
    /// Of the last import.
    std::vector<MessageWarnings> m_warnings;
    QPointer<WarningsWindow> m_warnings_window;
};

}  // namespace zel::desktop
