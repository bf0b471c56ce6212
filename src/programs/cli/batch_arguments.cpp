#include "programs/cli/batch_arguments.h"

#include <filesystem>
#include <span>
#include <system_error>

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

bool IsDirectory(const std::string& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

/// A word that is no list of numbers may still be a directory of such a name.
bool IsList(const std::string& word) {
    try {
        NumberSelection::Parse(std::span(&word, 1));
        return true;
    } catch (const InvalidNumbers&) {
        return false;
    }
}

/// Whether a word after the first is meant as numbers and not as a disk.
bool IsNumbers(const std::string& word) {
    if (!LooksLikeNumbers(word)) return false;
    if (!IsDirectory(word)) return true;
    if (!IsList(word)) return false;
    throw InvalidNumbers('"' + word + "\" is a message number and also a directory: write ./" + word +
                         " for the disk, or ." + word + " for the number");
}

void RefuseRepeats(const std::vector<std::string>& disks) {
    for (std::size_t i = 0; i < disks.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            std::error_code ignored;
            if (disks[i] == disks[j] || fs::equivalent(disks[i], disks[j], ignored))
                throw InvalidNumbers(disks[i] + ": the disk is named twice");
        }
    }
}

}  // namespace

void SplitBatchWords(BatchArguments& arguments) {
    std::vector<std::string> numbers;
    arguments.disks.clear();
    for (std::size_t i = 0; i < arguments.words.size(); ++i) {
        const std::string& word = arguments.words[i];
        if (i != 0 && IsNumbers(word)) {
            numbers.push_back(word);
        } else if (numbers.empty()) {
            arguments.disks.push_back(word);
        } else {
            throw InvalidNumbers('"' + word + "\" after the numbers " + numbers.front() +
                                 ": it is no number, and disks come before the numbers");
        }
    }
    RefuseRepeats(arguments.disks);
    arguments.numbers = NumberSelection::Parse(numbers);
}

}  // namespace zel::cli
