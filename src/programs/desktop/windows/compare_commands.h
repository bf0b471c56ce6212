#pragma once

#include <QObject>

#include "programs/desktop/windows/workspace.h"
#include "programs/desktop/work/comparison.h"

namespace zel::desktop {

class PictureView;

/// Compares messages.
class CompareCommands : public QObject {
    Q_OBJECT

  public:
    /// Both outlive the object.
    CompareCommands(const Workspace& workspace, const PictureView& view) : m_workspace(workspace), m_view(view) {}

    /// Compares the two selected messages; with one, its recording with its changed texts.
    void CompareSelected();
    /// Asks for a message file and compares the current message with it.
    void CompareWithFile();

  private:
    std::optional<ComparedMessage> Recorded(const library::RecordingKey& key) const;
    ComparedMessage Current() const;
    void Show(ComparedMessage a, ComparedMessage b);

    const Workspace& m_workspace;
    const PictureView& m_view;
};

}  // namespace zel::desktop
