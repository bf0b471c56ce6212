#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel::test {

/// The pixels of a picture file as Qt decodes them, which shows them in the desktop program: red, green, blue and
/// straight alpha.
std::vector<std::uint8_t> DecodedByQt(const std::string& file);

}  // namespace zel::test
