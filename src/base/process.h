#pragma once

namespace zel::base {

/// Prepares the process, as the first statement of main:
/// - Descriptors 0 to 2 that are closed are opened on /dev/null, so that no file that is opened later receives what is
///   meant for the terminal. Reading gives the end of the file; writing fails, as on a closed descriptor.
/// - A write beyond the limit for the size of files fails (EFBIG) and doesn't end the process.
void PrepareProcess() noexcept;

}  // namespace zel::base
