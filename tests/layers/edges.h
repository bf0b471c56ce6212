#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace zel::layers {

/// The rooms of a source tree and the edges that are allowed between them.
struct EdgeTable {
    /// In the order of the file: a room may only include rooms before it.
    std::vector<std::string> rooms;
    std::map<std::string, std::set<std::string>> allowed;
    /// Lines that can't be read, rooms that are listed twice, edges to a room that is not listed before.
    std::vector<std::string> errors;
};
EdgeTable ReadEdgeTable(const std::filesystem::path& file);

/// One line for each include of the sources below `root` that the table does not allow, and for each folder with
/// sources that it does not list.
std::vector<std::string> CheckIncludes(const std::filesystem::path& root, const EdgeTable& table);

/// One line for each header X.h with an X.cpp beside it that the source does not include first, which would hide a
/// header that can't be compiled alone.
std::vector<std::string> CheckFirstIncludes(const std::filesystem::path& root);

}  // namespace zel::layers
