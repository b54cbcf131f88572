#include "table/EmptyList.h"

#include "platform/LocalizedStrings.h"
#include "resources/ApplicationIcon.h"

#include <QFontMetrics>
#include <QPainter>
#include <QWidget>

namespace {

constexpr int sideAir = 24;
constexpr int linesOfPicture = 6;
constexpr int sentenceFlags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;

} // namespace

EmptyList::EmptyList(const QWidget& view, const QRect& area) : view_(view) {
    const QFontMetrics metrics = view.fontMetrics();
    const int line = metrics.height();
    const int side = linesOfPicture * line;
    const QRect column = area.adjusted(sideAir, 0, -sideAir, 0);
    const int text =
        metrics.boundingRect(column, sentenceFlags, getLocalString("IDS_TXT_EMPTY_LIST")).height();
    const bool hasRoom = side + 4 * line + text <= area.height() && side <= column.width();
    const int above = hasRoom ? side + line : 0;
    const int top = area.top() + (area.height() - above - text) / 2;
    sentence_ = QRect(column.left(), top + above, column.width(), text);
    if (hasRoom)
        picture_ = QRect(column.center().x() - side / 2, top, side, side);
}

void EmptyList::paint(QPainter& painter) const {
    if (!picture_.isEmpty())
        painter.drawPixmap(picture_.topLeft(),
                           applicationPicture(picture_.width(), view_.devicePixelRatioF()));
    QColor faint = view_.palette().color(QPalette::Text);
    faint.setAlphaF(0.6F);
    painter.setPen(faint);
    painter.drawText(sentence_, sentenceFlags, getLocalString("IDS_TXT_EMPTY_LIST"));
}
