// Every allocation, every opening of a file and every read failing in turn, through a whole import and the drawing of
// what it gave.
#include <regex>
#include <set>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "faults/failing.h"
#include "faults/machine.h"

namespace zel::test {

namespace {

using failing::Armed;
using failing::Call;
using faults::Machine;
using testing::Each;
using testing::ResultOf;

struct FailureCase {
    const char* name;
    Call call;
    bool from_then_on;
};

/// What the documents of the formats give. The import hears nothing when its message can't be read. A font that can't
/// be loaded takes its characters with it, a stored glyph cut short ends the walk with a file error, and memory that
/// runs out leaves as the framework's exception from wherever it did.
bool Explained(const std::string& outcome) {
    static const std::regex kExplained(
        "(no memory|(1212 )?no memory|1212 (1157 (c )*((1181 (1158 (1180 (1213 )?)?)?)?(no memory|file error)|1181 "
        "1158 1180 1213 )"
        "|no memory)?); "
        "([0-2] drawn|no memory|file error); (alone|not alone|no memory); ");
    return std::regex_match(outcome, kExplained);
}

class EveryCall : public testing::TestWithParam<FailureCase> {};

int LowestFreeDescriptor() {
    const int descriptor = ::dup(STDIN_FILENO);
    ::close(descriptor);
    return descriptor;
}

TEST_P(EveryCall, ThatFailsLeavesNothingBehindAndTheNextImportUnharmed) {
    Machine machine;
    machine.Import();  // what lives as long as the process exists from here on
    const std::string whole = machine.Import();
    const int descriptor = LowestFreeDescriptor();
    std::set<std::string> outcomes;
    for (std::uint64_t nth = 0;; ++nth) {
        SCOPED_TRACE(nth);
        {
            const Armed armed(GetParam().call, nth, GetParam().from_then_on);
            const std::string outcome = machine.Import();
            const failing::Paused paused;
            if (!armed.Fired()) {
                EXPECT_EQ(outcome, whole);
                EXPECT_GE(nth, 10U);
                break;
            }
            if (outcome != whole) outcomes.insert(outcome);
        }
        ASSERT_EQ(LowestFreeDescriptor(), descriptor);
        ASSERT_EQ(machine.BlocksLeft(), 0);
        ASSERT_EQ(machine.Import(), whole);
    }
    EXPECT_THAT(outcomes, Each(ResultOf(&Explained, true)));
}

INSTANTIATE_TEST_SUITE_P(Each, EveryCall,
                         testing::Values(FailureCase{"one_allocation", Call::kAllocation, false},
                                         FailureCase{"all_allocations_from_one_on", Call::kAllocation, true},
                                         FailureCase{"one_open", Call::kOpen, false},
                                         FailureCase{"all_opens_from_one_on", Call::kOpen, true},
                                         FailureCase{"one_read", Call::kRead, false},
                                         FailureCase{"all_reads_from_one_on", Call::kRead, true}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace zel::test
