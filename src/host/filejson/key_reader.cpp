#include "host/filejson/key_reader.h"

#include <algorithm>

#include "base/text.h"
#include "host/filejson/byte_values.h"

namespace zel::filejson {

namespace {

/// A number or another value in a fault's rule.
std::string Shown(const Json& json) {
    constexpr std::size_t kLongest = 40;
    std::string text = json.dump(-1, ' ', true, Json::error_handler_t::replace);
    if (text.size() > kLongest) text = text.substr(0, kLongest) + "...";
    return text;
}

std::string CodePoint(char32_t code) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string digits;
    for (auto rest = static_cast<std::uint32_t>(code); rest != 0 || digits.size() < 4; rest >>= 4) {
        digits.insert(digits.begin(), kDigits[rest & 15]);
    }
    return "U+" + digits;
}

}  // namespace

KeyReader::KeyReader(const Json& json, const Place& place, ReadingState& state)
    : m_json(json), m_place(place), m_state(state) {
    if (!json.is_object()) AddFault("must be an object");
}

const Json* KeyReader::Find(std::string_view key) {
    m_known.push_back(key);
    const auto* object = m_json.get_ptr<const Json::object_t*>();
    if (object == nullptr) return nullptr;
    const auto found = std::ranges::find_if(*object, [&](const auto& member) { return member.first == key; });
    return found != object->end() ? &found->second : nullptr;
}

const Json* KeyReader::FindList(std::string_view key, std::size_t most) {
    const Json* json = Find(key);
    if (json == nullptr) return nullptr;
    if (!json->is_array()) {
        AddFault(key, "must be an array");
        return nullptr;
    }
    if (json->size() > most) {
        AddFault(key, "has " + base::Counted(json->size(), "element") + "; at most " + std::to_string(most) + " fit");
    }
    return json;
}

std::int64_t KeyReader::NumberAt(const Json& json, const Place& place, std::int64_t least, std::uint64_t most) {
    const auto fault = [&](const std::string& rule) {
        m_state.faults.Add(place.Pointer(), Shown(json) + rule);
        return std::int64_t{0};
    };
    if (!json.is_number_integer()) return fault(" is not a whole number");
    if (!json.is_number_unsigned() && json.get<std::int64_t>() < least)
        return fault(" is below " + std::to_string(least));
    if (json.is_number_unsigned() && json.get<std::uint64_t>() > most)
        return fault(" is above " + std::to_string(most));
    return json.get<std::int64_t>();
}

void KeyReader::Flag(std::string_view key, bool& value, bool fallback) {
    value = fallback;
    const Json* json = Find(key);
    if (json == nullptr) return;
    if (json->is_boolean()) {
        value = json->get<bool>();
    } else {
        AddFault(key, Shown(*json) + " is neither true nor false");
    }
}

std::optional<std::string> KeyReader::FindText(std::string_view key) {
    const Json* json = Find(key);
    if (json == nullptr) return std::nullopt;
    if (json->is_string()) return json->get<std::string>();
    AddFault(key, Shown(*json) + " is not a text");
    return std::nullopt;
}

std::optional<std::string> KeyReader::Latin1(std::string_view key, const std::string& text) {
    char32_t other = 0;
    auto bytes = Latin1FromUtf8(text, other);
    if (!bytes) AddFault(key, "has a character that Latin-1 lacks: " + CodePoint(other));
    return bytes;
}

void KeyReader::Text(std::string_view key, std::string& field, std::size_t width) {
    field.clear();
    if (const auto text = FindText(key)) {
        auto bytes = Latin1(key, *text);
        if (bytes && bytes->find('\0') != std::string::npos) {
            AddFault(key, "has the character U+0000");
        } else if (bytes && bytes->size() > width) {
            AddFault(key, "has " + base::Counted(bytes->size(), "character") + "; " + std::to_string(width) + " fit");
        } else if (bytes) {
            field = std::move(*bytes);
        }
    }
    m_rest_keys.push_back(std::string(key) + "_rest");
    const std::string& rest_key = m_rest_keys.back();
    files::Bytes rest;
    Bytes(rest_key, rest);
    if (rest.empty()) return;
    if (field.size() + 1 + rest.size() > width) {
        AddFault(rest_key, "has " + base::Counted(rest.size(), "byte") + "; " +
                               std::to_string(width - std::min(width, field.size() + 1)) +
                               " fit after the text and its zero");
        return;
    }
    field += '\0';
    field.append(rest.begin(), rest.end());
    field.erase(field.find_last_not_of('\0') + 1);
}

bool KeyReader::TakeBytes(std::uint64_t size, std::string_view key) {
    if (size > m_state.bytes_left) {
        AddFault(key, "the file would be larger than " + std::to_string(kLargestFile >> 20) + " MiB");
        return false;
    }
    m_state.bytes_left -= size;
    return true;
}

void KeyReader::Bytes(std::string_view key, files::Bytes& bytes, PassedOver) {
    Object(key, [&](KeyReader& value) {
        std::optional<std::uint64_t> size;
        std::optional<unsigned> fill;
        bool left_out = false;
        value.Optional("size", size, 0, std::numeric_limits<std::int64_t>::max());
        value.Optional("fill", fill, 0, 255);
        value.Flag("left_out", left_out);
        const auto base64 = value.FindText("base64");
        if (left_out) {
            value.AddFault((size ? base::Counted(*size, "byte") : "bytes") +
                           " that were left out of the document; make it again with --exact");
        } else if (base64) {
            auto decoded = FromBase64(*base64);
            if (!decoded) {
                value.AddFault("base64", "is not base64");
            } else if (fill) {
                value.AddFault("has both fill and base64");
            } else if (size && *size != decoded->size()) {
                value.AddFault(
                    "size", std::to_string(*size) + " is not the size of base64, " + std::to_string(decoded->size()));
            } else if (TakeBytes(decoded->size(), key)) {
                bytes = std::move(*decoded);
            }
        } else if (size && fill) {
            if (TakeBytes(*size, key)) bytes.assign(static_cast<std::size_t>(*size), static_cast<std::uint8_t>(*fill));
        } else if (value.HasObject()) {
            value.AddFault("must have base64, or size and fill");
        }
    });
}

void KeyReader::Finish() {
    const auto* object = m_json.get_ptr<const Json::object_t*>();
    if (object == nullptr) return;
    for (const auto& member : *object) {
        if (std::ranges::find(m_known, member.first) == m_known.end()) AddFault(member.first, "is an unknown key");
    }
}

}  // namespace zel::filejson
