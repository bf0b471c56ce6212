#pragma once

#include <QWidget>

#include "programs/desktop/work/comparison.h"

class QLabel;

namespace zel::desktop {

class DetailTable;
class PictureView;

/// Shows two messages side by side, between them the picture of their differences, and the differences as a list. It
/// deletes itself when it is closed.
class CompareWindow : public QWidget {
    Q_OBJECT

  public:
    /// @param view  whose background and pixel aspect the pictures have.
    CompareWindow(ComparedMessage a, ComparedMessage b, const PictureView& view, QWidget* parent);

    void Swap();

  private:
    PictureView* MakeView(const char* name, const PictureView& like);
    QWidget* MakePictures();
    QWidget* MakeButtons();
    void Show();
    void MarkSelected();
    void FollowView(const PictureView& leader);
    void Copy();

    ComparedMessage m_a, m_b;
    Comparison m_comparison;
    QLabel* m_title_a;
    QLabel* m_title_b;
    QLabel* m_summary;
    PictureView* m_view_a;
    PictureView* m_marked;
    PictureView* m_view_b;
    DetailTable* m_list;
    bool m_following = false;
};

}  // namespace zel::desktop
