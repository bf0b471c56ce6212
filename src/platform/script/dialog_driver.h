#pragma once

#include <string>
#include <vector>

#include "platform/framework/cdialog.h"

namespace zel::script {

/// Performs a user's actions in a dialog. This class sends the control messages; a desktop with a screen derives one
/// that operates its widgets. The controls passed in exist, and are visible and enabled.
class ZEL_PLATFORM_API DialogActor {
  public:
    virtual ~DialogActor();
    virtual void Type(CDialog& dialog, CWnd& control, const std::string& text);
    virtual void Press(CDialog& dialog, CWnd& control);
    /// Selects an entry.
    /// @param is_list_box  true for a list box, false for a combo box.
    /// @param index        of an entry of the list.
    virtual void Choose(CDialog& dialog, CWnd& control, bool is_list_box, int index);
    /// @param button  the default button, null for none.
    virtual void PressEnter(CDialog& dialog, CWnd* button);
    virtual void PressEscape(CDialog& dialog);
    virtual void Close(CDialog& dialog);
};

/// Sets the actor of every DialogDriver.
/// @param actor  null for the one that sends messages. The caller owns it and keeps it alive.
ZEL_PLATFORM_API void SetDialogActor(DialogActor* actor);

/// Does in a dialog what a user does, and reads what a user sees. An action on a control that is missing, hidden or
/// disabled does nothing and returns false.
class ZEL_PLATFORM_API DialogDriver {
  public:
    explicit DialogDriver(CDialog& dialog) : m_dialog(dialog) {}

    /// Replaces the text of an edit or of a combo box's edit field. The text is cut to the limit of the field.
    bool Type(int id, const std::string& text);
    /// Clicks a button, check box or radio button.
    bool Press(int id);
    /// Clicks a check box or radio button unless it already has the state.
    bool Check(int id, bool on = true);
    /// Selects an entry of a combo box or list box, by its index or its text.
    bool Choose(int id, int index);
    bool Choose(int id, const std::string& text);
    /// Enter presses the default button, or sends IDOK without one. Escape sends IDCANCEL. Close is the button of the
    /// title bar.
    bool PressEnter();
    void PressEscape();
    void Close();

    /// The dialog as the user sees it. A missing control has no text, no entries and is not checked.
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
