#include "opening/NoDisplay.h"

#include <QMessageLogContext>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <utility>

namespace {

struct Said {
    QtMsgType type;
    QByteArray category;
    QString text;
};

std::mutex mutex;
std::deque<Said> said;
QByteArray lineOnNoDisplay;
QtMessageHandler usualHandler = nullptr;

void logAll() {
    for (const Said& each : std::exchange(said, {}))
        usualHandler(each.type, QMessageLogContext(nullptr, 0, nullptr, each.category.constData()),
                     each.text);
}

// What the toolkit says of each thing that it tries is for who asks for it.
void takeMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const std::lock_guard lock(mutex);
    if (type != QtFatalMsg) {
        said.push_back({type, context.category, text});
        return;
    }
    if (qEnvironmentVariableIsSet("QT_DEBUG_PLUGINS"))
        logAll();
    std::fputs(lineOnNoDisplay.constData(), stderr);
    std::_Exit(EXIT_FAILURE); // nothing was begun yet
}

} // namespace

NoDisplay::NoDisplay(const QString& line) {
    lineOnNoDisplay = line.toLocal8Bit();
    usualHandler = qInstallMessageHandler(takeMessage);
}

NoDisplay::~NoDisplay() {
    qInstallMessageHandler(usualHandler);
    const std::lock_guard lock(mutex);
    logAll();
}
