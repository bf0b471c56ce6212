#include "programs/desktop/windows/glyph_sheet_window.h"

#include <QBuffer>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>

#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/picture_image.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/windows/box.h"
#include "programs/desktop/windows/pick.h"
#include "programs/desktop/work/new_file.h"

namespace zel::desktop {

GlyphSheetWindow::GlyphSheetWindow(const FontSheet& sheet, QWidget* parent)
    : QWidget(parent, Qt::Window), m_image(ImageOf(sheet.picture)) {
    setObjectName(QStringLiteral("glyph_sheet"));
    setAttribute(Qt::WA_DeleteOnClose);
    const QString name = Text(sheet.name);
    const QString file = QFile::decodeName(sheet.file.c_str());
    m_file_name = (name.isEmpty() ? QStringLiteral("glyphs") : FileNameFrom(name)) + QStringLiteral(".png");
    setWindowTitle(tr("%1 – glyphs").arg(name.isEmpty() ? file : name));

    auto* const summary =
        new QLabel(tr("%1 glyphs, height %2 pixels   %3").arg(sheet.glyphs).arg(sheet.height).arg(file), this);
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    summary->setTextFormat(Qt::PlainText);
    // A path may be longer than the window is wide.
    summary->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    PictureView* const picture = MakePicture();
    for (const QKeySequence& keys : {QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)})
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);

    auto* const column = new QVBoxLayout(this);
    column->addWidget(summary);
    if (!sheet.note.empty()) {
        auto* const note = new QLabel(Text(sheet.note), this);
        note->setTextFormat(Qt::PlainText);
        note->setWordWrap(true);
        column->addWidget(note);
    }
    column->addWidget(picture, 1);
    column->addWidget(MakeButtons(*picture));
    constexpr int kExtraWidth = 40, kExtraHeight = 130, kLeastWidth = 520;
    const QSize sheet_size = m_image.size() / devicePixelRatioF();
    resize((sheet_size + QSize(kExtraWidth, kExtraHeight))
               .expandedTo({kLeastWidth, 0})
               .boundedTo(screen()->availableSize() * 0.8));
    picture->ShowActualPixels();
    // It is around the middle of the sheet.
    picture->horizontalScrollBar()->setValue(0);
    picture->verticalScrollBar()->setValue(0);
    picture->setFocus();
}

PictureView* GlyphSheetWindow::MakePicture() {
    auto* const picture = new PictureView(this);
    picture->setObjectName(QStringLiteral("glyphs"));
    picture->setAccessibleName(tr("All glyphs with their codes in hexadecimal"));
    // Its pixels are square, also in a sheet as wide as a frame.
    picture->SetPixelAspect(false);
    picture->Show(m_image, {}, {});
    return picture;
}

QDialogButtonBox* GlyphSheetWindow::MakeButtons(PictureView& picture) {
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* const copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    QPushButton* const save = buttons->addButton(tr("&Save as…"), QDialogButtonBox::ActionRole);
    struct Zoom {
        QString text;
        QString keys;
        void (PictureView::*call)();
    };
    for (const Zoom& zoom :
         {Zoom{tr("Zoom &in"), tr("Ctrl++"), &PictureView::ZoomIn},
          Zoom{tr("Zoom &out"), tr("Ctrl+-"), &PictureView::ZoomOut}, Zoom{tr("&Fit"), tr("Ctrl+0"), &PictureView::Fit},
          Zoom{tr("&Actual pixels"), tr("Ctrl+1"), &PictureView::ShowActualPixels}}) {
        QPushButton* const button = buttons->addButton(zoom.text, QDialogButtonBox::ActionRole);
        button->setToolTip(zoom.keys);
        connect(button, &QPushButton::clicked, &picture, zoom.call);
        connect(new QShortcut(QKeySequence(zoom.keys), this), &QShortcut::activated, &picture, zoom.call);
    }
    connect(copy, &QPushButton::clicked, this, &GlyphSheetWindow::Copy);
    connect(save, &QPushButton::clicked, this, &GlyphSheetWindow::Save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    return buttons;
}

void GlyphSheetWindow::Copy() {
    QGuiApplication::clipboard()->setImage(m_image);
}

void GlyphSheetWindow::Save() {
    const QString file = PickNewPicture(this, tr("Save glyphs"), m_file_name);
    if (file.isEmpty()) return;
    QByteArray png;
    QBuffer buffer(&png);
    m_image.save(&buffer, "png");
    try {
        WriteNewFile(file, png.toStdString());
    } catch (const std::runtime_error& error) {
        RunBox(this, QMessageBox::Warning, windowTitle(),
               tr("%1\nChoose another folder or free disk space, then save again.").arg(Text(error.what())));
    }
}

}  // namespace zel::desktop
