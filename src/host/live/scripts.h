#pragma once

#include <string_view>

namespace zel::live {

// The JavaScript of templates, from the files in js/.

/// Of a page: one function without a name that is called at once, and reads the form from the element zeltrans-form.
std::string_view PageScript() noexcept;

/// Of an OGraf module, after a declaration of the constant zeltransForm. Its default export is the element's class.
std::string_view ModuleScript() noexcept;

/// CSS of a page.
std::string_view PageStyle() noexcept;

}  // namespace zel::live
