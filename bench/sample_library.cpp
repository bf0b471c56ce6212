#include "sample_library.h"

#include <cmath>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "base/text.h"
#include "host/library/library.h"
#include "host/picture/png_writer.h"

using namespace zel;

namespace {

constexpr int kRecordingsPerWrite = 1000;

/// Words of two to four syllables, a frequent one more often than a rare one.
class Words {
  public:
    std::string Next() {
        constexpr double kCount = 20'000;
        const double fraction = std::uniform_real_distribution(0.0, 1.0)(m_random);
        auto index = static_cast<std::size_t>(std::pow(kCount, fraction)) - 1;
        constexpr const char* kSyllables[] = {"ba", "ce", "di", "fo", "gu", "ha", "je", "ki", "lo", "mu", "na",
                                              "pe", "ri", "so", "tu", "va", "we", "xi", "yo", "zu", "sha"};
        constexpr std::size_t kKinds = std::size(kSyllables);
        std::string word;
        for (index += kKinds; index != 0; index /= kKinds) word += kSyllables[index % kKinds];
        return word;
    }
    int Count(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }

  private:
    std::mt19937 m_random{20};
};

std::string SmallPicture() {
    picture::Picture picture = picture::ClearPicture(48, 32);
    for (std::size_t i = 0; i < picture.rgba.size(); i += 3) picture.rgba[i] = static_cast<std::uint8_t>(i);
    return picture::EncodePng(picture);
}

library::Recording MakeRecording(int index, int number, int disk, Words& words) {
    library::Recording recording;
    recording.disk = "DISK" + base::FourDigits(disk);
    recording.number = number;
    recording.recorded_at = "2026-11-22T23:51:32Z";
    recording.options = "lines=486 baseline-align=yes tt-convert=no";
    recording.text = kCommonWord;
    if (index % 1000 == 7) recording.text += std::string(" ") + kRareWord;
    if (index % 100 == 3) recording.text += std::string(" ") + kSeldomWord;
    for (int row = words.Count(3, 8); row > 0; --row) {
        recording.text += '\n';
        for (int word = words.Count(2, 5); word > 0; --word) recording.text += words.Next() + ' ';
    }
    recording.document = "{\"rows\":\"" + std::string(1000, 'x') + "\"}";
    recording.fonts = {"Sans", "Serif"};
    recording.fields = {{"Score_Home", 1, 2, 30, 40}, {"Clock", 5, 6, 70, 80}};
    if (index % 10 == 0) recording.warnings = {"font 31 is missing"};
    const std::string root = "/archive/" + recording.disk;
    recording.sources = {{root + "/MESSAGES/" + base::NumberedName(number), {}, 700, std::string(64, 'a')},
                         {root + "/MACHINE/.0012", 12, 900, std::string(64, 'b')}};
    recording.width = 48;
    recording.height = 32;
    return recording;
}

}  // namespace

void MakeSampleLibrary(const std::filesystem::path& file, int recordings) {
    library::Library library(file, library::Access::kWrite);
    const std::string picture = SmallPicture();
    const int per_disk = recordings / kLibraryDisks;
    Words words;
    std::vector<library::Recording> batch;
    for (int index = 0; index < recordings; ++index) {
        batch.push_back(MakeRecording(index, index % per_disk, index / per_disk, words));
        batch.back().picture = picture;
        if (batch.size() < kRecordingsPerWrite && index + 1 < recordings) continue;
        library.Record(batch);
        batch.clear();
    }
}
