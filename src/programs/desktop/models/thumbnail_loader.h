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

/// Reads pictures from a library and scales them to thumbnails, on a thread of its own. The latest request is handled
/// first, since its item is on the screen.
class ThumbnailLoader : public QObject {
    Q_OBJECT

  public:
    /// @param size  of the largest thumbnail, in device pixels.
    ThumbnailLoader(std::string library, QSize size, QObject* parent = nullptr);
    ~ThumbnailLoader() override;

    void Request(const library::RecordingKey& key);

  Q_SIGNALS:
    /// A null image when there is no picture. Emitted from the loader's thread.
    void loaded(const QString& disk, int number, const QImage& image);
    /// A request was discarded, because too many followed. Request it again when it is needed.
    void dropped(const QString& disk, int number);

  private:
    void Run();

    const std::string m_library;
    const QSize m_size;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    /// The newest last.
    std::deque<library::RecordingKey> m_requests;
    bool m_closed = false;
    std::thread m_thread;
};

}  // namespace zel::desktop
