#include "host/thumbnail/message_thumbnail.h"

#include <algorithm>
#include <system_error>

#include "host/picture/picture_composer.h"
#include "host/run/import_paths.h"
#include "host/run/import_run.h"

namespace zel::thumbnail {

namespace {

bool IsClear(const picture::Picture& picture) {
    const picture::ConstPixelView view = picture.View();
    for (int y = 0; y < picture.height; ++y) {
        if (std::ranges::any_of(view.Row(y), [](picture::Rgba pixel) { return pixel.alpha != 0; })) return false;
    }
    return true;
}

}  // namespace

std::optional<picture::Picture> ImportedPicture(const std::filesystem::path& file) {
    // The module selects a file by the number after the dot; a thumbnail must not show another one.
    const std::string name = file.filename().string();
    if (const std::size_t dot = name.rfind('.'); dot != 0 && dot != std::string::npos) return std::nullopt;
    std::error_code error;
    const std::string found = run::FindMessageFile(run::ImportPathsOf(file.string(), std::nullopt));
    if (found.empty() || !std::filesystem::equivalent(found, file, error)) return std::nullopt;
    picture::PictureComposer composer;
    host::HostObserver* const observers[] = {&composer};
    run::ImportRequest request;
    request.message = file.string();
    run::RunImport(request, observers);
    std::optional<picture::Picture> picture = composer.TakePicture();
    if (picture && IsClear(*picture)) picture.reset();
    return picture;
}

}  // namespace zel::thumbnail
