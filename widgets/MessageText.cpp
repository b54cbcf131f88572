#include "widgets/MessageText.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextOption>

#include <cmath>

MessageText::MessageText(const QString& text, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setText(text);
    document_.setDocumentMargin(0);
    document_.setUndoRedoEnabled(false);
    document_.setPlainText(text);
    if (isRightToLeft()) {
        // Beside the icon, but each line in its own direction: a path stays a path.
        QTextOption option(Qt::AlignRight | Qt::AlignAbsolute);
        option.setTextDirection(Qt::LayoutDirectionAuto);
        document_.setDefaultTextOption(option);
    }
}

int MessageText::naturalWidth() const {
    return static_cast<int>(std::ceil(laidOut(-1).idealWidth()));
}

int MessageText::heightForWidth(int width) const {
    return static_cast<int>(std::ceil(laidOut(width).size().height()));
}

QSize MessageText::sizeHint() const {
    const int width = naturalWidth();
    return {width, heightForWidth(width)};
}

QSize MessageText::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth(), fontMetrics().height()};
}

void MessageText::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = palette();
    context.palette.setBrush(QPalette::Text, palette().windowText());
    context.clip = event->rect();
    laidOut(width()).documentLayout()->draw(&painter, context);
}

QTextDocument& MessageText::laidOut(int width) const {
    if (document_.defaultFont() != font())
        document_.setDefaultFont(font());
    document_.setTextWidth(width);
    return document_;
}
