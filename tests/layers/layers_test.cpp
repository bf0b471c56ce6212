#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "layers/edges.h"
#include "samples/scratch_directory.h"

namespace zel::layers {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::filesystem::path kSources = ZELTRANS_SOURCES;
const std::filesystem::path kTable = ZELTRANS_EDGES;

TEST(Layers, TheTableListsEachRoomAfterThoseThatItStandsOn) {
    EXPECT_THAT(ReadEdgeTable(kTable).errors, IsEmpty());
}

TEST(Layers, EveryIncludeGoesDown) {
    EXPECT_THAT(CheckIncludes(kSources, ReadEdgeTable(kTable)), IsEmpty());
}

TEST(Layers, ASourceIncludesItsOwnHeaderFirst) {
    EXPECT_THAT(CheckFirstIncludes(kSources), IsEmpty());
}

/// A small tree with one fault each.
class FaultyTree : public testing::Test {
  protected:
    void Write(const std::string& name, const std::string& text) {
        const std::filesystem::path file = m_directory.Path() / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }
    std::filesystem::path Root() const { return m_directory.Path() / "src"; }
    EdgeTable Table() { return ReadEdgeTable(m_directory.Path() / "table.txt"); }

  private:
    samples_test::ScratchDirectory m_directory;
};

TEST_F(FaultyTree, AnIncludeThatRunsUpIsReported) {
    Write("table.txt", "low:\nhigh: low\n");
    Write("src/low/a.h", "#include \"high/b.h\"\n");
    Write("src/high/b.h", "#include \"low/a.h\"\n");
    EXPECT_THAT(Table().errors, IsEmpty());
    EXPECT_THAT(CheckIncludes(Root(), Table()), ElementsAre("low/a.h includes high/b.h"));
}

TEST_F(FaultyTree, ATableWithACircleIsReported) {
    Write("table.txt", "low: high\nhigh: low\n");
    EXPECT_THAT(Table().errors, ElementsAre("low may not stand on high, which is not listed before it"));
}

TEST_F(FaultyTree, ARoomThatTheTableDoesNotListIsReported) {
    Write("table.txt", "low:\n");
    Write("src/new/a.h", "");
    EXPECT_THAT(CheckIncludes(Root(), Table()), ElementsAre("new/a.h is in a room that is not listed"));
}

TEST_F(FaultyTree, ASourceThatHidesItsHeaderBehindOthersIsReported) {
    Write("src/low/a.h", "");
    Write("src/low/a.cpp", "#include \"low/b.h\"\n#include \"low/a.h\"\n");
    EXPECT_THAT(CheckFirstIncludes(Root()), ElementsAre("low/a.cpp does not include low/a.h first"));
}

}  // namespace

}  // namespace zel::layers
