#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <string>

/// Looks a host name up; 0 when it has an address, else a code for gai_strerror. May block for
/// long.
using HostResolver = std::function<int(const std::string& host)>;

/// The system's resolver.
[[nodiscard]] int resolveWithSystem(const std::string& host);

/// Finds out whether a host name can be resolved, on a thread that is left behind when nobody waits
/// for it any more: the resolver cannot be interrupted, and Qt's own lookup holds the end of the
/// program up until it returns. Lives on the thread of its owner, the fetch.
class HostLookup final : public QObject {
    Q_OBJECT

public:
    explicit HostLookup(HostResolver resolver, QObject* parent = nullptr);
    ~HostLookup() override;
    Q_DISABLE_COPY_MOVE(HostLookup)

    /// `finished` follows exactly once, never from inside this call.
    void start(const QString& host);

Q_SIGNALS:
    /// `code` as the resolver gave it.
    void finished(int code);

private:
    struct Shared;

    HostResolver resolver_;
    std::shared_ptr<Shared> shared_;
};
