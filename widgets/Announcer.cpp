#include "widgets/Announcer.h"

#include <QAccessibleWidget>

using namespace std::chrono_literals;

namespace {

/// Not seen, and there all the same.
class AnnouncerAccessible final : public QAccessibleWidget {
public:
    explicit AnnouncerAccessible(Announcer* announcer)
        : QAccessibleWidget(announcer, QAccessible::Notification) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? static_cast<Announcer*>(widget())->text() : QString();
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        return state;
    }
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className != QLatin1StringView(Announcer::staticMetaObject.className()))
        return nullptr;
    auto* const announcer = qobject_cast<Announcer*>(object);
    return announcer ? new AnnouncerAccessible(announcer) : nullptr;
}

} // namespace

Announcer::Announcer(QWidget* parent) : QWidget(parent) {
    QAccessible::installFactory(makeInterface); // a second time has no effect
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    pause_.setSingleShot(true);
    pause_.setInterval(100ms);
    connect(&pause_, &QTimer::timeout, this, &Announcer::speak);
}

void Announcer::say(const QString& text) {
    waiting_ += text;
    if (!pause_.isActive())
        pause_.start();
}

// Qt 6.4 has no event for announcements. Readers speak a notification when it appears, and some
// when the name of what they know changes.
void Announcer::speak() {
    text_ = waiting_.join(u'\n');
    waiting_.clear();
    QAccessibleEvent renamed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&renamed);
    QAccessibleEvent appeared(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&appeared);
    Q_EMIT said(text_);
}
