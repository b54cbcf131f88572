#pragma once

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QPalette>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <utility>
#include <vector>

// Palettes as desktops have them, and what the eye makes of a picture drawn with them.

namespace palettes {

[[nodiscard]] inline QPalette light() {
    return QApplication::style()->standardPalette();
}

[[nodiscard]] inline QPalette dark() {
    QPalette palette(QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::AlternateBase, QColor(37, 37, 40));
    palette.setColor(QPalette::Highlight, QColor(42, 110, 180));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

[[nodiscard]] inline QPalette highContrast(const QColor& ground, const QColor& ink,
                                           const QColor& highlight) {
    QPalette palette(ink, ground, ink, ink, ink, ink, ink, ground, ground);
    palette.setColor(QPalette::AlternateBase, ground);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, ground);
    palette.setColor(QPalette::ToolTipBase, ground);
    palette.setColor(QPalette::ToolTipText, ink);
    const QColor faint((ink.red() + ground.red()) / 2, (ink.green() + ground.green()) / 2,
                       (ink.blue() + ground.blue()) / 2);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

[[nodiscard]] inline QPalette contrastBlack() {
    return highContrast(Qt::black, Qt::white, QColor(255, 255, 0));
}

[[nodiscard]] inline QPalette contrastWhite() {
    return highContrast(Qt::white, Qt::black, QColor(0, 0, 120));
}

struct Named {
    const char* name;
    QPalette (*make)();
};

inline constexpr Named all[] = {{"light", light},
                                {"dark", dark},
                                {"contrast-black", contrastBlack},
                                {"contrast-white", contrastWhite}};

} // namespace palettes

[[nodiscard]] inline double luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// From 1 (the same) to 21 (black on white); 4.5 is the least for text, 3 for signs.
[[nodiscard]] inline double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

/// The ground of a picture: the colour that most of it has.
[[nodiscard]] inline QColor groundOf(const QImage& picture) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    const auto most =
        std::max_element(counts.begin(), counts.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    return QColor(most->first);
}

/// How far what is drawn stands out from its ground. As many pixels as are given must do so: a
/// single one is no letter.
[[nodiscard]] inline double contrastIn(const QImage& picture, int pixels = 20) {
    const QColor ground = groundOf(picture);
    std::vector<double> ratios;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ratios.push_back(contrast(ground, picture.pixelColor(x, y)));
    }
    const auto last = ratios.begin() + std::min<long>(pixels, long(ratios.size())) - 1;
    std::nth_element(ratios.begin(), last, ratios.end(), std::greater<>());
    return *last;
}
