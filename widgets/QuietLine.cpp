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
    showAll();
}

void QuietLine::showBehind(Behind place, const QString& text) {
    behind_[static_cast<size_t>(place)] = text.simplified();
    showAll();
}

void QuietLine::showAll() {
    QStringList parts{line_};
    for (const QString& each : behind_)
        parts += each;
    parts.removeAll(QString());
    const QString whole = parts.join(QStringLiteral("  ·  "));
    if (whole_ == whole)
        return;
    whole_ = whole;
    setAccessibleName(whole_);
    setVisible(!whole_.isEmpty());
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
    const QString shown = fontMetrics().elidedText(whole_, Qt::ElideMiddle, contentsRect().width());
    setToolTip(shown == whole_ ? QString() : whole_.toHtmlEscaped());
    if (text() != shown)
        setText(shown);
}
