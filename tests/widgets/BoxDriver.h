#pragma once

#include "widgets/MessageBox.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <functional>

/// Runs `then` from the event loop as soon as a box is open that is not `other`.
inline void onceBoxOpen(std::function<void(MessageBox&)> then, const QWidget* other = nullptr) {
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, other, then = std::move(then)] {
        auto* const box = qobject_cast<MessageBox*>(QApplication::activeModalWidget());
        if (!box || box == other || !box->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        then(*box);
        // What failed left the box open, and the test would hang under it.
        if (QTest::currentTestFailed())
            MessageBox::dismissAll();
    });
    timer->start(1);
}

/// The buttons of a box from left to right.
inline QList<QPushButton*> buttonsByPlace(const MessageBox& box) {
    auto buttons = box.findChildren<QPushButton*>();
    std::sort(buttons.begin(), buttons.end(),
              [](const auto* a, const auto* b) { return a->x() < b->x(); });
    return buttons;
}

inline void press(const MessageBox& box, int code) {
    box.findChild<QPushButton*>(QStringLiteral("popUpButton%1").arg(code))->click();
}
