#include "programs/desktop/work/fetch_task.h"

#include <QFile>

#include "host/ftp/remote_url.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

namespace {

ftp::ServerOptions ServerOf(const FetchSettings& settings, const ftp::RemoteUrl& url) {
    ftp::ServerOptions server;
    server.host = url.host;
    server.port = url.port;
    server.user = settings.user.isEmpty() ? url.user : settings.user.toStdString();
    server.password = ftp::Secret(settings.password.toStdString());
    server.passive = settings.passive;
    server.tls = settings.tls;
    server.tls_from_start = url.tls_from_start;
    return server;
}

}  // namespace

QString FetchSettings::Error() const {
    std::string error;
    if (!ftp::ParseRemoteUrl(url.trimmed().toStdString(), error)) return QStringLiteral("Address: ") + Text(error);
    if (!ftp::Selection::Parse(selection.toStdString(), error)) return QStringLiteral("Messages: ") + Text(error);
    if (directory.trimmed().isEmpty()) return QStringLiteral("To folder: choose a folder for the files");
    return {};
}

FetchTask::FetchTask(FetchSettings settings, QObject* parent) : QObject(parent), m_settings(std::move(settings)) {}

FetchTask::~FetchTask() {
    Cancel();
    if (m_thread.joinable()) m_thread.join();
}

void FetchTask::Start() {
    m_thread = std::thread([this] { Q_EMIT finished(Run()); });
}

void FetchTask::OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) {
    Q_EMIT progressed(Text(name), static_cast<qint64>(bytes), static_cast<qint64>(size));
}

FetchResult FetchTask::Run() {
    FetchResult result;
    std::string error;
    const auto url = ftp::ParseRemoteUrl(m_settings.url.trimmed().toStdString(), error);
    auto selection = ftp::Selection::Parse(m_settings.selection.toStdString(), error);
    const auto session = url && selection
                             ? ftp::MakeFtpSession(
                                   ServerOf(m_settings, *url), [this] { return m_cancelled.load(); }, error)
                             : nullptr;
    if (!session) {
        result.failure = Text(error);
        return result;
    }
    ftp::FetchRequest request{.source = url->host + (url->port == 0 ? "" : ":" + std::to_string(url->port)),
                              .directory = url->directory,
                              .selection = *selection,
                              .to = QFile::encodeName(m_settings.directory).toStdString(),
                              .overwrite = m_settings.overwrite,
                              .fonts = m_settings.fonts,
                              .listing_limits = {}};
    const ftp::FetchReport report = ftp::RunFetch(*session, request, *this);
    result.summary = Text(report.Summary());
    result.failure = Text(report.failure);
    result.cancelled = report.cancelled;
    result.tried_files = !report.files.empty();
    for (const ftp::FileReport& file : report.files) {
        if (file.outcome == ftp::FileOutcome::kFailed || file.outcome == ftp::FileOutcome::kMissing)
            result.failed_files.append(Text(file.name + ": " + file.reason));
    }
    return result;
}

}  // namespace zel::desktop
