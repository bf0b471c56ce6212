#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

#include "host/library/recording.h"

namespace zel::desktop {

/// Reads pictures out of a library and makes thumbnails of them, on a thread of its own. What was asked for last comes
/// first, since it is on the screen.
class ThumbnailLoader : public QObject {
    Q_OBJECT

  public:
    /// @param size  of the largest thumbnail, in the screen's own pixels.
    ThumbnailLoader(std::string library, QSize size, QObject* parent = nullptr);
    ~ThumbnailLoader() override;

    void Ask(const library::RecordingKey& key);

  Q_SIGNALS:
    /// A null image when there is no picture. Sent from the loader's thread.
    void loaded(const QString& disk, int number, const QImage& image);
    /// A request was given up, because so many came after it; to be asked for again when it is needed.
    void dropped(const QString& disk, int number);

  private:
    void Work();

    const std::string m_library;
    const QSize m_size;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<library::RecordingKey> m_requests;  // the newest last
    bool m_closed = false;
    std::thread m_thread;
};

}  // namespace zel::desktop
