#pragma once

#include <string>
#include <vector>

#include "platform/framework/cdialog.h"

namespace zel::script {

/// How a user's doings reach a dialog. This one sends the control messages; that of a screen works the widgets. The
/// controls exist, and are visible and enabled.
class ZEL_PLATFORM_API DialogActor {
  public:
    virtual ~DialogActor();
    virtual void Type(CDialog& dialog, CWnd& control, const std::string& text);
    virtual void Press(CDialog& dialog, CWnd& control);
    /// @param box  the control is a list box, not a combo box. @param index  of an entry.
    virtual void Choose(CDialog& dialog, CWnd& control, bool box, int index);
    /// @param button  the default button; null when the dialog has none.
    virtual void PressEnter(CDialog& dialog, CWnd* button);
    virtual void PressEscape(CDialog& dialog);
    virtual void Close(CDialog& dialog);
};

/// Sets who acts for every DialogDriver, null for the one that sends messages. The caller keeps it alive.
ZEL_PLATFORM_API void SetDialogActor(DialogActor* actor);

/// Does what a user does in a dialog, through the same control messages. An action on a control that is missing, hidden
/// or disabled does nothing and returns false, since a user couldn't do it either.
class ZEL_PLATFORM_API DialogDriver {
  public:
    explicit DialogDriver(CDialog& dialog) : m_dialog(dialog) {}

    /// Replaces the text of an edit or of a combo box's edit field, cut to the field's limit.
    bool Type(int id, const std::string& text);
    /// Clicks a button, check box or radio button.
    bool Press(int id);
    /// Clicks a check box or radio button unless it has the wanted state.
    bool Check(int id, bool on = true);
    /// Chooses an entry of a combo box's list or of a list box, by its index or its text.
    bool Choose(int id, int index);
    bool Choose(int id, const std::string& text);
    /// Enter runs the default button, or IDOK without one; Escape runs IDCANCEL; Close is the title bar's button.
    bool PressEnter();
    void PressEscape();
    void Close();

    /// What a user sees.
    std::string Caption() const;
    std::string Text(int id) const;
    std::vector<std::string> List(int id) const;
    bool IsChecked(int id) const;
    bool IsEnabled(int id) const;
    bool IsVisible(int id) const;

  private:
    CWnd* Usable(int id) const;
    bool IsListBox(int id) const;

    CDialog& m_dialog;
};

}  // namespace zel::script
