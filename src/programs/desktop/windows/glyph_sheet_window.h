#pragma once

#include <QWidget>

#include "programs/desktop/work/font_sheet.h"

namespace zel::desktop {

/// A window with the glyphs of a font. It deletes itself when it is closed.
class GlyphSheetWindow : public QWidget {
    Q_OBJECT

  public:
    GlyphSheetWindow(const FontSheet& sheet, QWidget* parent);

  private:
    QWidget* MakePicture();
    QWidget* MakeButtons();
    void Copy();
    void Save();

    QImage m_image;
    QString m_file_name;
};

}  // namespace zel::desktop
