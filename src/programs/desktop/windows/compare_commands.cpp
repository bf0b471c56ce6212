#include "programs/desktop/windows/compare_commands.h"

#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QSettings>
#include <utility>

#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/message_details.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/windows/compare_window.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/windows/pick.h"

namespace zel::desktop {

std::optional<ComparedMessage> CompareCommands::Recorded(const library::RecordingKey& key) const {
    auto recording = library::Library(m_workspace.places.library, library::Access::kRead, kLibraryWait).Find(key);
    if (!recording) return std::nullopt;
    return ComparedMessage{TitleOf(key), std::move(*recording)};
}

ComparedMessage CompareCommands::Current() const {
    const library::Recording& current = *m_workspace.current;
    return {TitleOf({current.disk, current.number}), current};
}

void CompareCommands::CompareSelected() {
    m_workspace.BeginAction();
    const std::vector<library::RecordingKey> keys = m_workspace.library.Selected();
    const QString advice = tr("Select two messages in the library, or compare the current one with a file.");
    if (keys.empty() || keys.size() > 2 || !m_workspace.current)
        return m_workspace.notice.Warn(tr("Two messages are compared, not %1.").arg(keys.size()), advice);
    try {
        std::optional<ComparedMessage> a = Recorded(keys.front()), b;
        if (keys.size() == 2) {
            b = Recorded(keys.back());
        } else if (m_workspace.window.isWindowModified()) {
            b = Current();
            b->title = tr("%1 with its changes").arg(b->title);
        } else {
            return m_workspace.notice.Warn(tr("One message is selected, and its texts are not changed."), advice);
        }
        if (a && b) Show(std::move(*a), std::move(*b));
    } catch (const library::LibraryError& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Close the program that is using the library, then try again."));
    }
}

void CompareCommands::CompareWithFile() {
    if (!m_workspace.current) return;
    const QString setting = QStringLiteral("compare/directory");
    const QString source = m_workspace.library.CurrentSource();
    const QStringList files =
        PickFiles(&m_workspace.window, tr("Compare with a message file"),
                  m_workspace.settings.value(setting, QFileInfo(source).absolutePath()).toString(), false);
    if (files.isEmpty()) return;
    m_workspace.settings.setValue(setting, QFileInfo(files.front()).absolutePath());
    m_workspace.BeginAction();
    try {
        Show(Current(),
             ReadComparedFile(files.front(), m_workspace.OptionsFor({QFileInfo(files.front()).absolutePath()})));
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Nothing was compared."));
    }
}

void CompareCommands::Show(ComparedMessage a, ComparedMessage b) {
    (new CompareWindow(std::move(a), std::move(b), m_view, &m_workspace.window))->show();
}

}  // namespace zel::desktop
