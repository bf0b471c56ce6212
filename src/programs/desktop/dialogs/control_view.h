#pragma once

#include <QSizeF>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/framework/cdialog.h"

namespace zel::desktop {

class DialogUnits;
class DialogView;

/// One control on the screen: a widget that shows what the control's window holds, and that hands what its user does on
/// as control messages. The widget belongs to the dialog's.
class ControlView {
  public:
    /// @param source   the template's control. @param control  its window; both outlive the view.
    ControlView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control, QWidget* widget);
    virtual ~ControlView();
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;

    QWidget& Widget() const noexcept { return *m_widget; }
    const framework::ControlTemplate& Source() const noexcept { return m_source; }
    HWND Handle() const noexcept { return m_handle; }

    /// Room that the control's rectangle has, in dialog units, and the pixels that it takes not to cut its text; an
    /// empty size asks for nothing.
    virtual QSizeF Units() const { return QSizeF(m_source.cx, m_source.cy); }
    virtual QSizeF Needed() const { return QSizeF(); }

    /// Shows a part of the window's state.
    void Mirror(framework::WindowChange change);
    /// Shows all of it.
    void MirrorAll();

  protected:
    virtual void ShowText(const QString& /*text*/) {}
    virtual void ShowCheck() {}
    virtual void ShowList() {}
    virtual void ShowSelection() {}

    /// The window. Only good while it exists, which it does whenever one of the functions above is called.
    CWnd& Control() const { return *CWnd::FromHandle(m_handle); }
    std::string Bytes() const;
    /// Does something to the window on behalf of the user.
    void Act(const std::function<void(CWnd&)>& action);

  private:
    DialogView& m_dialog;
    const framework::ControlTemplate& m_source;
    HWND m_handle;
    QWidget* m_widget;
};

/// Makes the widget of a control of any kind.
std::unique_ptr<ControlView> MakeControlView(DialogView& dialog, const framework::ControlTemplate& source,
                                             CWnd& control);

}  // namespace zel::desktop
