#include "programs/desktop/work/fetch_task.h"

#include <QCryptographicHash>
#include <QFile>
#include <algorithm>

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

/// A name of the server as the name of a folder. Two names never give the same folder.
/// @param also_encoded  a character that separates parts of the folder's name.
QString FolderName(const std::string& name, const char* also_encoded = "") {
    constexpr char kReadable[] = " ()+,";
    const QByteArray bytes(name.data(), static_cast<qsizetype>(name.size()));
    if (name == "." || name == "..") return QStringLiteral("%2E").repeated(bytes.size());
    return QString::fromLatin1(bytes.toPercentEncoding(kReadable, also_encoded));
}

/// USER@HOST_PORT, without what is usual.
QString ServerFolder(const ftp::ServerOptions& server) {
    constexpr int kPort = 21, kTlsPort = 990;
    QString folder = FolderName(Text(server.host).toLower().toStdString(), "_");
    if (server.port != 0 && server.port != (server.tls_from_start ? kTlsPort : kPort))
        folder += u'_' + QString::number(server.port);
    if (!server.user.empty() && server.user != "anonymous") folder.prepend(FolderName(server.user) + u'@');
    return folder;
}

/// A folder for each part of the remote directory.
QStringList DirectoryFolders(const std::string& directory) {
    QStringList folders;
    if (directory.starts_with('/')) folders.append(QStringLiteral("%2F"));
    for (std::size_t from = 0; from < directory.size();) {
        const std::size_t end = std::min(directory.find('/', from), directory.size());
        if (end != from) folders.append(FolderName(directory.substr(from, end - from)));
        from = end + 1;
    }
    return folders;
}

}  // namespace

QString FetchSettings::Error() const {
    std::string error;
    if (!ftp::ParseRemoteUrl(url.trimmed().toStdString(), error)) return QStringLiteral("Address: ") + Text(error);
    if (!ftp::Selection::Parse(selection.toStdString(), error)) return QStringLiteral("Messages: ") + Text(error);
    if (directory.trimmed().isEmpty()) return QStringLiteral("To folder: choose a folder for the files");
    return {};
}

QString FetchSettings::Folder() const {
    /// In characters. The module opens no path of more than 259.
    constexpr qsizetype kLongest = 120, kLongestPart = 40;
    constexpr qsizetype kDigits = 6;
    std::string error;
    const auto address = ftp::ParseRemoteUrl(url.trimmed().toStdString(), error);
    if (!address) return directory;
    const QString server = ServerFolder(ServerOf(*this, *address));
    const QStringList folders = DirectoryFolders(address->directory);
    QString folder = (QStringList{server} + folders).join(u'/');
    if (folder.size() > kLongest) {
        const QByteArray hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256).toHex();
        const QString last = folders.isEmpty() ? QString() : u'/' + folders.back().left(kLongestPart);
        folder = server.left(kLongestPart) + u'_' + QString::fromLatin1(hash.left(kDigits)) + last;
    }
    return directory + u'/' + folder;
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
                              .to = QFile::encodeName(m_settings.Folder()).toStdString(),
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
        if (file.outcome == ftp::FileOutcome::kSkipped) result.kept_files.append(Text(file.name));
    }
    return result;
}

}  // namespace zel::desktop
