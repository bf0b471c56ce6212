#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "host/ftp/fetch.h"

namespace zel::desktop {

/// The fields of the fetch dialog, as typed.
struct FetchSettings {
    /// ftp://HOST/DIRECTORY
    QString url;
    /// Empty: the user of the URL, else anonymous.
    QString user;
    QString password;
    /// "12", "1-20", "*.0012"
    QString selection;
    /// Each address has a folder of its own in this one.
    QString directory;
    bool overwrite = false, fonts = true, passive = true;
    ftp::Tls tls = ftp::Tls::kTry;

    /// The first invalid field and the reason; empty if all are valid.
    QString Error() const;

    /// Destination: a folder in `directory` that is named for user, server, port and remote directory, so that disks
    /// with the same message numbers never meet. Its last part is the name of the remote directory, if there is one.
    /// Without a valid address it is `directory`.
    QString Folder() const;
};

struct FetchResult {
    QString summary;
    /// The error that ended the fetch early; else empty.
    QString failure;
    /// One line for each file that was not fetched.
    QStringList failed_files;
    /// Names of the files that existed and were not overwritten.
    QStringList kept_files;
    /// Files, or parts of files, may have been fetched.
    bool tried_files = false;
    bool cancelled = false;
};

/// Fetches messages and their fonts over FTP on its own thread.
class FetchTask : public QObject, private ftp::FetchObserver {
    Q_OBJECT

  public:
    explicit FetchTask(FetchSettings settings, QObject* parent = nullptr);
    /// Cancels the fetch and waits for its end.
    ~FetchTask() override;

    void Start();
    void Cancel() { m_cancelled = true; }

    // Emitted from the thread.
  Q_SIGNALS:
    void progressed(const QString& name, qint64 bytes, qint64 size);
    void finished(const desktop::FetchResult& result);

  private:
    FetchResult Run();
    void OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) override;
    bool Cancelled() override { return m_cancelled; }

    const FetchSettings m_settings;
    std::atomic<bool> m_cancelled = false;
    std::thread m_thread;
};

}  // namespace zel::desktop
