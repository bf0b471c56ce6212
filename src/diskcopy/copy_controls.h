#pragma once

namespace zel::diskcopy {

/// Ids of the copy dialog's template and controls, for desktops and scripts.

/// Not an id of the module's templates.
inline constexpr unsigned kCopyDialog = 9001;

inline constexpr int kCopySourceEdit = 9010, kCopySourceBrowse = 9011;
inline constexpr int kCopyTargetEdit = 9012, kCopyTargetBrowse = 9013;
/// Fills the list.
inline constexpr int kCopyShowButton = 9014;
inline constexpr int kCopyFileList = 9015;
inline constexpr int kCopySkipRadio = 9016, kCopyOverwriteRadio = 9017;
inline constexpr int kCopyStatus = 9018;
// IDOK copies. IDCANCEL closes the dialog, or stops a run.

}  // namespace zel::diskcopy
