#pragma once

#include <QString>

/// What is known of the program and of what it uses, as rich text.
struct AboutFacts {
    QString program; ///< its name
    QString version;
    QString encoderVersion; ///< empty where it is not known
    QString encoderPlace;   ///< empty where there is none
};

[[nodiscard]] QString aboutHtml(const AboutFacts& facts);
