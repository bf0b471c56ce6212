#pragma once

#include <compare>
#include <memory>
#include <optional>
#include <string>

#include "platform/system/types.h"

struct _FcConfig;

namespace zel::picture {

/// What identifies a typeface in a LOGFONT.
struct TypefaceQuery {
    std::string family;
    /// 1 to 1000; 400 is regular, 700 bold.
    int weight = 400;
    bool italic = false;
    auto operator<=>(const TypefaceQuery&) const = default;
};

TypefaceQuery TypefaceQueryOf(const LOGFONT& font);

/// A typeface in a file of installed fonts.
struct TypefaceFile {
    std::string path;
    /// Of the typeface in a file with several.
    int index = 0;
};

/// The installed typefaces.
class TypefaceFinder {
  public:
    TypefaceFinder();
    ~TypefaceFinder();

    /// The scalable typeface that is closest to the query; empty when none is installed.
    std::optional<TypefaceFile> Find(const TypefaceQuery& query) const;

  private:
    struct DestroyConfig {
        void operator()(_FcConfig* config) const noexcept;
    };
    std::unique_ptr<_FcConfig, DestroyConfig> m_config;
};

}  // namespace zel::picture
