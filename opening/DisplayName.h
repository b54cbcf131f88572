#pragma once

#include <QString>

/// Where a program shows its windows, as its environment says.
struct DisplayName {
    QString wayland; ///< empty for none
    QString x11;     ///< without the number of a screen; empty for none

    /// Of this process.
    [[nodiscard]] static DisplayName here();
    /// From and to one text.
    [[nodiscard]] static DisplayName fromText(const QString& text);
    [[nodiscard]] QString text() const { return wayland + u'\n' + x11; }
};

/// Whether two programs show their windows to the same user: one who is logged in twice has one
/// message bus and two displays. Pure.
[[nodiscard]] bool isSameDisplay(const DisplayName& one, const DisplayName& other);
