#include "programs/desktop/dialogs/text_viewer.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "platform/system/files.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace {

/// In bytes, far more than any log. A larger file is shown up to here.
constexpr qint64 kLargestText = 8 << 20;
constexpr int kColumns = 90, kLines = 30;

/// The part after the program's name, without quotation marks.
std::string ArgumentOf(const std::string& command_line) {
    std::string path = command_line.substr(std::min(command_line.find(' '), command_line.size()));
    path.erase(0, path.find_first_not_of(' '));
    if (path.size() >= 2 && path.front() == '"' && path.back() == '"') path = path.substr(1, path.size() - 2);
    return path;
}

}  // namespace

bool ShowTextFile(QWidget* parent, const std::string& command_line) {
    const std::string path = ArgumentOf(command_line);
    QFile file(QFile::decodeName(system::NativePath(path.c_str()).c_str()));
    if (path.empty() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) return false;
    const QByteArray bytes = file.read(kLargestText);

    auto* const window = new QDialog(parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    // Usable although a dialog of the module is open.
    window->setWindowModality(Qt::ApplicationModal);
    window->setWindowTitle(ScreenText(path));
    window->setObjectName(QStringLiteral("text_viewer"));
    auto* const text = new QPlainTextEdit(ScreenText({bytes.data(), static_cast<std::size_t>(bytes.size())}), window);
    text->setReadOnly(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, window);
    QObject::connect(buttons, &QDialogButtonBox::rejected, window, &QDialog::reject);
    auto* const layout = new QVBoxLayout(window);
    layout->addWidget(text);
    layout->addWidget(buttons);
    const QFontMetrics metrics = text->fontMetrics();
    window->resize(metrics.horizontalAdvance(u'0') * kColumns, metrics.lineSpacing() * kLines);
    window->show();
    return true;
}

}  // namespace zel::desktop
