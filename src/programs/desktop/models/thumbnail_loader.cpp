#include "programs/desktop/models/thumbnail_loader.h"

#include <algorithm>
#include <exception>
#include <optional>

#include "host/library/library.h"
#include "host/picture/png_reader.h"
#include "host/picture/resample.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/picture_image.h"

namespace zel::desktop {

namespace {

/// More than fit on a screen.
constexpr std::size_t kMaxRequests = 128;

/// The picture of a PNG file with square pixels, as large as fits; a null image if there is none.
QImage ThumbnailOf(const std::string& png, QSize largest) {
    if (png.empty()) return {};
    try {
        const picture::Picture picture = picture::DecodePng(png);
        const double ratio = PixelRatio({picture.width, picture.height});
        const QSize size = QSize(qRound(picture.width * ratio), picture.height)
                               .scaled(largest, Qt::KeepAspectRatio)
                               .expandedTo({1, 1});
        return ImageOf(picture::Stretched(picture, size.width(), size.height()));
    } catch (const std::exception&) {
        // The bytes are not valid, or memory is exhausted.
        return {};
    }
}

}  // namespace

ThumbnailLoader::ThumbnailLoader(std::string library, QSize size, QObject* parent)
    : QObject(parent), m_library(std::move(library)), m_size(size), m_thread([this] { Run(); }) {}

ThumbnailLoader::~ThumbnailLoader() {
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void ThumbnailLoader::Request(const library::RecordingKey& key) {
    std::optional<library::RecordingKey> discarded;
    {
        const std::lock_guard lock(m_mutex);
        m_requests.push_back(key);
        if (m_requests.size() > kMaxRequests) {
            discarded = m_requests.front();
            m_requests.pop_front();
        }
    }
    m_changed.notify_all();
    if (discarded) Q_EMIT dropped(Text(discarded->disk), discarded->number);
}

void ThumbnailLoader::Run() {
    std::optional<library::Library> library;
    for (;;) {
        library::RecordingKey key;
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_closed || !m_requests.empty(); });
            if (m_closed) return;
            key = std::move(m_requests.back());
            m_requests.pop_back();
        }
        QImage image;
        try {
            if (!library) library.emplace(m_library, library::Access::kRead);
            image = ThumbnailOf(library->Picture(key), m_size);
        } catch (const library::LibraryError&) {
            library.reset();
        }
        Q_EMIT loaded(Text(key.disk), key.number, image);
    }
}

}  // namespace zel::desktop
