#include "widgets/ReadablePalette.h"

#include <QApplication>
#include <QEvent>
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

void apply() {
    const QPalette given = QApplication::palette();
    const QPalette readable = ReadablePalette::of(given);
    if (readable != given)
        QApplication::setPalette(readable);
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
    apply();
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
