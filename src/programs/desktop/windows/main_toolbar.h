#pragma once

class QMainWindow;
class QToolBar;

namespace zel::desktop {

/// Adds a tool bar with the most frequent actions of the window's menus. They get a shorter text and an icon.
QToolBar* AddMainToolbar(QMainWindow& window);

}  // namespace zel::desktop
