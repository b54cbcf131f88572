#pragma once

#include <QRect>

class QPainter;
class QWidget;

/// What stands in the list while there is no movie in it: the program's picture over the sentence
/// how to begin. Main thread.
class EmptyList final {
public:
    /// In `area` of the view, whose font and colours it takes.
    EmptyList(const QWidget& view, const QRect& area);

    /// Empty where there is no room for it.
    [[nodiscard]] const QRect& picture() const { return picture_; }
    [[nodiscard]] const QRect& sentence() const { return sentence_; }

    void paint(QPainter& painter) const;

private:
    const QWidget& view_;
    QRect picture_;
    QRect sentence_;
};
