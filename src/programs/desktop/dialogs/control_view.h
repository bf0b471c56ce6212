#pragma once

#include <QSizeF>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/framework/cdialog.h"

namespace zel::desktop {

class DialogUnits;
class DialogView;

/// One control on the screen: a widget that shows the state of the control's window and forwards user actions as
/// control messages. The dialog's widget owns this widget.
class ControlView {
  public:
    /// @param source   the control in the template.
    /// @param control  its window.
    /// Both outlive the view.
    ControlView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control, QWidget* widget);
    virtual ~ControlView();
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;

    QWidget& Widget() const noexcept { return *m_widget; }
    const framework::ControlTemplate& Source() const noexcept { return m_source; }
    HWND Handle() const noexcept { return m_handle; }

    /// Size of the control's rectangle in dialog units.
    virtual QSizeF Units() const { return QSizeF(m_source.cx, m_source.cy); }
    /// Smallest size in pixels that shows the whole text; empty if any size is sufficient.
    virtual QSizeF Needed() const { return QSizeF(); }

    /// Shows one part of the window's state.
    void Mirror(framework::WindowChange change);
    /// Shows the window's whole state.
    void MirrorAll();

  protected:
    virtual void ShowText(const QString& /*text*/) {}
    virtual void ShowCheck() {}
    virtual void ShowList() {}
    virtual void ShowSelection() {}

    /// The window. Valid only while it exists, as it does whenever one of the functions above is called.
    CWnd& Control() const { return *CWnd::FromHandle(m_handle); }
    std::string Bytes() const;
    /// Performs a user action on the window.
    void Act(const std::function<void(CWnd&)>& action);

  private:
    DialogView& m_dialog;
    const framework::ControlTemplate& m_source;
    HWND m_handle;
    QWidget* m_widget;
};

/// Makes the view of a control of any kind.
std::unique_ptr<ControlView> MakeControlView(DialogView& dialog, const framework::ControlTemplate& source,
                                             CWnd& control);

}  // namespace zel::desktop
