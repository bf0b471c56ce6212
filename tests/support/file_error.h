#pragma once

#include <string>

#include <gtest/gtest.h>

#include "platform/framework/exceptions.h"

namespace zel::module_test {

/// Expects that `call` throws the error of a file that ends early, for the file `name`.
template <typename Call>
void ExpectFileError(const std::string& name, Call&& call) {
    try {
        call();
        ADD_FAILURE() << "nothing was thrown";
    } catch (CFileException* error) {
        EXPECT_EQ(error->m_cause, 1);
        EXPECT_EQ(error->m_lOsError, -1);
        EXPECT_EQ(error->m_strFileName, name.c_str());
        error->Delete();
    }
}

}  // namespace zel::module_test
