#include "samples/message_writer.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace zel::samples {
namespace {

// What reads the files tests what WriteMessage and WriteFont write: tests/module/formats the position and the width of
// every field, tests/module/message and tests/module/font the sections.

TEST(ShuffledRecords, RejectAnythingButAPermutation) {
    RowText row = RowFromText(0, "AB", 0, 10);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 2>{0, 0}), std::invalid_argument);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 2>{0, 2}), std::invalid_argument);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 1>{0}), std::invalid_argument);
}

}  // namespace
}  // namespace zel::samples
