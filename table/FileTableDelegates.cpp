#include "table/FileTableDelegates.h"

#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/TableEditing.h"
#include "widgets/ReadablePalette.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <QToolTip>
#include <QValidator>

#include <utility>

namespace {

constexpr int gap = 6;         ///< between the things in a cell
constexpr int imageSide = 16;  ///< decorative image of the check column
constexpr int buttonSide = 20; ///< image of a row's button
constexpr int arrowSide = 12;

/// Where a name typed by hand is one of those offered, it is taken as it is spelt there.
class OfferedTextValidator final : public QValidator {
public:
    OfferedTextValidator(QStringList offered, QObject* parent)
        : QValidator(parent), offered_(std::move(offered)) {}

    State validate(QString& text, int&) const override {
        return offered_.contains(text, Qt::CaseInsensitive) ? Acceptable : Intermediate;
    }
    void fixup(QString& text) const override {
        for (const QString& each : offered_) {
            if (each.compare(text, Qt::CaseInsensitive) == 0)
                text = each;
        }
    }

private:
    QStringList offered_;
};

bool isSize(const QModelIndex& index) {
    return index.column() == static_cast<int>(TableColumn::Res);
}

QStyle* styleOf(const QStyleOptionViewItem& option) {
    return option.widget ? option.widget->style() : QApplication::style();
}

/// What stands on the band of a selected row in colours that are meant for the ground of the list.
void paintGround(QPainter* painter, const QStyleOptionViewItem& option, const QRect& place) {
    constexpr int radius = 3;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(option.palette.brush(QPalette::Active, QPalette::Base));
    painter->drawRoundedRect(place, radius, radius);
    painter->restore();
}

/// The row's background, selection and focus, without what stands in the cell.
void paintBackground(QPainter* painter, QStyleOptionViewItem option) {
    option.features &= ~(QStyleOptionViewItem::HasCheckIndicator |
                         QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasDisplay);
    option.text.clear();
    option.icon = {};
    option.state &= ~QStyle::State_HasFocus;
    styleOf(option)->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
}

bool isRowSelected(const QStyleOptionViewItem& option, const QModelIndex& index) {
    const auto* const view = qobject_cast<const QAbstractItemView*>(option.widget);
    return view && view->selectionModel() &&
           view->selectionModel()->isRowSelected(index.row(), index.parent());
}

} // namespace

// A name may hold line breaks; a row has one line.
QString TextDelegate::displayText(const QVariant& value, const QLocale& locale) const {
    QString text = QStyledItemDelegate::displayText(value, locale);
    for (QChar& each : text) {
        if (each == u'\n' || each == u'\r' || each == QChar::LineSeparator)
            each = u' ';
    }
    return text;
}

void TextDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->features &= ~QStyleOptionViewItem::HasDecoration;
    option->state &= ~QStyle::State_HasFocus; // the view shows it, to who uses the keys
    const bool isName = index.column() == static_cast<int>(TableColumn::Name);
    // It answers to the pointer where a click does something.
    if (!(index.flags() & Qt::ItemIsEditable))
        option->state &= ~QStyle::State_MouseOver;
    option->textElideMode = isName ? Qt::ElideMiddle : Qt::ElideRight;
    // Each name runs in its own direction: "2024 (1).mp4" is not to end in its year.
    if (isName && option->direction == Qt::RightToLeft) {
        constexpr QChar firstStrongIsolate(0x2068);
        constexpr QChar popDirectionalIsolate(0x2069);
        option->text = firstStrongIsolate + option->text + popDirectionalIsolate;
    }
}

bool TextDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                             const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (!event || !view || event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString text = index.data(Qt::DisplayRole).toString();
    if (sizeHint(option, index).width() <= option.rect.width())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // As HTML-escaped text: a file called <b>.mp4 is no markup.
    QToolTip::showText(event->globalPos(),
                       QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped()), view,
                       option.rect);
    return true;
}

QRect CheckDelegate::boxRect(const QRect& cell, const QWidget& widget) {
    const QStyle* const style = widget.style();
    const QSize box(style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &widget),
                    style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &widget));
    QRect rect(QPoint(cell.left() + gap, cell.center().y() - box.height() / 2), box);
    return QStyle::visualRect(widget.layoutDirection(), cell, rect);
}

