#pragma once

#include "programs/desktop/widgets/picture_view.h"

namespace zel::desktop {

/// The picture alone on a screen. The arrow keys go from message to message; Escape or F11 ends it.
class FullScreenView : public PictureView {
    Q_OBJECT

  public:
    /// @param window  main window; the view opens on its screen.
    explicit FullScreenView(QWidget* window);

  Q_SIGNALS:
    /// @param step  to another message: 1 or -1.
    void stepped(int step);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace zel::desktop
