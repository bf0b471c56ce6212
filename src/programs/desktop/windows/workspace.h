#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>

#include "host/library/recording.h"
#include "programs/desktop/work/import_options.h"

class QMainWindow;
class QSettings;

namespace zel::desktop {

class LibraryPanel;
class NoticeBar;
class StatusLine;

/// Name of the setting with the library that was open last.
inline const QString kLastLibrarySetting = QStringLiteral("library/last");

/// The program's files.
struct Places {
    /// The library, created if it is missing.
    std::string library;
    /// Settings of the windows.
    QString settings;
};

/// What the commands of the main window work on. The main window owns all of it.
struct Workspace {
    /// Parent of the dialogs.
    QMainWindow& window;
    const Places& places;
    QSettings& settings;
    LibraryPanel& library;
    NoticeBar& notice;
    StatusLine& status;
    /// The message that is shown; empty for none.
    const std::optional<library::Recording>& current;

    /// Removes the notices and the result of the previous action. Every action of the user calls it first.
    void BeginAction() const;
    /// The options for an import, with the name lists beside the directories of `near` if there are any.
    host::HostOptions OptionsFor(const QStringList& near) const;
};

}  // namespace zel::desktop