int CheckDelegate::columnWidth(const QWidget& widget) {
    return widget.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &widget) + imageSide +
           3 * gap;
}

QPalette CheckDelegate::boxPalette(QPalette palette) {
    const QColor ground = palette.color(QPalette::Base);
    if (ground.lightnessF() < 0.5)
        palette.setColor(QPalette::Window,
                         mixed(palette.color(QPalette::Text), ground).lighter(140));
    return palette;
}

void CheckDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    paintBackground(painter, cell);
    if (!option.widget)
        return;

    QStyleOptionViewItem box = cell;
    box.rect = boxRect(option.rect, *option.widget);
    box.palette = boxPalette(box.palette);
    box.state &= ~(QStyle::State_HasFocus | QStyle::State_Selected);
    box.state |= cell.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
    if (option.state & QStyle::State_Selected)
        paintGround(painter, cell, box.rect.adjusted(1, 1, -1, -1));
    styleOf(option)->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter,
                                   option.widget);

    QRect image(0, 0, imageSide, imageSide);
    image.moveCenter(option.rect.center());
    image.moveLeft(boxRect(option.rect.translated(-option.rect.topLeft()), *option.widget).right() +
                   option.rect.left() + gap);
    if (option.direction == Qt::RightToLeft)
        image.moveRight(box.rect.left() - gap);
    painter->save();
    painter->setOpacity(0.7);
    cell.icon.paint(painter, image);
    painter->restore();
}

bool CheckDelegate::editorEvent(QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&,
                                const QModelIndex&) {
    return false;
}

QComboBox* ComboDelegate::openEditor() const {
    return qobject_cast<QComboBox*>(editor_.data());
}

// A text that its arrow cuts is cut.
QSize ComboDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return TextDelegate::sizeHint(option, index) + QSize(arrowSide + gap, 0);
}

void ComboDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const bool isLocked = !(index.flags() & Qt::ItemIsEnabled);
    if (isLocked && isRowSelected(option, index))
        // A locked cell is no hole in the band of a selected row: only its text is faint.
        cell.state |= QStyle::State_Selected | QStyle::State_Enabled;
    QStyleOptionViewItem background = cell;
    paintBackground(painter, background);

    QRect arrow(0, 0, arrowSide, arrowSide);
    arrow.moveCenter(option.rect.center());
    arrow.moveRight(option.rect.right() - gap);
    arrow = QStyle::visualRect(option.direction, option.rect, arrow);
    cell.rect.setRight(cell.rect.right() - arrowSide - gap);
    cell.rect = QStyle::visualRect(option.direction, option.rect, cell.rect);
    cell.state &= ~QStyle::State_HasFocus;
    cell.backgroundBrush = QBrush();
    const bool isSelected = cell.state & QStyle::State_Selected;
    // The band of a selected row is another one in a window that is not in use.
    const auto group = cell.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    QColor ink = cell.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
    if (isLocked)
        ink = faint(ink,
                    cell.palette.color(group, isSelected ? QPalette::Highlight : QPalette::Base));
    const int margin =
        styleOf(option)->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
    const QRect text = cell.rect.adjusted(margin, 0, -margin, 0);
    painter->save();
    painter->setFont(cell.font);
    painter->setPen(ink);
    painter->drawText(text, int(Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine),
                      cell.fontMetrics.elidedText(cell.text, cell.textElideMode, text.width()));
    painter->restore();
    if (isLocked)
        return;

    // Not the style's own arrow: for every cell it would leave another picture in the pixmap cache.
    constexpr int half = arrowSide / 3;
    const QPoint tip = arrow.center() + QPoint(0, half / 2);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setOpacity(option.state & QStyle::State_MouseOver ? 1.0 : 0.6);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ink);
    painter->drawConvexPolygon(
        QPolygon({tip, tip + QPoint(-half, -half), tip + QPoint(half, -half)}));
    painter->restore();
}

