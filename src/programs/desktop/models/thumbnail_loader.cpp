#include "programs/desktop/models/thumbnail_loader.h"

#include <exception>
#include <optional>

#include "host/library/library.h"
#include "host/picture/png_reader.h"
#include "host/picture/resample.h"
#include "programs/desktop/models/picture_image.h"

namespace zel::desktop {

namespace {

/// More than a screen shows.
constexpr std::size_t kMostRequests = 128;

/// The picture of a PNG file's bytes, with square pixels and as large as fits; a null image for bytes that are none.
QImage Thumbnail(const std::string& png, QSize most) {
    if (png.empty()) return {};
    try {
        const picture::Picture picture = picture::DecodePng(png);
        const double aspect = PixelAspect(picture.width, picture.height);
        const QSize size =
            QSize(qRound(picture.width * aspect), picture.height).scaled(most, Qt::KeepAspectRatio).expandedTo({1, 1});
        return ImageOf(picture::Stretched(picture, size.width(), size.height()))
            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace

ThumbnailLoader::ThumbnailLoader(std::string library, QSize size, QObject* parent)
    : QObject(parent), m_library(std::move(library)), m_size(size), m_thread([this] { Work(); }) {}

ThumbnailLoader::~ThumbnailLoader() {
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void ThumbnailLoader::Ask(const library::RecordingKey& key) {
    std::optional<library::RecordingKey> given_up;
    {
        const std::lock_guard lock(m_mutex);
        m_requests.push_back(key);
        if (m_requests.size() > kMostRequests) {
            given_up = m_requests.front();
            m_requests.pop_front();
        }
    }
    m_changed.notify_all();
    if (given_up) Q_EMIT dropped(QString::fromUtf8(given_up->disk.c_str()), given_up->number);
}

void ThumbnailLoader::Work() {
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
            image = Thumbnail(library->Picture(key), m_size);
        } catch (const library::LibraryError&) {
            library.reset();
        }
        Q_EMIT loaded(QString::fromUtf8(key.disk.c_str()), key.number, image);
    }
}

}  // namespace zel::desktop
