#include "programs/desktop/work/dialog_import.h"

#include <variant>

#include "host/module_call.h"
#include "host/picture/picture_composer.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_export.h"
#include "platform/system/files.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/work/library_writer.h"
#include "programs/desktop/work/message_files.h"
#include "programs/desktop/work/module_desktop.h"

namespace zel::desktop {

namespace {

/// Records the messages that arrive while the dialog is open.
class DialogRecorder : public host::HostObserver {
  public:
    DialogRecorder(library::Library& library, LibraryWriter& writer, const ModuleDesktop& desktop,
                   const host::HostOptions& options, picture::PictureComposer& pictures)
        : m_library(library), m_writer(writer), m_desktop(desktop), m_options(options), m_pictures(pictures) {}

    void OnSend(const host::SentMessage& sent) override;
    void OnMessage(const document::MessageRecord& message) override;

  private:
    bool Record();

    library::Library& m_library;
    LibraryWriter& m_writer;
    const ModuleDesktop& m_desktop;
    const host::HostOptions& m_options;
    picture::PictureComposer& m_pictures;
    DiskNames m_names;
    std::string m_font_directory;
    std::optional<recorder::ArrivedMessage> m_arrived;
};

void DialogRecorder::OnSend(const host::SentMessage& sent) {
    if (const auto* done = std::get_if<host::ImportDone>(&sent.event)) {
        m_font_directory = system::NativePath(done->dialog.m_sFontDir.GetString());
    }
    if (!std::holds_alternative<host::RecordMessage>(sent.event) || !m_arrived) return;
    // The exception passes through the module and ends the batch.
    if (!Record()) throw library::LibraryError(m_writer.Finish());
}

void DialogRecorder::OnMessage(const document::MessageRecord& message) {
    m_arrived = recorder::ArrivedMessage{0, message, m_pictures.TakePicture(), m_pictures.RgbaError()};
    if (!m_desktop.IsBatchOpen()) Record();
}

bool DialogRecorder::Record() {
    const std::string file = system::NativePath(m_arrived->message.file.c_str());
    const std::size_t slash = file.rfind('/');
    const std::string disk = m_names.NameOf(m_library, file.substr(0, slash == std::string::npos ? 0 : slash));
    const library::RecordingKey key = KeyOf(disk, file.substr(slash + 1));
    m_arrived->number = key.number;
    const bool recorded = m_writer.Record(
        std::move(*m_arrived), {key.disk, m_font_directory, recorder::DescribeOptions(m_options, m_writer.Digests())});
    m_arrived.reset();
    return recorded;
}

}  // namespace

DialogImportOutcome ImportByDialog(const std::string& library, const ModuleDesktop& desktop,
                                   const host::HostOptions& options, host::FtpService* service,
                                   const DialogImportCallbacks& callbacks) {
    LibraryWriter writer(library, callbacks.recorded, callbacks.failed);
    library::Library names(library, library::Access::kRead, kLibraryWait);
    picture::PictureComposer pictures;
    DialogRecorder recorder(names, writer, desktop, options, pictures);
    host::ReferenceHost host(options);
    host.AddObserver(&pictures);
    host.AddObserver(&recorder);
    host.SetFtpService(service);
    DialogImportOutcome outcome;
    std::optional<std::string> exception;
    try {
        exception = host::CallInHost(host, [&] { CZelTransExport().ZelTranslation(host.HostWindow()); });
    } catch (const library::LibraryError&) {
        // Finish returns the reason.
    }
    outcome.failure = writer.Finish();
    if (outcome.failure.empty() && exception) outcome.failure = "reading stopped: " + *exception;
    outcome.recorded = writer.Count();
    outcome.warnings = writer.TakeWarnings();
    return outcome;
}

}  // namespace zel::desktop
