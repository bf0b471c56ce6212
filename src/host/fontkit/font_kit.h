#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/fontkit/atlas.h"
#include "host/fontkit/kit_names.h"
#include "host/fontkit/true_type.h"

namespace zel::fontkit {

struct KitOptions {
    /// The colour set of the glyphs' own pictures and of the strike.
    unsigned set = 0;
    /// Adds the font files that can be installed; the art must have its layers.
    bool true_type = false;
    /// Shape of a pixel in the outlines.
    PixelAspect aspect = PixelAspectOf(VideoStandard::kNtsc);
    /// Follows the name of the installed fonts if another font has that name already.
    std::string family_end{};
};

/// A font for other programs: its glyphs on pages in each colour set with their descriptions, as planes with metrics,
/// one by one, and as a font that can be installed.
class FontKit {
  public:
    /// @param stem  the digits of the font file's name, which the names of all files begin with.
    FontKit(FontArt art, std::string stem, const KitOptions& options);

    /// Names of all files, relative to the kit's directory; "/" separates that of a directory.
    const std::vector<std::string>& FileNames() const noexcept { return m_file_names; }

    /// Passes each file's name and bytes, one after another, so that only one page is in memory.
    /// @throws std::runtime_error if a picture can't be encoded, and what `write` throws.
    void Write(const std::function<void(const std::string& name, std::string_view bytes)>& write) const;

    const FontArt& Art() const noexcept { return m_art; }

  private:
    template <typename Use>
    void ForEachFile(Use use) const;

    FontArt m_art;
    const KitNames m_names;
    const KitOptions m_options;
    Atlas m_atlas;
    /// The font files; empty if they are not wanted. What their outlines lose is in the art.
    std::string m_layered, m_pixels;
    std::vector<std::string> m_file_names;
};

}  // namespace zel::fontkit
