#include "programs/desktop/windows/glyph_sheet_window.h"

#include <QBuffer>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/picture_image.h"
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
    auto* const area = new QScrollArea(this);
    area->setWidget(MakePicture());
    area->setAlignment(Qt::AlignCenter);
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
    column->addWidget(area);
    column->addWidget(MakeButtons());
    constexpr int kExtraWidth = 40, kExtraHeight = 130;
    resize((m_image.size() + QSize(kExtraWidth, kExtraHeight)).boundedTo(screen()->availableSize() * 0.8));
    area->setFocus();
}

QWidget* GlyphSheetWindow::MakePicture() {
    auto* const picture = new QLabel(this);
    QPixmap pixmap = QPixmap::fromImage(m_image);
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    picture->setPixmap(pixmap);
    picture->setAccessibleName(tr("All glyphs with their codes in hexadecimal"));
    return picture;
}

QWidget* GlyphSheetWindow::MakeButtons() {
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* const copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    QPushButton* const save = buttons->addButton(tr("&Save as…"), QDialogButtonBox::ActionRole);
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
