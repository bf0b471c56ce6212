# Writes site_resources.cpp, with the files of site/ as texts.
include(${CMAKE_CURRENT_LIST_DIR}/../../../../cmake/read_texts.cmake)

read_all(script search.js card_grid.js index.js)
read_all(index_style site.css index.css)
read_all(page_style site.css page.css)
file(CONFIGURE OUTPUT ${OUTPUT} @ONLY CONTENT [==[
// Made of the files in site/ by embed.cmake.
#include "host/export/site_resources.h"

namespace zel::exporter {

std::string_view SiteScript() noexcept {
    return R"zeltrans(
"use strict";
@script@)zeltrans";
}

std::string_view SiteIndexStyle() noexcept {
    return R"zeltrans(
@index_style@)zeltrans";
}

std::string_view SitePageStyle() noexcept {
    return R"zeltrans(
@page_style@)zeltrans";
}

}  // namespace zel::exporter
]==])
