#include "widgets/MessageBox.h"

#include "platform/LocalizedStrings.h"
#include "platform/MainThreadCalls.h"
#include "resources/DrawnImage.h"
#include "widgets/BoxAnswers.h"
#include "widgets/MessageText.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QThread>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int iconSize = 64;
constexpr int margin = 18;
constexpr int narrowestMessage = 30; // average characters
constexpr int widestMessage = 70;
// Share of the screen that a box may cover; the rest is for its frame and for air.
constexpr double screenShare = 0.85;

QLabel* makeIcon(QWidget* parent) {
    auto* const icon = new QLabel(parent);
    icon->setPixmap(drawnPixmap(QStringLiteral("Popup_I"), iconSize, parent->devicePixelRatioF()));
    icon->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    return icon;
}

/// A box over a box belongs to the lower one, or it could open behind it.
QWidget* ownerOf(QWidget* parent) {
    auto* const below = qobject_cast<MessageBox*>(QApplication::activeModalWidget());
    return below ? below : parent;
}

} // namespace

MessageBox::MessageBox(const Request& request, QWidget* parent) : QDialog(parent) {
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(request.title);
    setAccessibleName(request.message);

    auto* const column = new QVBoxLayout;
    column->setSpacing(margin / 2);
    column->addWidget(makeMessage(request.message));
    if (!request.checkBox.isEmpty()) {
        checkBox_ = new QCheckBox(request.checkBox, this);
        checkBox_->setObjectName(QStringLiteral("popUpCheckBox"));
        column->addWidget(checkBox_);
    }
    column->addStretch();

    auto* const top = new QHBoxLayout;
    top->setSpacing(margin);
    top->addWidget(makeIcon(this), 0, Qt::AlignTop);
    top->addLayout(column, 1);

    auto* const box = new QVBoxLayout(this);
    box->setContentsMargins(margin, margin, margin, margin);
    box->setSpacing(margin);
    box->addLayout(top, 1);
    box->addLayout(makeButtons(request.buttons));
    box->setSizeConstraint(QLayout::SetFixedSize);

    setWindowFlag(Qt::WindowCloseButtonHint, escapeButton_ != nullptr);
    fitToScreen();
}

MessageBox::~MessageBox() = default;

MessageBox::Answer MessageBox::ask(const Request& request, QWidget* parent) {
    Q_ASSERT(QThread::currentThread() == qApp->thread());
    // The window below may be destroyed while the box is open, and the box with it.
    const QPointer<MessageBox> box(new MessageBox(request, ownerOf(parent)));
    const auto destroy = qScopeGuard([&] { delete box.data(); });
    qApp->installEventFilter(box);
    box->exec();
    if (!box || !box->answer_)
        throw Cancelled();
    return {*box->answer_, box->checkBox_ && box->checkBox_->isChecked()};
}

void MessageBox::dismissAll() {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (auto* const box = qobject_cast<MessageBox*>(window))
            box->abandon();
    }
}

void MessageBox::dismiss(const QString& message) {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        auto* const box = qobject_cast<MessageBox*>(window);
        if (box && box->accessibleName() == message)
            box->abandon();
    }
}

// Escape and the close button.
void MessageBox::reject() {
    if (escapeButton_)
        escapeButton_->click();
}

bool MessageBox::eventFilter(QObject* watched, QEvent* event) {
    // Quitting asks every window to close first, and a box without Cancel would refuse.
    if (event->type() == QEvent::Quit)
        abandon();
    return QDialog::eventFilter(watched, event);
}

void MessageBox::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QWidget* MessageBox::makeMessage(const QString& message) {
    textArea_ = new QScrollArea(this);
    textArea_->setAccessibleName(message);
    textArea_->setFrameShape(QFrame::NoFrame);
    textArea_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    textArea_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    textArea_->setWidgetResizable(true);
    textArea_->setFocusPolicy(Qt::NoFocus);

    text_ = new MessageText(message);
    text_->setObjectName(QStringLiteral("popUpMessage"));
    text_->setAccessibleName(message);
    textArea_->setWidget(text_);
    textArea_->viewport()->setAutoFillBackground(false);
    text_->setAutoFillBackground(false);
    return textArea_;
}

QLayout* MessageBox::makeButtons(const QStringList& titles) {
    const QString cancel = getLocalString("IDS_BTN_POPUP_CANCEL");
    const QStringList shown =
        titles.isEmpty() ? QStringList(getLocalString("IDS_BTN_POPUP_OK")) : titles;
    buttonRow_ = new QHBoxLayout;
    buttonRow_->setSpacing(margin / 2);
    buttonRow_->addStretch();
    for (int index = 0; index < shown.size(); ++index) {
        auto* const button = new QPushButton(shown[index], this);
        button->setObjectName(QStringLiteral("popUpButton%1").arg(boxanswer::first + index));
        // Some styles leave a text no room at its sides.
        button->setMinimumWidth(fontMetrics().size(Qt::TextShowMnemonic, shown[index]).width() +
                                2 * margin);
        connect(button, &QPushButton::clicked, this, [this, index] {
            answer_ = boxanswer::first + index;
            accept();
        });
        buttonRow_->addWidget(button);
        if (index == 0) {
            button->setDefault(true);
            button->setFocus();
        }
        if (!escapeButton_ && (shown.size() == 1 || shown[index] == cancel))
            escapeButton_ = button;
    }
    return buttonRow_;
}

void MessageBox::fitToScreen() {
    const QSize limit = screen()->availableSize() * screenShare;
    if (buttonRow_->sizeHint().width() > limit.width())
        buttonRow_->setDirection(QBoxLayout::TopToBottom);

    textArea_->setFixedSize(0, 0);
    const QSize rest = sizeHint();
    const int character = fontMetrics().averageCharWidth();
    int width =
        std::clamp(text_->naturalWidth(), narrowestMessage * character, widestMessage * character);
    if (checkBox_)
        width = std::max(width, checkBox_->sizeHint().width());
    const int scrollBar = textArea_->verticalScrollBar()->sizeHint().width();
    width = std::min(width, limit.width() - iconSize - 3 * margin - scrollBar);

    int height = text_->heightForWidth(width);
    const int highest = std::max(limit.height() - rest.height(), 3 * fontMetrics().height());
    if (height > highest) {
        height = highest;
        // The keyboard scrolls it, too.
        textArea_->setFocusPolicy(Qt::StrongFocus);
        textArea_->setFrameShape(QFrame::StyledPanel);
        // Never "as needed": a bar that comes makes the lines shorter, so that it stays.
        textArea_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        width += scrollBar + 2 * textArea_->frameWidth();
    }
    textArea_->setFixedSize(width, height);
}

void MessageBox::abandon() {
    if (!isVisible())
        return;
    answer_.reset();
    QDialog::reject();
}
