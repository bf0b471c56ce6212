#pragma once

#include <string>
#include <string_view>

#include "host/live/form_json.h"

namespace zel::live {

/// What an OGraf graphic has besides its form.
struct OgrafSource {
    /// The beginning of the names of the message's files; the graphic's id is made of it.
    std::string stem;
    /// When the message was recorded, as in a library; the first part of the version.
    std::string recorded_at;
    /// Name and pixels of a thumbnail.
    std::string thumbnail;
    int thumbnail_width = 0, thumbnail_height = 0;
};

/// Name of the module in a graphic's folder.
inline constexpr const char* kOgrafModule = "graphic.mjs";

/// The manifest and the module of a graphic.
struct OgrafPackage {
    std::string manifest, module;
};

/// Makes an EBU OGraf 1 graphic, for real time and for rendering frame by frame. The version changes with everything
/// that the graphic has but its thumbnail: a host that has loaded a module does not load it again.
OgrafPackage MakeOgrafPackage(const LiveForm& form, const LiveLook& look, const OgrafSource& source);

/// The id of a graphic: "zeltrans." and the stem in lower case, with a checksum of a stem that is changed by that. With
/// a version it is the name of an element, in which SPX needs a small letter first, then small letters, digits, ".",
/// "_" and "-".
std::string OgrafId(std::string_view stem);

}  // namespace zel::live
