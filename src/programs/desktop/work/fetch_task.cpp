#include "programs/desktop/work/fetch_task.h"

#include <QFile>

#include "host/ftp/remote_url.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

namespace {

ftp::ServerOptions ServerOf(const FetchOrder& order, const ftp::RemoteUrl& url) {
    ftp::ServerOptions server;
    server.host = url.host;
    server.port = url.port;
    server.user = order.user.isEmpty() ? url.user : order.user.toStdString();
    server.password = ftp::Secret(order.password.toStdString());
    server.passive = order.passive;
    server.tls = order.tls;
    server.tls_from_start = url.tls_from_start;
    return server;
}

}  // namespace

QString FetchOrder::Trouble() const {
    std::string why;
    if (!ftp::ParseRemoteUrl(url.trimmed().toStdString(), why)) return QStringLiteral("Address: ") + Text(why);
    if (!ftp::Selection::Parse(selection.toStdString(), why)) return QStringLiteral("Messages: ") + Text(why);
    if (directory.trimmed().isEmpty()) return QStringLiteral("To: choose the folder that the files are to go to");
    return {};
}

FetchTask::FetchTask(FetchOrder order, QObject* parent) : QObject(parent), m_order(std::move(order)) {}

FetchTask::~FetchTask() {
    Cancel();
    if (m_thread.joinable()) m_thread.join();
}

void FetchTask::Start() {
    m_thread = std::thread([this] { Q_EMIT finished(Work()); });
}

void FetchTask::OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) {
    Q_EMIT progressed(Text(name), static_cast<qint64>(bytes), static_cast<qint64>(size));
}

FetchResult FetchTask::Work() {
    FetchResult result;
    std::string why;
    const auto url = ftp::ParseRemoteUrl(m_order.url.trimmed().toStdString(), why);
    auto selection = ftp::Selection::Parse(m_order.selection.toStdString(), why);
    const auto session = url && selection ? ftp::MakeFtpSession(
                                                ServerOf(m_order, *url), [this] { return m_cancelled.load(); }, why)
                                          : nullptr;
    if (!session) {
        result.failure = Text(why);
        return result;
    }
    ftp::FetchRequest request{.source = url->host + (url->port == 0 ? "" : ":" + std::to_string(url->port)),
                              .directory = url->directory,
                              .selection = *selection,
                              .to = QFile::encodeName(m_order.directory).toStdString(),
                              .overwrite = m_order.overwrite,
                              .fonts = m_order.fonts,
                              .listing_limits = {}};
    const ftp::FetchReport report = ftp::RunFetch(*session, request, *this);
    result.summary = Text(report.Summary());
    result.failure = Text(report.failure);
    result.cancelled = report.cancelled;
    result.tried_files = !report.files.empty();
    for (const ftp::FileReport& file : report.files) {
        if (file.outcome == ftp::FileOutcome::kFailed || file.outcome == ftp::FileOutcome::kMissing)
            result.failed.append(Text(file.name + ": " + file.reason));
    }
    return result;
}

}  // namespace zel::desktop
