#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

class QComboBox;

/// Paints a line of text and tells the whole of it in a tooltip where it is cut.
/// Main thread; owned by its parent, like all below.
class TextDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    Q_DISABLE_COPY_MOVE(TextDelegate)

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

/// Paints a row's check box beside a strip of film; the view takes the clicks and keys.
class CheckDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    Q_DISABLE_COPY_MOVE(CheckDelegate)

    /// Where the check box stands in a cell, and in the header above.
    [[nodiscard]] static QRect boxRect(const QRect& cell, const QWidget& widget);
    [[nodiscard]] static int columnWidth(const QWidget& widget);
    /// A palette in which the frame of a check box can be seen on a dark ground too.
    [[nodiscard]] static QPalette boxPalette(QPalette palette);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The view alone changes check states.
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
};

/// Paints a text that can be chosen from a list, and makes the combo box that edits it.
class ComboDelegate final : public TextDelegate {
    Q_OBJECT

public:
    using TextDelegate::TextDelegate;
    Q_DISABLE_COPY_MOVE(ComboDelegate)

    /// Null while no cell is edited.
    [[nodiscard]] QComboBox* openEditor() const;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    /// Stores what the open editor holds, if it may be stored, and closes it.
    void finishEditing();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    mutable QPointer<QObject> editor_; ///< a combo box, until it is being destroyed
};

/// Paints a row's image button, which rises under the pointer and sinks when pressed; the view
/// takes the clicks and keys.
class RowButtonDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    Q_DISABLE_COPY_MOVE(RowButtonDelegate)

    [[nodiscard]] static int columnWidth(const QWidget& widget);
    /// Of the button, which rises around its image.
    [[nodiscard]] static int height();

    void setPressed(const QModelIndex& index) { pressed_ = index; }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    static void paintDisc(QPainter* painter, const QRect& place);

    QPersistentModelIndex pressed_;
};
