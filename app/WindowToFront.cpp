#include "app/WindowToFront.h"

#include "opening/StartupTokens.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <xcb/xcb.h>

namespace {

xcb_atom_t atomOf(xcb_connection_t* x11, const char* name) {
    const auto length = static_cast<uint16_t>(std::strlen(name));
    xcb_intern_atom_reply_t* const reply =
        xcb_intern_atom_reply(x11, xcb_intern_atom(x11, 0, length, name), nullptr);
    const xcb_atom_t none = XCB_ATOM_NONE;
    const xcb_atom_t atom = reply ? reply->atom : none;
    std::free(reply);
    return atom;
}

xcb_window_t rootOf(xcb_connection_t* x11) {
    return xcb_setup_roots_iterator(xcb_get_setup(x11)).data->root;
}

/// The moment of the click that led here, in the display's time; 0 where it is not known.
uint32_t timeIn(const QString& startupId) {
    const qsizetype at = startupId.lastIndexOf(u"_TIME");
    return at < 0 ? 0 : startupId.mid(at + 5).toUInt();
}

/// A window manager that guards the keyboard compares the time with that of the user's last action.
void askForKeyboard(xcb_connection_t* x11, xcb_window_t window, uint32_t time) {
    constexpr uint32_t byAProgram = 1;
    constexpr uint32_t byTheUser = 2; // who has just asked for it with another window in front
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atomOf(x11, "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = time ? byTheUser : byAProgram;
    message.data.data32[1] = time;
    xcb_send_event(x11, 0, rootOf(x11),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
}

/// In pieces of twenty bytes, the first of another type than the others.
void endStartup(xcb_connection_t* x11, xcb_window_t window, const QByteArray& id) {
    QByteArray text = "remove: ID=";
    for (const char c : id) {
        if (c == ' ' || c == '"' || c == '\\')
            text += '\\';
        text += c;
    }
    text += '\0';
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = window;
    constexpr qsizetype room = 20;
    for (qsizetype at = 0; at < text.size(); at += room) {
        message.type = atomOf(x11, at == 0 ? "_NET_STARTUP_INFO_BEGIN" : "_NET_STARTUP_INFO");
        std::memset(message.data.data8, 0, room);
        std::memcpy(message.data.data8, text.constData() + at,
                    static_cast<size_t>(std::min(room, text.size() - at)));
        xcb_send_event(x11, 0, rootOf(x11), XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&message));
    }
}

void tellX11(QWindow& window, const StartupTokens& tokens) {
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection())
        return;
    const auto number = static_cast<xcb_window_t>(window.winId());
    askForKeyboard(x11->connection(), number, timeIn(tokens.startupId));
    if (!tokens.startupId.isEmpty())
        endStartup(x11->connection(), number, tokens.startupId.toUtf8());
    xcb_flush(x11->connection());
}

} // namespace

void bringToFront(QWidget& window, const StartupTokens& tokens) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    QWidget* const box = QApplication::activeModalWidget();
    QWindow* const front = (box ? box : &window)->window()->windowHandle();
    if (!front)
        return;
    // Where the toolkit looks for it.
    if (!tokens.activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", tokens.activationToken.toUtf8());
    front->requestActivate();
    qunsetenv("XDG_ACTIVATION_TOKEN");
    tellX11(*front, tokens);
}
