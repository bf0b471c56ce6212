#pragma once

#include <string>
#include <vector>

#include "platform/framework/cdialog.h"

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
