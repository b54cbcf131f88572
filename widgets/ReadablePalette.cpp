#include "widgets/ReadablePalette.h"

#include <QApplication>
#include <QEvent>
#include <QStyleHints>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// How well two colours can be told apart, from 1 (the same) to 21 (black on white).
double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

/// Known from Qt 6.5 on.
bool isDesktopDark() {
    constexpr int dark = 2; // Qt::ColorScheme::Dark
    return QGuiApplication::styleHints()->property("colorScheme").toInt() == dark;
}

bool isLight(const QPalette& palette) {
    return luminance(palette.color(QPalette::Window)) >
           luminance(palette.color(QPalette::WindowText));
}

} // namespace

QColor mixed(const QColor& one, const QColor& other) {
    return {(one.red() + other.red()) / 2, (one.green() + other.green()) / 2,
            (one.blue() + other.blue()) / 2};
}

QColor faint(const QColor& ink, const QColor& ground) {
    constexpr double readable = 3.0;
    QColor result = mixed(ink, ground);
    for (int step = 0; step < 4 && contrast(result, ground) < readable; ++step)
        result = mixed(result, ink);
    return result;
}

QColor markColour(const QPalette& palette) {
    constexpr double visible = 2.0;
    const QColor highlight = palette.color(QPalette::Highlight);
    return contrast(highlight, palette.color(QPalette::Base)) < visible
               ? palette.color(QPalette::Text)
               : highlight;
}

ReadablePalette::ReadablePalette() {
    Q_ASSERT(thread() == qApp->thread());
    qApp->installEventFilter(this);
    const QStyleHints* const hints = QGuiApplication::styleHints();
    if (hints->metaObject()->indexOfSignal("colorSchemeChanged(Qt::ColorScheme)") >= 0)
        connect(hints, SIGNAL(colorSchemeChanged(Qt::ColorScheme)), this, SLOT(applySoon()));
    apply();
}

void ReadablePalette::apply() {
    const bool wantsDark = isDesktopDark();
    if (isDarkOurs_ && !wantsDark) {
        isDarkOurs_ = false;
        QApplication::setPalette(QPalette()); // the desktop's own again
    }
    const QPalette given = QApplication::palette();
    const bool staysLight = wantsDark && isLight(given);
    isDarkOurs_ = isDarkOurs_ || staysLight;
    const QPalette readable = of(staysLight ? darkOf(given) : given);
    if (readable != given)
        QApplication::setPalette(readable);
}

// The desktop's own palette follows its scheme at once where it does at all.
void ReadablePalette::applySoon() {
    QMetaObject::invokeMethod(this, &ReadablePalette::apply, Qt::QueuedConnection);
}

QPalette ReadablePalette::darkOf(const QPalette& given) {
    QPalette dark(QColor(0x3a, 0x3a, 0x3c), QColor(0x2a, 0x2a, 0x2c)); // button, window
    const QColor ink(0xf4, 0xf4, 0xf4);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        dark.setColor(role, ink);
        dark.setColor(QPalette::Disabled, role, QColor(0x8a, 0x8a, 0x8c));
    }
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x20));
    dark.setColor(QPalette::AlternateBase, QColor(0x26, 0x26, 0x28));
    dark.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3a, 0x3c));
    dark.setColor(QPalette::PlaceholderText, faint(ink, dark.color(QPalette::Base)));
    dark.setColor(QPalette::Link, QColor(0x78, 0xae, 0xed));
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText})
        dark.setColor(role, given.color(QPalette::Active, role));
    return dark;
}

QPalette ReadablePalette::of(QPalette palette) {
    constexpr double visible = 1.5; // Qt's own light palette has 1.6
    constexpr std::pair<QPalette::ColorRole, QPalette::ColorRole> inks[] = {
        {QPalette::WindowText, QPalette::Window},
        {QPalette::Text, QPalette::Base},
        {QPalette::ButtonText, QPalette::Button}};
    for (const auto& [ink, ground] : inks) {
        const QColor below = palette.color(QPalette::Disabled, ground);
        if (contrast(palette.color(QPalette::Disabled, ink), below) < visible)
            palette.setColor(QPalette::Disabled, ink,
                             faint(palette.color(QPalette::Active, ink), below));
    }
    return palette;
}

bool ReadablePalette::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        apply();
    return QObject::eventFilter(watched, event);
}
