#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "inspect/report_text.h"
#include "inspect/sample_files.h"
#include "module/font/format/font_loader.h"
#include "module/message/format/message_loader.h"

namespace zel::test {

namespace {

using inspect::FileReport;
using inspect::Verdict;

// Each beginning of a file gets a verdict that agrees with the reader, and a file that ends early is never whole.
void CheckPrefix(const FileReport& report, bool read, std::size_t size, std::size_t whole) {
    SCOPED_TRACE(size);
    if (read) {
        EXPECT_EQ(report.verdict, size == whole ? Verdict::kWhole : Verdict::kReadable);
        EXPECT_EQ(report.defects.empty(), size == whole);
    } else {
        EXPECT_EQ(report.verdict, Verdict::kBroken);
        EXPECT_NE(report.reason, "");
    }
    EXPECT_FALSE(inspect::ReportText(report).empty());
}

void CheckMessagePrefixes(const samples::MessageFile& message) {
    const samples::Bytes bytes = samples::WriteMessage(message);
    for (std::size_t size = 4; size <= bytes.size(); ++size) {
        const std::span<const std::uint8_t> prefix = std::span(bytes).first(size);
        message::LoadedMessage loaded;
        const message::MessageOutcome outcome = message::LoadMessage(prefix, loaded);
        const FileReport report = inspect::InspectBytes(prefix, ".0012");
        CheckPrefix(report, outcome == message::MessageOutcome::kRead, size, bytes.size());
        const auto kept =
            std::ranges::count_if(report.message->tabs, [](const auto& tab) { return tab.rejected.empty(); });
        EXPECT_EQ(kept, loaded.tab_count);
    }
}

TEST(EveryPrefix, OfAMessageIsReported) {
    CheckMessagePrefixes(GoodMessage());
}

TEST(EveryPrefix, OfAMessageThatEndsWithItsRowsIsReported) {
    samples::MessageFile message = GoodMessage();
    message.palette.reset();
    message.background.reset();
    message.tabs.reset();
    message.flash_font.emplace().encoding_size = 40;
    CheckMessagePrefixes(message);
}

TEST(EveryPrefix, OfAFontIsReported) {
    const samples::Bytes bytes = samples::WriteFont(GoodFont());
    for (std::size_t size = 4; size <= bytes.size(); ++size) {
        const std::span<const std::uint8_t> prefix = std::span(bytes).first(size);
        font::LoadedFont loaded;
        const font::FontOutcome outcome = font::LoadFont(prefix, loaded);
        CheckPrefix(inspect::InspectBytes(prefix, ".0012"), outcome == font::FontOutcome::kRead, size, bytes.size());
    }
}

}  // namespace

}  // namespace zel::test
