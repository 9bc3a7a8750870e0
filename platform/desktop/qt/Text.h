// Between the program's UTF-8 and Qt's UTF-16, and between twips and pixels. Pixels are Qt's device-independent ones:
// 96 to the inch, whatever the screen's scale.
#pragma once

#include <QLabel>
#include <QScreen>
#include <QSize>
#include <QString>
#include <cmath>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly::qt {

inline constexpr float TwipsInPixel = 15;

inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

inline int ToPixels(float twips) {
    return static_cast<int>(std::lround(twips / TwipsInPixel));
}

inline float ToTwips(int pixels) {
    return static_cast<float>(pixels) * TwipsInPixel;
}

// As much of this size as a window can have on its screen, where it has a frame, too.
inline QSize SizeOnScreen(const QWidget& window, const QSize& size) {
    constexpr double most = 0.9;
    return size.boundedTo(window.screen()->availableSize() * most);
}

// A tool tip with this text. Plain text would be markup where it looks like some.
inline QString ToolTip(const QString& text) {
    return text.isEmpty() ? text : QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped());
}

// Shows the caption as it stands, and has a screen reader say it for the label's buddy.
inline void ShowLabel(QLabel& label, std::string_view caption) {
    label.setTextFormat(Qt::PlainText);
    QString text = ToQt(caption);
    if (label.buddy() != nullptr) {
        label.buddy()->setAccessibleName(text); // a tree does not ask its label
        // Only for a buddy an ampersand would mark an access key.
        text.replace(u'&', QStringLiteral("&&"));
    }
    label.setText(text);
}

// Has `action` done when the event loop comes to it, unless `object` is gone by then.
inline void Post([[maybe_unused]] QObject& object, [[maybe_unused]] const std::function<void()>& action) {
#ifndef __clang_analyzer__ // it does not see that Qt's event owns and frees the action
    QMetaObject::invokeMethod(&object, action, Qt::QueuedConnection);
#endif
}

} // namespace tessaly::qt
