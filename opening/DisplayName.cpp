#include "opening/DisplayName.h"

namespace {

QString withoutScreen(const QString& display) {
    const qsizetype colon = display.lastIndexOf(u':');
    const qsizetype dot = display.indexOf(u'.', qMax(colon, qsizetype{0}));
    return colon >= 0 && dot > colon ? display.left(dot) : display;
}

QString waylandDisplay() {
    const QString name = qEnvironmentVariable("WAYLAND_DISPLAY");
    // One socket name may stand for two sockets, of two sessions.
    return name.isEmpty() || name.startsWith(u'/')
               ? name
               : qEnvironmentVariable("XDG_RUNTIME_DIR") + u'/' + name;
}

} // namespace

DisplayName DisplayName::here() {
    return {waylandDisplay(), withoutScreen(qEnvironmentVariable("DISPLAY"))};
}

DisplayName DisplayName::fromText(const QString& text) {
    return {text.section(u'\n', 0, 0), text.section(u'\n', 1)};
}

bool isSameDisplay(const DisplayName& one, const DisplayName& other) {
    if (!one.wayland.isEmpty() && !other.wayland.isEmpty())
        return one.wayland == other.wayland;
    return !one.x11.isEmpty() && one.x11 == other.x11;
}