QWidget* ComboDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                     const QModelIndex& index) const {
    const auto* const model = qobject_cast<const FileTableModel*>(index.model());
    if (!model)
        return nullptr;
    auto* const combo = new QComboBox(parent);
    const QStringList offered = model->offeredTexts(index);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->addItems(offered);
    combo->setAccessibleName(
        model->headerData(index.column(), Qt::Horizontal, Qt::AccessibleTextRole).toString());
    if (isSize(index))
        combo->setValidator(new QRegularExpressionValidator(
            QRegularExpression(QStringLiteral("[0-9]+x[0-9]+")), combo));
    else
        combo->setValidator(new OfferedTextValidator(offered, combo));
    auto* const self = const_cast<ComboDelegate*>(this);
    connect(combo, &QComboBox::activated, self, &ComboDelegate::finishEditing);
    editor_ = combo;
    return combo;
}

// With its list closed a combo box takes an arrow key for a choice, which would store the value and
// end the editing at the first press.
bool ComboDelegate::eventFilter(QObject* watched, QEvent* event) {
    QComboBox* const editor = openEditor();
    if (editor && watched == editor && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            editor->showPopup();
            return true;
        }
    }
    return TextDelegate::eventFilter(watched, event);
}

void ComboDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    // Once: a reload meanwhile must not take away what is being typed.
    auto* const combo = qobject_cast<QComboBox*>(editor);
    if (!combo || combo->property("isFilled").toBool())
        return;
    combo->setProperty("isFilled", true);
    const QString text = index.data(Qt::EditRole).toString();
    combo->setCurrentIndex(combo->findText(text));
    combo->setEditText(text);
    combo->lineEdit()->selectAll();
}

void ComboDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                 const QModelIndex& index) const {
    auto* const combo = qobject_cast<QComboBox*>(editor);
    if (!combo)
        return;
    QString text = combo->currentText().trimmed();
    int position = 0;
    if (combo->validator()->validate(text, position) != QValidator::Acceptable)
        return;
    combo->validator()->fixup(text);
    if (text != index.data(Qt::EditRole).toString())
        model->setData(index, text, Qt::EditRole);
}

void ComboDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex&) const {
    editor->setGeometry(option.rect);
}

void ComboDelegate::finishEditing() {
    QComboBox* const editor = openEditor();
    if (!editor)
        return;
    editor_ = nullptr;
    Q_EMIT commitData(editor);
    Q_EMIT closeEditor(editor, NoHint);
}

int RowButtonDelegate::columnWidth(const QWidget&) {
    return buttonSide + 3 * gap;
}

int RowButtonDelegate::height() {
    return buttonSide + gap;
}

// On the colour of a selected row a blue image would not be seen.
void RowButtonDelegate::paintDisc(QPainter* painter, const QRect& place) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::white);
    painter->drawEllipse(QRectF(place).adjusted(-0.5, -0.5, 0.5, 0.5));
    painter->restore();
}

void RowButtonDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QIcon image = cell.icon;
    paintBackground(painter, cell);

    QStyleOptionToolButton button;
    button.initFrom(option.widget);
    button.palette = cell.palette;
    button.rect = QRect(0, 0, height(), height());
    button.rect.moveCenter(option.rect.center());
    button.subControls = QStyle::SC_ToolButton;
    button.icon = image;
    button.iconSize = QSize(buttonSide, buttonSide);
    button.toolButtonStyle = Qt::ToolButtonIconOnly;
    button.state = QStyle::State_Enabled | QStyle::State_AutoRaise;
    if (pressed_.isValid() && pressed_ == index)
        button.state |= QStyle::State_Sunken;
    if (option.state & QStyle::State_MouseOver)
        button.state |= QStyle::State_MouseOver | QStyle::State_Raised;
    if (button.state & (QStyle::State_Sunken | QStyle::State_Raised)) {
        if (option.state & QStyle::State_Selected)
            paintGround(painter, cell, button.rect);
        styleOf(option)->drawPrimitive(QStyle::PE_PanelButtonTool, &button, painter, option.widget);
    }
    QRect place(0, 0, buttonSide, buttonSide);
    place.moveCenter(option.rect.center());
    if (option.state & QStyle::State_Selected)
        paintDisc(painter, place);
    image.paint(painter, place);
}
