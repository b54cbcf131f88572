#pragma once

#include <QRect>
#include <QStyledItemDelegate>

/// Paints a row's status: its text or, while its movie is converted, a translucent bar over the
/// percentage, and where the bar is still to come its groove. Main thread; owned by its parent.
class ProgressCell final : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// What a cell is painted from.
    enum Role {
        /// QString: the status text of the row's record.
        StatusTextRole = Qt::UserRole + 100,
        /// QString: the text of the bar, "37 %".
        StepTextRole,
        /// double: the share done, 1.0 for all of it; may be more.
        BarProgressRole,
        /// bool: whether the bar is shown.
        ShowsBarRole,
        /// QString: the status text of the row's progress, shown while there is no bar.
        ProgressStatusRole,
    };

    using QStyledItemDelegate::QStyledItemDelegate;
    Q_DISABLE_COPY_MOVE(ProgressCell)

    /// Where the bar or the progress' status text stands in its cell.
    [[nodiscard]] static QRect innerRect(const QRect& cell, Qt::LayoutDirection direction);
    /// The done part of a bar, beginning where a line of text begins. More than the bar where the
    /// share is more than 1.0.
    [[nodiscard]] static QRectF fillRect(const QRect& bar, double progress,
                                         Qt::LayoutDirection direction);
    [[nodiscard]] static QFont barFont(QFont font);

    /// Of a cell that holds a bar, which has its insets and its own font.
    [[nodiscard]] static int heightOfBar(const QStyleOptionViewItem& option);

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};
