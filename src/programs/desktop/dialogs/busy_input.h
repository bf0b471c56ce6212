#pragma once

#include <QObject>
#include <vector>

#include "platform/system/types.h"

namespace zel::desktop {

class DialogView;

/// Filters user input while a handler of a dialog keeps the user-interface thread busy. Between two messages of a run
/// the module polls the ESC key; only then are pending events processed. ESC is recorded at any time. Other input is
/// dropped while events of a run are processed, so that no button works. If the handler has disabled the control that
/// called it, the other controls of its dialog remain usable.
class BusyInput : public QObject {
  public:
    BusyInput();

    /// Marks a handler of `view` as running during the lifetime of the object.
    class Running {
      public:
        /// @param source  the control that called the handler; null for none.
        Running(BusyInput& input, DialogView& view, HWND source);
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

      private:
        BusyInput& m_input;
    };

    /// Whether ESC is down or was pressed since the last call, whichever window received it.
    bool TakeEscape();

    bool IsBusy() const noexcept { return !m_running.empty(); }
    /// Whether a handler of the view must not be called now, because another handler runs that cannot be interrupted.
    bool IsBlocked(const DialogView& view) const { return m_polling && !IsInterruptible(view); }

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    struct Handler {
        DialogView* view;
        HWND source;
    };

    void NoteEscape(const QObject& receiver, const QEvent& event);
    bool IsAllowed(const QObject& receiver) const;
    bool IsInterruptible(const DialogView& view) const;

    std::vector<Handler> m_running;
    bool m_polling = false;
    bool m_escape_down = false;
    bool m_escape_pressed = false;
};

}  // namespace zel::desktop
