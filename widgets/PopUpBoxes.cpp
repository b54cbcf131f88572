#include "widgets/PopUpBoxes.h"

#include "platform/ProgramName.h"
#include "widgets/MessageBox.h"
#include "widgets/WidgetsLog.h"

#include <stdexcept>

namespace {

MessageBox::Answer ask(const QStringList& texts, const QString& checkBox, QWidget* parent) {
    if (texts.isEmpty())
        throw std::out_of_range("a box without a message");
    const MessageBox::Answer answer =
        MessageBox::ask({appName, texts.first(), texts.mid(1), checkBox}, parent);
    qCDebug(lcWidgets, "%ld", static_cast<long>(answer.code));
    return answer;
}

} // namespace

int PopUpBoxes::PopUpMesg(const QStringList& request) {
    return ask(request, {}, parent_).code;
}

QStringList PopUpBoxes::PopUpMesgWithCheckBox(const QStringList& request) {
    if (request.isEmpty())
        throw std::out_of_range("a box without a message");
    const MessageBox::Answer answer =
        ask(request.mid(0, request.size() - 1), request.last(), parent_);
    qCDebug(lcWidgets, "%s", answer.ticked ? "Check box state is on" : "Check box state is off");
    return {QString::number(answer.code),
            answer.ticked ? QStringLiteral("1") : QStringLiteral("0")};
}

void PopUpBoxes::dismissAll() {
    MessageBox::dismissAll();
}

void PopUpBoxes::dismiss(const QString& message) {
    MessageBox::dismiss(message);
}
