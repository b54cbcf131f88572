#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A message bus of the test's own (dbus-daemon) that ends with this object.
class PrivateBus final {
public:
    PrivateBus() = default;
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    [[nodiscard]] static bool isAvailable();
    [[nodiscard]] QString address() const { return address_; }

    /// Empty when the bus listens, else what went wrong.
    [[nodiscard]] QString start();
    /// Holds the bus up: it still accepts connections and says nothing more.
    void freeze();
    void thaw();

private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
};
