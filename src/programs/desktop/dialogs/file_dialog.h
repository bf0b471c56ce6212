#pragma once

#include <string>

class CFileDialog;
class QWidget;

namespace zel::desktop {

/// Lets the user pick a file, with the options of dialog.m_ofn. Files whose names begin with a dot are shown too.
/// @param parent  may be null.
/// @param path    receives the path in this system's form.
/// @return IDOK or IDCANCEL.
int PickFile(QWidget* parent, const CFileDialog& dialog, std::string& path);

}  // namespace zel::desktop
