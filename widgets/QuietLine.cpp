#include "widgets/QuietLine.h"

#include <QEvent>

QuietLine::QuietLine(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    // As wide as there is room, and never a reason for a wider window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    hide();
}

void QuietLine::show(const QString& text) {
    line_ = text.simplified();
    setAccessibleName(line_);
    setVisible(!line_.isEmpty());
    cut();
}

void QuietLine::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    cut();
}

void QuietLine::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        cut();
}

void QuietLine::cut() {
    const QString shown = fontMetrics().elidedText(line_, Qt::ElideMiddle, contentsRect().width());
    setToolTip(shown == line_ ? QString() : line_.toHtmlEscaped());
    if (text() != shown)
        setText(shown);
}
