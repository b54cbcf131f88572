#include "table/ProgressCell.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int insetTop = 5;
constexpr int insetWidth = 5;
constexpr int insetHeight = 8;
constexpr int barPointSize = 9;
constexpr float grooveShare = 0.08F; ///< of the text's colour
constexpr float edgeShare = 0.35F;

QColor fillColour() {
    return QColor::fromRgbF(0.1098039F, 0.6352941F, 0.9019607F, 0.5F);
}

QPalette::ColorGroup colourGroup(const QStyleOptionViewItem& option) {
    if (!(option.state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

// The part that is still to come. What is done lies on the plain ground.
void paintGroove(QPainter& painter, const QRectF& bar, const QRectF& fill, QColor ink) {
    const bool isFromTheRight = fill.left() > bar.left();
    QRectF rest = bar;
    if (isFromTheRight)
        rest.setRight(std::max(fill.left(), bar.left()));
    else
        rest.setLeft(std::min(fill.right(), bar.right()));
    if (rest.isEmpty())
        return;
    ink.setAlphaF(grooveShare);
    painter.fillRect(rest, ink);
    ink.setAlphaF(edgeShare);
    const double top = rest.top();
    const double end = isFromTheRight ? rest.left() : rest.right() - 1;
    painter.fillRect(QRectF(rest.left(), top, rest.width(), 1), ink);
    painter.fillRect(QRectF(rest.left(), rest.bottom() - 1, rest.width(), 1), ink);
    painter.fillRect(QRectF(end, top + 1, 1, rest.height() - 2), ink);
}

void paintBar(QPainter& painter, const QStyleOptionViewItem& option, const QString& text,
              double progress) {
    const QRect bar = ProgressCell::innerRect(option.rect, option.direction);
    const QPalette::ColorGroup group = colourGroup(option);
    // On a selected row the fill would be blue on blue.
    if (option.state & QStyle::State_Selected)
        painter.fillRect(bar, option.palette.brush(group, QPalette::Base));
    const QColor ink = option.palette.color(group, QPalette::Text);
    const QRectF fill = ProgressCell::fillRect(bar, progress, option.direction);
    paintGroove(painter, bar, fill, ink);
    painter.setFont(ProgressCell::barFont(option.font));
    painter.setPen(ink);
    painter.drawText(bar, Qt::AlignCenter | Qt::TextSingleLine, text);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.fillRect(fill.intersected(option.rect), fillColour());
}

void paintStatus(QPainter& painter, const QStyleOptionViewItem& option, const QStyle& style,
                 const QString& text) {
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
    const QRect place =
        ProgressCell::innerRect(option.rect, option.direction).adjusted(margin, 0, -margin, 0);
    const auto role =
        option.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text;
    painter.setFont(option.font);
    painter.setPen(option.palette.color(colourGroup(option), role));
    painter.drawText(place,
                     QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter) |
                         Qt::TextSingleLine,
                     option.fontMetrics.elidedText(text, option.textElideMode, place.width()));
}

} // namespace

QRect ProgressCell::innerRect(const QRect& cell, Qt::LayoutDirection direction) {
    const QRect inner(cell.x(), cell.y() + insetTop, cell.width() - insetWidth,
                      cell.height() - insetHeight);
    return QStyle::visualRect(direction, cell, inner);
}

QRectF ProgressCell::fillRect(const QRect& bar, double progress, Qt::LayoutDirection direction) {
    const double width = bar.width() * progress;
    const double left = direction == Qt::RightToLeft ? bar.x() + bar.width() - width : bar.x();
    return {left, static_cast<double>(bar.y()), width, static_cast<double>(bar.height())};
}

QFont ProgressCell::barFont(QFont font) {
    font.setPointSize(barPointSize);
    return font;
}

int ProgressCell::heightOfBar(const QStyleOptionViewItem& option) {
    return QFontMetrics(barFont(option.font)).height() + insetHeight;
}

QSize ProgressCell::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QFontMetrics metrics(barFont(option.font));
    const QSize bar(metrics.horizontalAdvance(QStringLiteral(" 100 % ")) + insetWidth,
                    heightOfBar(option));
    return QStyledItemDelegate::sizeHint(option, index).expandedTo(bar);
}

void ProgressCell::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    // A click does nothing here, and the view shows the focus.
    cell.state &= ~(QStyle::State_MouseOver | QStyle::State_HasFocus);
    const bool showsBar = index.data(ShowsBarRole).toBool();
    const QString status = index.data(ProgressStatusRole).toString();
    // Two texts in one place could not be read: the one on top hides the one beneath.
    const bool covered = showsBar || !status.isEmpty();
    cell.text = covered ? QString() : index.data(StatusTextRole).toString();
    cell.features.setFlag(QStyleOptionViewItem::HasDisplay, !covered);

    const QStyle* const style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    if (!covered)
        return;
    painter->save();
    painter->setClipRect(cell.rect, Qt::IntersectClip);
    if (showsBar)
        paintBar(*painter, cell, index.data(StepTextRole).toString(),
                 index.data(BarProgressRole).toDouble());
    else
        paintStatus(*painter, cell, *style, status);
    painter->restore();
}
