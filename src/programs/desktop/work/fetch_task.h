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

/// What is fetched from where, as it was typed.
struct FetchOrder {
    QString url;   ///< ftp://HOST/DIRECTORY
    QString user;  ///< empty: as the address tells, else anonymous.
    QString password;
    QString selection;  ///< "12", "1-20", "*.0012"
    QString directory;  ///< where to.
    bool overwrite = false, fonts = true, passive = true;
    ftp::Tls tls = ftp::Tls::kTry;

    /// What is wrong with it; empty when it can be tried.
    QString Trouble() const;
};

struct FetchResult {
    QString summary;           ///< "3 fetched, 1 was there"
    QString failure;           ///< why nothing more could be done; empty when the work came to its end.
    QStringList failed;        ///< a line for each file that isn't there.
    bool tried_files = false;  ///< so that some may have come, in part at least.
    bool cancelled = false;
};

/// Fetches messages and their fonts over FTP on a thread of its own.
class FetchTask : public QObject, private ftp::FetchObserver {
    Q_OBJECT

  public:
    explicit FetchTask(FetchOrder order, QObject* parent = nullptr);
    /// Stops the work and waits for it.
    ~FetchTask() override;

    void Start();
    void Cancel() { m_cancelled = true; }

  Q_SIGNALS:  // sent from the thread
    void progressed(const QString& name, qint64 bytes, qint64 size);
    void finished(const desktop::FetchResult& result);

  private:
    FetchResult Work();
    void OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) override;
    bool Cancelled() override { return m_cancelled; }

    const FetchOrder m_order;
    std::atomic<bool> m_cancelled = false;
    std::thread m_thread;
};

}  // namespace zel::desktop
