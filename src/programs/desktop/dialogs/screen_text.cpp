#include "programs/desktop/dialogs/screen_text.h"

#include <QStringDecoder>

namespace zel::desktop {

QString ScreenText(std::string_view bytes) {
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(view);
    return decoder.hasError() ? QString::fromLatin1(view) : text;
}

std::string ModuleText(const QString& text) {
    return text.toUtf8().toStdString();
}

int ScreenPosition(std::string_view bytes, std::size_t position) {
    const QString all = ScreenText(bytes);
    if (position >= bytes.size()) return static_cast<int>(all.size());
    const bool one_byte_each = static_cast<std::size_t>(all.size()) == bytes.size();
    return one_byte_each ? static_cast<int>(position) : static_cast<int>(ScreenText(bytes.substr(0, position)).size());
}

QString CutToBytes(const QString& text, std::size_t limit) {
    QString cut = text;
    while (static_cast<std::size_t>(cut.toUtf8().size()) > limit) {
        cut.chop(cut.size() > 1 && cut.back().isLowSurrogate() ? 2 : 1);
    }
    return cut;
}

QString WithoutAccessKey(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size()) ++i;
        plain += text[i];
    }
    return plain;
}

}  // namespace zel::desktop
