#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "base/text.h"
#include "files/message_reader.h"
#include "fill/fill_fields.h"
#include "inspect/inspect.h"
#include "samples/disk/demo_disk.h"
#include "samples/scratch_directory.h"

namespace zel::fill {
namespace {

files::Bytes FileBytes(const std::filesystem::path& path) {
    const std::string text = samples_test::ReadAll(path);
    return {text.begin(), text.end()};
}

FontSet FontsOf(const files::MessageFile& message, const std::filesystem::path& disk) {
    FontSet fonts;
    for (std::size_t slot = 0; slot < fonts.size(); ++slot) {
        const int number = message.header.font_numbers[slot];
        const auto file = disk / "MACHINE" / base::NumberedName(number);
        if (number != kNoFont && std::filesystem::exists(file)) fonts[slot] = MeasureFont(FileBytes(file), number);
    }
    return fonts;
}

/// Fields on rows of the message, at places that need not make sense.
void AddFields(files::MessageFile& message, std::mt19937& random) {
    const auto below = [&](unsigned most) { return static_cast<unsigned>(random() % most); };
    if (!message.tabs) message.tabs.emplace();
    for (int n = 0; n < 12; ++n) {
        const unsigned start = below(700);
        message.tabs->fields.push_back({.tab_start = start,
                                        .tab_end = start + below(600),
                                        .tab_row = below(static_cast<unsigned>(message.rows.size())),
                                        .tab_font = random() % 3 == 0 ? 16 + below(16) : below(4),
                                        .tab_colour = below(16)});
    }
}

// Whatever a field is filled with, an import finds nothing wrong that it didn't find before, and the text is there.
TEST(FilledMessages, OfTheDemonstrationDiskAreReadWithoutNewDefects) {
    const samples_test::ScratchDirectory scratch;
    samples::WriteDemonstrationDisk(scratch.Path());
    std::mt19937 random(16);
    int filled_texts = 0;
    for (int number = 1; number <= 21; ++number) {
        const auto description =
            files::ReadMessage(FileBytes(scratch.Path() / "MESSAGES" / base::NumberedName(number)));
        if (!description || description->size) continue;
        files::MessageFile message = *description;
        AddFields(message, random);
        const Form form = MakeForm(message, FontsOf(message, scratch.Path()));
        const auto before = inspect::InspectBytes(files::WriteMessage(message), ".0001").defects;
        for (std::size_t field = 0; field < form.fields.size(); ++field) {
            const FieldValue values[] = {{field, field % 5 == 0 ? "" : "Ab c"}, {field / 2, "W"}};
            const std::span<const FieldValue> used = std::span(values).first(field == 0 ? 1 : 2);
            const auto overflow = static_cast<Overflow>(random() % 3);
            const Filled filled = FillFields(form, used, overflow);
            const files::Bytes bytes = files::WriteMessage(filled.message);
            EXPECT_EQ(inspect::InspectBytes(bytes, ".0001").defects, before) << number << " f" << field;
            const auto again = files::ReadMessage(bytes);
            ASSERT_TRUE(again && *again == filled.message) << number << " f" << field;
            if (!filled.faults.empty() || !filled.notes.empty() || field % 5 == 0) continue;
            EXPECT_EQ(PresentText(*again, form.fields[field], Gaps::kIgnored), "Ab c") << number << " f" << field;
            ++filled_texts;
        }
    }
    EXPECT_GT(filled_texts, 50);
}

}  // namespace
}  // namespace zel::fill
