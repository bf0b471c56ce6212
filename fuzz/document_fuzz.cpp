// Documents of files: a message or a font becomes a document and the same bytes again; an edited document gives a file
// that does so, or its faults.
#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "fuzz_target.h"
#include "host/filejson/file_json.h"

using namespace zel;

namespace {

void CheckRoundTrip(fuzz::Input bytes) {
    const auto key = filejson::FileJson(bytes, true);
    fuzz::Require(key.has_value(), "the file has a document");
    const filejson::DocumentFile made = filejson::FileOfDocument(filejson::FontDocument("-", key->json));
    fuzz::Require(made.faults.IsEmpty() && std::ranges::equal(made.bytes, bytes), "the document gives the same bytes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    if (filejson::FileJson(input, false)) {
        CheckRoundTrip(input);
        return 0;
    }
    try {
        const filejson::DocumentFile made =
            filejson::FileOfDocument({reinterpret_cast<const char*>(input.data()), input.size()});
        fuzz::Require(made.faults.IsEmpty() != made.bytes.empty(), "there is a file, or there are faults");
        if (made.faults.IsEmpty()) CheckRoundTrip(made.bytes);
    } catch (const std::runtime_error&) {  // it is no JSON
    }
    return 0;
}
