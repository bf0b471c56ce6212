#pragma once

#include <QWidget>

#include "programs/desktop/work/font_sheet.h"

class QDialogButtonBox;

namespace zel::desktop {

class PictureView;

/// A window with the glyphs of a font, which can be zoomed. It deletes itself when it is closed.
class GlyphSheetWindow : public QWidget {
    Q_OBJECT

  public:
    GlyphSheetWindow(const FontSheet& sheet, QWidget* parent);

  private:
    PictureView* MakePicture();
    QDialogButtonBox* MakeButtons(PictureView& picture);
    void Copy();
    void Save();

    QImage m_image;
    QString m_file_name;
};

}  // namespace zel::desktop
