#include "programs/desktop/windows/workspace.h"

#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/status_line.h"

namespace zel::desktop {

void Workspace::BeginAction() const {
    notice.Clear();
    status.ShowResult({});
}

}  // namespace zel::desktop
