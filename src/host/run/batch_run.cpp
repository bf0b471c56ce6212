#include "host/run/batch_run.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <variant>

#include "base/text.h"
#include "host/module_call.h"
#include "host/native_path.h"
#include "host/run/failure_text.h"
#include "host/run/file_error.h"
#include "host/run/import_paths.h"
#include "host/run/import_run.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/message_id.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_export.h"
#include "platform/system/files.h"

namespace zel::run {

namespace {

/// Whether a message does not exist, rather than being hidden in a directory that can't be searched.
bool IsMissing(const ImportPaths& paths) {
    return FindMessageFile(paths).empty() &&
           DirectoryError(system::NativePath(paths.message_directory.c_str())).empty();
}

/// Without a reason: the framework keeps some failures to itself, such as of a dialog for which memory is lacking.
constexpr const char* kNotRecorded = "the module did not record it";

/// Follows a batch through the calls of the module. For each number of the range it checks the ESC key before
/// and after reading the message, and then sends 1160 if the message was read.
class BatchTracker : public host::HostObserver {
  public:
    BatchTracker(const BatchRequest& request, const host::UserDesktop& desktop,
                 std::span<host::HostObserver* const> observers)
        : m_request(request), m_desktop(desktop), m_observers(observers) {}

    void OnSend(const host::SentMessage& sent) override;

    void BeginRange(int first) {
        m_next = first;
        m_reading = m_unreported = false;
    }
    bool EscapePressed();

    bool Stopped() const noexcept { return m_stopped; }
    /// Reports the number under way as failed if it has not been reported.
    void FailCurrent(const std::string& reason);
    /// The number that the range continues with.
    int Next() const noexcept { return m_next; }

  private:
    void AfterRead();
    void ReportItem(const host::BatchItem& item) {
        for (host::HostObserver* observer : m_observers) observer->OnBatchItem(item);
        // Not earlier: an observer that fails may not have kept the item.
        m_unreported = false;
    }
    host::BatchItem Failed(int status) const;

    const BatchRequest& m_request;
    const host::UserDesktop& m_desktop;
    std::span<host::HostObserver* const> m_observers;
    const CZelTransDlg* m_main = nullptr;
    int m_next = 0;
    /// The number under way, and whether its item has yet to be reported.
    int m_number = 0;
    bool m_unreported = false;
    /// Between the two checks of the ESC key for a number.
    bool m_reading = false;
    /// The import of the message under way is done.
    bool m_arrived = false;
    bool m_stopped = false;
    std::size_t m_boxes_before = 0;
};

void BatchTracker::OnSend(const host::SentMessage& sent) {
    if (const auto* ready = std::get_if<host::DialogReady>(&sent.event)) m_main = &ready->dialog;
    if (std::holds_alternative<host::ImportDone>(sent.event)) m_arrived = true;
    if (const auto* record = std::get_if<host::RecordMessage>(&sent.event)) {
        ReportItem({record->number, m_arrived ? host::ItemOutcome::kRecorded : host::ItemOutcome::kNotInserted, {}});
    }
}

bool BatchTracker::EscapePressed() {
    m_stopped = m_stopped || (m_request.stop && m_request.stop());
    if (m_reading) {
        m_reading = false;
        if (!m_stopped) AfterRead();
    } else if (!m_stopped) {
        FailCurrent(kNotRecorded);
        m_reading = true;
        m_number = m_next++;
        m_unreported = true;
        m_arrived = false;
        m_boxes_before = m_desktop.Boxes().size();
    }
    return m_stopped;
}

void BatchTracker::AfterRead() {
    if (m_main != nullptr && m_main->m_iStatus != ImportStatus::kFinished) ReportItem(Failed(m_main->m_iStatus));
}

host::BatchItem BatchTracker::Failed(int status) const {
    const bool was_found = status == ImportStatus::kLoadFailed || status == ImportStatus::kFontPromptCancelled;
    ImportRequest import;
    import.message = MessageDirectoryOf(m_request.disk) + "/" +
                     (was_found ? m_main->m_sMessageID.GetString() : base::NumberedName(m_number));
    import.fonts = m_request.fonts;
    ImportOutcome outcome;
    outcome.status = status;
    const auto& boxes = m_desktop.Boxes();
    outcome.boxes.assign(boxes.begin() + static_cast<std::ptrdiff_t>(m_boxes_before), boxes.end());
    const ImportPaths paths = ImportPathsOf(import.message, import.fonts);
    if (status == ImportStatus::kMessageNotFound && IsMissing(paths))
        return {m_number, host::ItemOutcome::kMissing, {}};
    return {m_number, host::ItemOutcome::kFailed, DescribeFailure(import, paths, outcome)};
}

void BatchTracker::FailCurrent(const std::string& reason) {
    if (!m_unreported) return;
    ReportItem({m_number, host::ItemOutcome::kFailed,
                MessageDirectoryOf(m_request.disk) + "/" + base::NumberedName(m_number) + ": " + reason});
}

/// One batch over all its ranges.
class Batch {
  public:
    Batch(const BatchRequest& request, std::span<host::HostObserver* const> observers);
    BatchOutcome Run();

