#pragma once

#include <string>

class CFileDialog;
class QWidget;

namespace zel::desktop {

/// Lets the user pick a file as dialog.m_ofn tells. Files whose name begins with a dot, as those of messages do, are
/// shown too.
/// @param parent  may be null. @param path  receives this system's path. @return IDOK or IDCANCEL.
int PickFile(QWidget* parent, const CFileDialog& dialog, std::string& path);

}  // namespace zel::desktop
