#include "host/recorder/resume.h"

#include <gtest/gtest.h>

#include "base/sha256.h"
#include "base/whole_file.h"
#include "host/recorder/source_files.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

TEST(RangesWithout, AreTheFewestThatCoverEachOtherNumberOnce) {
    constexpr int kNumbers = 8;
    for (unsigned bits = 0; bits < 1U << kNumbers; ++bits) {
        std::set<int> without, covered;
        std::size_t fewest = 0;
        for (int number = 0; number < kNumbers; ++number) {
            if ((bits >> number & 1) != 0) {
                without.insert(number);
            } else if (number == 0 || without.contains(number - 1)) {
                ++fewest;
            }
        }
        const std::vector<host::NumberRange> ranges = recorder::RangesWithout(without, 0, kNumbers - 1);
        EXPECT_EQ(ranges.size(), fewest) << bits;
        for (const host::NumberRange& range : ranges) {
            for (int n = std::stoi(range.first); n <= std::stoi(range.last); ++n) {
                EXPECT_TRUE(!without.contains(n) && covered.insert(n).second) << bits;
            }
        }
        EXPECT_EQ(covered.size() + without.size(), std::size_t{kNumbers}) << bits;
    }
}

TEST(RangesWithout, IgnoreNumbersOutsideTheRange) {
    const std::vector<host::NumberRange> ranges = recorder::RangesWithout({1, 10}, 3, 7);
    ASSERT_EQ(ranges.size(), 1U);
    EXPECT_EQ(ranges[0].first + "-" + ranges[0].last, "3-7");
    EXPECT_TRUE(recorder::RangesWithout({}, 5, 4).empty());
}

TEST(Sources, WithoutAChecksumAreNeverUnchanged) {
    const samples_test::ScratchDirectory scratch;
    const std::string file = scratch.Path() / "file";
    base::WriteWholeFile(file, "x");
    recorder::FileDigests digests;
    EXPECT_TRUE(recorder::AreUnchanged({digests.Of(file + " missing")}, "", digests));
    recorder::FileDigests stopped([] { return true; });
    EXPECT_EQ(stopped.Of(file).sha256, "");
    EXPECT_FALSE(recorder::AreUnchanged({stopped.Of(file)}, "", digests));
}

TEST(Sources, AreReadWithTheirContentsAndSharedWhileTheyStayTheSame) {
    const samples_test::ScratchDirectory scratch;
    const std::string file = scratch.Path() / "file";
    base::WriteWholeFile(file, "first");
    recorder::FileDigests digests;
    EXPECT_EQ(digests.Of(file).sha256, base::Sha256("first"));
    const recorder::ReadSource first = digests.Read(file, 100);
    EXPECT_EQ(first.file.sha256, base::Sha256("first"));
    EXPECT_EQ(ContentsOf(*first.contents), "first");
    EXPECT_EQ(digests.Read(file, 100).contents, first.contents);
    base::WriteWholeFile(file, "second");
    EXPECT_EQ(ContentsOf(*digests.Read(file, 100).contents), "second");
    EXPECT_EQ(digests.Read(file, 5).file.sha256, "");
    std::filesystem::resize_file(file, library::kLargestKeptFile + 1);
    const recorder::ReadSource large = digests.Read(file, library::kLargestKeptFile * 2);
    EXPECT_NE(large.file.sha256, "");
    EXPECT_EQ(large.contents, nullptr);
}

TEST(UpToDate, AreRecordingsWhoseFilesAreKept) {
    const samples_test::ScratchDirectory scratch;
    const std::string file = scratch.Path() / "message";
    base::WriteWholeFile(file, "message");
    library::Library library(scratch.Path() / "lib", library::Access::kWrite);
    recorder::FileDigests digests;
    for (const bool has_files : {false, true}) {
        library::Recording recording;
        recording.number = 7;
        recorder::ReadSource source = digests.Read(file, 100);
        recording.sources = {source.file};
        if (has_files) recording.files = {source.contents};
        library.Record(std::vector{recording});
        EXPECT_EQ(UpToDateNumbers(library, {}, 1, 9, digests).contains(7), has_files);
    }
}

}  // namespace

}  // namespace zel::test