  private:
    void CallModule();
    void DriveMainDialog(CDialog& dialog);
    void DriveBatchDialog(CDialog& dialog, const host::NumberRange& range);
    void ReportException(const std::string& text);
    void ContinueAfter(const std::string& exception);

    const BatchRequest& m_request;
    std::span<host::HostObserver* const> m_observers;
    /// The remaining ones, beginning with the one under way. Empty after the last one.
    std::vector<host::NumberRange> m_ranges;
    std::string m_message_directory, m_font_directory;
    host::UserDesktop m_desktop;
    BatchTracker m_tracker;
    BatchOutcome m_outcome;
};

Batch::Batch(const BatchRequest& request, std::span<host::HostObserver* const> observers)
    : m_request(request),
      m_observers(observers),
      m_ranges(request.ranges),
      m_message_directory(system::ModulePath(host::AbsolutePath(MessageDirectoryOf(request.disk)))),
      m_font_directory(request.fonts ? system::ModulePath(host::AbsolutePath(*request.fonts))
                                     : host::MachineDirectory(m_message_directory)),
      m_desktop(request.box_answer, request.browse, observers),
      m_tracker(request, m_desktop, observers) {
    m_desktop.AnswerKeys([this](int key) { return key == VK_ESCAPE && m_tracker.EscapePressed(); });
    m_desktop.HandleDialog(kImportDialog, [this](CDialog& dialog) { DriveMainDialog(dialog); });
    AnswerRgbaChoice(m_desktop, request.rgba);
}

void Batch::DriveMainDialog(CDialog& dialog) {
    script::DialogDriver user(dialog);
    EnterDirectories(user, m_message_directory, m_font_directory);
    while (!m_ranges.empty() && m_outcome.end == BatchEnd::kCompleted) {
        m_desktop.HandleDialog(
            kBatchDialog, [this](CDialog& batch) { DriveBatchDialog(batch, host::NumberRange(m_ranges.front())); });
        user.Press(ImportControl::kBatchButton);
        m_ranges.erase(m_ranges.begin());
    }
    user.Close();
}

void Batch::DriveBatchDialog(CDialog& dialog, const host::NumberRange& range) {
    m_tracker.BeginRange(MessageNumberOf(WithoutLeadingDot(range.first)));
    const std::optional<std::string> refusal = EnterRange(m_desktop, dialog, range);
    if (m_tracker.Stopped()) {
        m_outcome.end = BatchEnd::kStopped;
    } else {
        m_tracker.FailCurrent(kNotRecorded);
    }
    if (!refusal) return;
    m_outcome.end = BatchEnd::kRefused;
    m_outcome.failure = *refusal;
}

void Batch::ReportException(const std::string& text) {
    for (host::HostObserver* observer : m_observers) observer->OnException(text);
    if (!m_outcome.exception) m_outcome.exception = text;
}

// The rest of the range is run in another call. A call that did not reach its first number would fail again.
void Batch::ContinueAfter(const std::string& exception) {
    m_tracker.FailCurrent("reading stopped: " + exception);
    if (m_ranges.empty()) return;
    host::NumberRange& range = m_ranges.front();
    if (m_tracker.Next() > MessageNumberOf(WithoutLeadingDot(range.last))) {
        m_ranges.erase(m_ranges.begin());
    } else if (m_tracker.Next() > MessageNumberOf(WithoutLeadingDot(range.first))) {
        range.first = std::to_string(m_tracker.Next());
    } else {
        m_outcome.end = BatchEnd::kRefused;
        m_outcome.failure = exception;
    }
}

void Batch::CallModule() {
    host::ReferenceHost host(m_request.host);
    for (host::HostObserver* observer : m_observers) host.AddObserver(observer);
    host.AddObserver(&m_tracker);
    while (!m_ranges.empty() && m_outcome.end == BatchEnd::kCompleted) {
        const std::optional<std::string> exception = host::CallInHost(host, [&] {
            StoreSkipWarnings(!m_request.warnings);
            CZelTransExport().ZelTranslation(host.HostWindow());
        });
        m_outcome.status = host.Status();
        if (!exception) break;
        // It has closed the dialogs.
        ReportException(*exception);
        ContinueAfter(*exception);
    }
    m_outcome.order_breaches = host.Breaches();
}

BatchOutcome Batch::Run() {
    try {
        CallModule();
    } catch (const host::HostError& error) {
        m_outcome.end = BatchEnd::kRefused;
        m_outcome.failure = error.what();
        return m_outcome;
    }
    const host::RunEnd end = host::RunEndOf(host::RunKind::kBatch, m_outcome.status);
    m_outcome.next_id = end.next_id;
    m_outcome.y_offset = end.y_offset;
    host::ReportEnd(m_observers, std::nullopt, end);
    return m_outcome;
}

}  // namespace

std::string MessageDirectoryOf(const std::string& disk) {
    return disk + (disk.ends_with('/') ? "MESSAGES" : "/MESSAGES");
}

std::string FontDirectoryOf(const BatchRequest& request) {
    if (request.fonts) return host::AbsolutePath(*request.fonts);
    const std::string messages = system::ModulePath(host::AbsolutePath(MessageDirectoryOf(request.disk)));
    return system::NativePath(host::MachineDirectory(messages).c_str());
}

std::string DiskError(const BatchRequest& request) {
    const auto resolve = [](const std::string& path) {
        return system::NativePath(system::ModulePath(host::AbsolutePath(path)).c_str());
    };
    const std::string module_messages = system::ModulePath(host::AbsolutePath(MessageDirectoryOf(request.disk)));
    if (module_messages.size() >= MAX_PATH)
        return request.disk + ": the path of the message directory " + TooLong(module_messages.size());
    const std::string messages = resolve(MessageDirectoryOf(request.disk));
    std::string error = DirectoryError(messages);
    if (!error.empty()) {
        const std::string disk_error = DirectoryError(resolve(request.disk));
        return request.disk +
               (disk_error.empty() ? ": the message directory " + messages + " " + error : ": the disk " + disk_error);
    }
    const std::string fonts = resolve(FontDirectoryOf(request));
    // The module accepts a file as its font directory, and finds no font there.
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(fonts, ignored)) error = DirectoryError(fonts);
    return error.empty() ? error : request.disk + ": the font directory " + fonts + " " + error;
}

BatchOutcome RunBatch(const BatchRequest& request, std::span<host::HostObserver* const> observers) {
    return Batch(request, observers).Run();
}

}  // namespace zel::run
