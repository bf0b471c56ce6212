// Writes pictures of the module's windows as PNG files: grab_windows DIRECTORY light|dark. QT_SCALE_FACTOR sets the
// scale.
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "diskcopy/copy_dlg.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_export.h"
#include "module/contract/zel_trans_ftp.h"
#include "module/dialog/browse.h"
#include "module/state/module_state.h"
#include "pictures/grab.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/message_box.h"
#include "platform/script/memory_settings_store.h"
#include "programs/desktop/dialogs/dialog_view.h"
#include "programs/desktop/dialogs/qt_desktop.h"

using namespace zel;

namespace {

/// A desktop that saves a picture of every window and closes it.
class GrabbingDesktop : public desktop::QtDesktop {
  public:
    explicit GrabbingDesktop(QString directory) : m_directory(std::move(directory)) {}

    void RunModal(CDialog& dialog) override {
        QTimer::singleShot(200, [&] {
            const QString name = QStringLiteral("dialog_%1").arg(dialog.GetTemplateId());
            if (before_grab) before_grab(dialog);
            QCoreApplication::processEvents();
            pictures::Grab(*Find(dialog), m_directory, name);
            dialog.EndDialog(IDCANCEL);
        });
        desktop::QtDesktop::RunModal(dialog);
    }
    int ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) override {
        QTimer::singleShot(200, [&] {
            QWidget& box = *QApplication::activeModalWidget();
            pictures::Grab(box, m_directory, QStringLiteral("box_%1").arg(style));
            static_cast<QMessageBox&>(box).buttons().front()->click();
        });
        return desktop::QtDesktop::ShowMessageBox(owner, text, caption, style);
    }
    int RunFileDialog(CFileDialog& dialog, std::string& path) override {
        QTimer::singleShot(500, [&] {
            QWidget& files = *QApplication::activeModalWidget();
            pictures::Grab(files, m_directory, QStringLiteral("files"));
            files.close();
        });
        return desktop::QtDesktop::RunFileDialog(dialog, path);
    }

    std::function<void(CDialog&)> before_grab;

  private:
    QString m_directory;
};

void Fill(CDialog& dialog) {
    if (dialog.GetTemplateId() == kImportDialog) {
        dialog::BringToTop(dialog, ImportControl::kMessageDirBox,
                           "D:\\MESSAGES\\\xC3\x9C"
                           "bersicht");
        dialog::BringToTop(dialog, ImportControl::kFontDirBox, "D:\\MACHINE");
        dialog.SetDlgItemText(ImportControl::kMessageIdEdit, ".0012");
    } else if (dialog.GetTemplateId() == kBatchDialog) {
        dialog.SetDlgItemText(BatchControl::kStartIdEdit, ".0005");
        dialog.SetDlgItemText(BatchControl::kEndIdEdit, ".0017");
        dialog.SetDlgItemText(BatchControl::kStatusLabel, "Recording .0009");
    }
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc < 3) return 2;
    pictures::UsePalette(argv[2]);

    script::MemorySettingsStore settings;
    seam::SetSettingsStore(&settings);
    GrabbingDesktop desktop(QString::fromLocal8Bit(argv[1]));
    desktop.before_grab = Fill;
    seam::SetDesktop(&desktop);
    CWnd host;
    host.CreateHostWindow("host");
    AfxGetThread()->m_pMainWnd = &host;
    AfxGetModuleState()->m_hCurrentResourceHandle = g_hZelResource;

    CZelTransExport().ZelTranslation(&host);
    CString empty;
    CZelTransDlg main_dialog(empty, empty);
    for (const int button : {ImportControl::kBatchButton, ImportControl::kFtpButton, ImportControl::kCopyFilesButton,
                             ImportControl::kBrowseFontButton})
        main_dialog.SendMessage(WM_COMMAND, static_cast<WPARAM>(button));
    AfxGetModuleState()->m_hCurrentResourceHandle = g_hZelResource;
    CDialog(kRgbaDialog).DoModal();
    const std::string text = "Couldn't Find Zelmara! Font File: D:\\MACHINE\\.0001\n\nDo you want to browse for it?";
    for (const UINT style : {MB_YESNOCANCEL | MB_ICONQUESTION, MB_OK | MB_ICONEXCLAMATION})
        MessageBoxA(nullptr, text.c_str(), "Zelmara! Import Error", style);
    const std::string path = "D:\\" + std::string(250, 'm') + "\\.0001";
    MessageBoxA(nullptr, ("Couldn't open Zelmara! Message File: " + path).c_str(), "Zelmara! Import Error",
                MB_ICONHAND);
    main_dialog.DestroyWindow();
    AfxGetThread()->m_pMainWnd = nullptr;
    seam::SetDesktop(nullptr);
    seam::SetSettingsStore(nullptr);
    return 0;
}
