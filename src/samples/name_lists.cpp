#include "samples/name_lists.h"

namespace zel::samples {
namespace {

std::string Annotated(std::string_view name, std::string_view annotation) {
    std::string text(name);
    if (!annotation.empty()) text.append(" = ").append(annotation);
    return text;
}

}  // namespace

BitstreamList::BitstreamList(std::string_view heading_1, std::string_view heading_2) {
    Line(heading_1);
    Line(heading_2);
}

BitstreamList& BitstreamList::Family(std::string_view family, std::string_view annotation) {
    return Line(Annotated(family, annotation));
}

BitstreamList& BitstreamList::Style(std::string_view style, unsigned number, std::string_view annotation) {
    return Line("\t" + Annotated(style, annotation) + "\t" + std::to_string(number));
}

BitstreamList& BitstreamList::Plain(std::string_view name, unsigned number, std::string_view annotation) {
    return Line(Annotated(name, annotation) + "\t" + std::to_string(number));
}

BitstreamList& BitstreamList::Line(std::string_view line) {
    m_text.append(line).append("\n");
    return *this;
}

TypefaceList::TypefaceList(std::string_view heading_1, std::string_view heading_2) {
    Line(heading_1);
    Line(heading_2);
}

TypefaceList& TypefaceList::Typeface(std::string_view typeface, std::string_view bitstream_name) {
    return Line(std::string(typeface).append("\t").append(bitstream_name));
}

TypefaceList& TypefaceList::Line(std::string_view line) {
    m_text.append(line).append("\n");
    return *this;
}

}  // namespace zel::samples
