#include "platform/HeldInput.h"

#include <QCoreApplication>
#include <QThread>

#include <utility>

namespace {

int loopLevelNow() {
    return QThread::currentThread()->loopLevel();
}

enum class Input { None, Kept, MadeToMouse };

Input inputOf(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ContextMenu:
    case QEvent::NativeGesture:
        return Input::Kept;
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
        return Input::MadeToMouse;
    default:
        return Input::None;
    }
}

} // namespace

HeldInput::HeldInput() {
    if (QCoreApplication* const application = QCoreApplication::instance())
        application->installEventFilter(this);
}

HeldInput::~HeldInput() = default;

int HeldInput::holdAt(int loopLevel) {
    if (loopLevel == 0 && !held_.empty()) {
        levelAfterwards_ = loopLevelNow();
        QMetaObject::invokeMethod(this, &HeldInput::giveNext, Qt::QueuedConnection);
    }
    return std::exchange(level_, loopLevel);
}

bool HeldInput::isHolding() const {
    if (level_ > 0)
        return loopLevelNow() == level_;
    // What comes while the rest is given back queues up behind it.
    return !held_.empty() && !isGiving_ && loopLevelNow() <= levelAfterwards_;
}

bool HeldInput::eventFilter(QObject* receiver, QEvent* event) {
    if (!receiver->isWindowType() || !event->spontaneous())
        return false;
    const Input input = inputOf(event->type());
    if (input == Input::None || !isHolding())
        return false;
    if (input == Input::MadeToMouse)
        event->ignore(); // the toolkit makes mouse events of it
    else
        hold(receiver, *event);
    return true;
}

void HeldInput::hold(QObject* window, const QEvent& event) {
    // Of a mouse that is moved about for a minute the last place is enough.
    if (event.type() == QEvent::MouseMove && !held_.empty() && held_.back().window == window &&
        held_.back().event->type() == QEvent::MouseMove)
        held_.pop_back();
    held_.push_back({window, std::unique_ptr<QEvent>(event.clone())});
}

void HeldInput::giveNext() {
    // The end of a wait that has begun since goes on with it.
    if (level_ > 0 || held_.empty())
        return;
    // A box has opened: what was meant for the window under it does nothing.
    if (loopLevelNow() > levelAfterwards_) {
        held_.clear();
        return;
    }
    const Held next = std::move(held_.front());
    held_.pop_front();
    // Before it is given: it may open a box, and return long after that.
    if (!held_.empty())
        QMetaObject::invokeMethod(this, &HeldInput::giveNext, Qt::QueuedConnection);
    if (!next.window)
        return;
    const bool outer = std::exchange(isGiving_, true);
    QCoreApplication::sendEvent(next.window, next.event.get());
    isGiving_ = outer;
}
