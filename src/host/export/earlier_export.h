#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/export/manifest.h"
#include "host/library/recording.h"

namespace zel::exporter {

/// What earlier exports have left in a directory: its manifest, without the files that are gone, its messages sorted by
/// disk and number. Empty without a manifest.
/// @throws std::runtime_error with the file's name for a manifest.json that no export has written.
Manifest EarlierExport(const std::filesystem::path& directory);

/// Checks that files of an export may be beside those of earlier ones.
/// @param planned  the formats and the kind of pictures of the new export.
/// @throws std::runtime_error with the reason.
void CheckGoTogether(const Manifest& earlier, const Manifest& planned);

/// The message with a key, in a manifest of EarlierExport; null if there is none.
const ManifestMessage* FindMessage(const Manifest& earlier, const library::RecordingKey& key);

bool HasName(const std::vector<std::string>& names, std::string_view name);

/// Adds the files of earlier exports that the new one has not replaced, and the formats and failures of formats that
/// the new one does not have. The messages are sorted by disk and number.
void AddEarlier(Manifest earlier, Manifest& manifest);

/// Adds a file to a list, in place of one with its name.
void PutFile(ManifestFile file, std::vector<ManifestFile>& files);

}  // namespace zel::exporter
