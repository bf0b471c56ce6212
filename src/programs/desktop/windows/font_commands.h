#pragma once

#include <QObject>

#include "programs/desktop/windows/workspace.h"

namespace zel::desktop {

class RecentDisks;

/// Shows the glyphs of fonts.
class FontCommands : public QObject {
    Q_OBJECT

  public:
    /// Both outlive the object.
    FontCommands(const Workspace& workspace, const RecentDisks& recent);

    /// Opens a window with the glyphs of a font file.
    void Show(const QString& file);
    /// Asks for a font file and shows it.
    void MakeFont();

  private:
    const Workspace& m_workspace;
    const RecentDisks& m_recent;
};

}  // namespace zel::desktop
