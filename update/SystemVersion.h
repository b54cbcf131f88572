#pragma once

#include <QString>

#include <optional>

/// Major and minor number of the operating system's release.
struct SystemVersion {
    int major = 0;
    int minor = 0;
    bool operator==(const SystemVersion&) const = default;
};

/// Reads "22.04" or "10.15.7"; unknown for a release that has no minor number ("12") or no numbers
/// at all ("rolling"). Pure.
[[nodiscard]] std::optional<SystemVersion> parseSystemVersion(const QString& release);

/// The release of the running system as its own description gives it (VERSION_ID of os-release).
[[nodiscard]] std::optional<SystemVersion> currentSystemVersion();
