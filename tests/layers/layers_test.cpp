#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "layers/declarations.h"
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

TEST(Layers, AFunctionIsDefinedBesideItsHeader) {
    // The contract declares what the module's other rooms define, each its own subject.
    EXPECT_THAT(CheckDeclarations(kSources, {"module/contract"}), IsEmpty());
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

TEST_F(FaultyTree, AnIncludeThatRunsUpAndARoomThatIsNotListedAreReported) {
    Write("table.txt", "low:\nhigh: low\n");
    Write("src/low/a.h", "#include \"high/b.h\"\n");
    Write("src/high/b.h", "#include \"low/a.h\"\n");
    Write("src/new/a.h", "");
    EXPECT_THAT(Table().errors, IsEmpty());
    EXPECT_THAT(CheckIncludes(Root(), Table()),
                ElementsAre("low/a.h includes high/b.h", "new/a.h is in a room that is not listed"));
    Write("table.txt", "low: high\nhigh: low\n");
    EXPECT_THAT(Table().errors, ElementsAre("low may not stand on high, which is not listed before it"));
}

TEST_F(FaultyTree, ASourceThatHidesItsHeaderBehindOthersIsReported) {
    Write("src/low/a.h", "");
    Write("src/low/a.cpp", "#include \"low/b.h\"\n#include \"low/a.h\"\n");
    EXPECT_THAT(CheckFirstIncludes(Root()), ElementsAre("low/a.cpp does not include low/a.h first"));
}

TEST_F(FaultyTree, AFunctionDefinedInAnotherHeadersSourceIsReported) {
    Write("src/low/a.h", "namespace n { void Beside(); void Part(); void Away(); struct S { void Moved(); }; }\n");
    Write("src/low/a.cpp", "namespace n { void Beside() {} }\n");
    Write("src/low/a_part.cpp", "namespace n { void Part() {} }\n");
    Write("src/low/b.cpp", "namespace n { void Away() {} namespace { void Beside() {} } }\n");
    Write("src/high/a.cpp", "namespace n { void S::Moved() {} }\n");
    EXPECT_THAT(CheckDeclarations(Root(), {}), ElementsAre("low/b.cpp defines n::Away, which low/a.h declares",
                                                           "high/a.cpp defines n::S::Moved, which low/a.h declares"));
    EXPECT_THAT(CheckDeclarations(Root(), {"low"}), IsEmpty());
}

}  // namespace

}  // namespace zel::layers
