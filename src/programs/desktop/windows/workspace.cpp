#include "programs/desktop/windows/workspace.h"

#include <QFileInfo>

#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/status_line.h"

namespace zel::desktop {

void Workspace::BeginAction() const {
    notice.Clear();
    status.ShowResult({});
}

host::HostOptions Workspace::OptionsFor(const QStringList& near) const {
    const QString own_lists = QFileInfo(places.settings).absolutePath() + QStringLiteral("/name-lists");
    return HostOptionsOf(ImportOptions::Load(settings), near, own_lists);
}

}  // namespace zel::desktop
