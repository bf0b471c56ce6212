#include "host/live/ograf_package.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "base/sha256.h"
#include "base/text.h"
#include "host/live/definitions.h"
#include "host/live/scripts.h"

namespace zel::live {

namespace {

using Json = nlohmann::ordered_json;

/// The constant by which OGraf 1 names itself: the "$id" of its schema of graphics. Nothing asks for it.
constexpr const char* kOgrafSchema = ZELTRANS_OGRAF_SCHEMA;

/// Digits of a checksum in an id and in a version.
constexpr std::size_t kIdDigits = 6, kVersionDigits = 8;

bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

/// "20261122.235132" of 2026-11-22T23:51:32Z; "0" of another text.
std::string DateOf(std::string_view recorded_at) {
    constexpr std::size_t kDay = 8, kSecond = 14;
    std::string digits;
    std::ranges::copy_if(recorded_at, std::back_inserter(digits), IsDigit);
    return digits.size() == kSecond ? digits.insert(kDay, ".") : "0";
}

Json ManifestOf(const LiveForm& form, const LiveLook& look, const OgrafSource& source) {
    Json spx = SpxDefinition(form, look);
    for (const char* key : {"description", "steps", "dataformat", "DataFields"}) spx.erase(key);
    return {{"$schema", kOgrafSchema},
            {"id", OgrafId(source.stem)},
            {"version", ""},
            {"name", look.title},
            {"main", kOgrafModule},
            {"supportsRealTime", true},
            {"supportsNonRealTime", true},
            {"stepCount", 1},
            {"schema", {{"type", "object"}, {"properties", FieldProperties(form)}}},
            {"thumbnails",
             {{{"file", source.thumbnail},
               {"resolution", {{"width", source.thumbnail_width}, {"height", source.thumbnail_height}}}}}},
            {"v_spx", std::move(spx)}};
}

std::string TextOf(const Json& manifest) {
    constexpr int kIndent = 2;
    return manifest.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace

std::string OgrafId(std::string_view stem) {
    std::string part;
    for (const char c : stem) {
        const bool is_upper = c >= 'A' && c <= 'Z';
        const bool is_kept = (c >= 'a' && c <= 'z') || IsDigit(c) || c == '.' || c == '_' || c == '-';
        part += is_upper ? static_cast<char>(c - 'A' + 'a') : is_kept ? c : '_';
    }
    if (part != stem) part += "-" + base::Sha256(stem).substr(0, kIdDigits);
    return "zeltrans." + part;
}

OgrafPackage MakeOgrafPackage(const LiveForm& form, const LiveLook& look, const OgrafSource& source) {
    OgrafPackage package;
    package.module = "const zeltransForm = " + ScriptText(FormJson(form, look)) + ";\n";
    package.module += ModuleScript();
    Json manifest = ManifestOf(form, look, source);
    const std::string checksum = base::Sha256(TextOf(manifest) + package.module);
    manifest["version"] = DateOf(source.recorded_at) + "." + checksum.substr(0, kVersionDigits);
    package.manifest = TextOf(manifest);
    return package;
}

}  // namespace zel::live
