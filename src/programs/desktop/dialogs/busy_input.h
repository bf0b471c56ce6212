#pragma once

#include <QObject>
#include <vector>

#include "platform/system/types.h"

namespace zel::desktop {

class DialogView;

/// The user's input while a handler of a dialog keeps the thread busy. Between two messages of a run the module asks
/// for the ESC key: then, and only then, waiting input is taken, ESC is remembered, and the rest is dropped, so that no
/// button works during a run. A handler that has disabled the control it was called by wants to be interrupted, and the
/// other controls of its dialog stay alive.
class BusyInput : public QObject {
  public:
    BusyInput();

    /// Says that a handler of `view` runs, for as long as the object lives.
    class Running {
      public:
        /// @param source  the control by which the handler is called; null for none.
        Running(BusyInput& input, DialogView& view, HWND source);
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

      private:
        BusyInput& m_input;
    };

    /// Whether ESC is down, or has been pressed since the last asking or, later than that, the start of the handler.
    bool TakeEscape();

    bool IsBusy() const noexcept { return !m_running.empty(); }
    /// Whether a handler of the view must not be called now, because another one runs that can't be interrupted.
    bool Refuses(const DialogView& view) const { return m_taking && !IsInterruptible(view); }

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    struct Handler {
        DialogView* view;
        HWND source;
    };

    void NoteEscape(const QEvent& event);
    bool IsLetIn(const QObject& receiver) const;
    bool IsInterruptible(const DialogView& view) const;

    std::vector<Handler> m_running;
    bool m_taking = false;
    bool m_escapeDown = false;
    bool m_escapePressed = false;
};

}  // namespace zel::desktop
