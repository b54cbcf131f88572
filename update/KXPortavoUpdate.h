#pragma once

#include "update/ServerDocument.h"
#include "update/UpdateSettings.h"

#include <QString>
#include <QUrl>

#include <optional>
#include <stop_token>

/// Asks the update server whether a newer version exists. Any thread; each question blocks the one
/// it is asked on until the server has answered, the time is up or `stop` is requested. A server
/// that cannot be reached and a document that cannot be read are logged and say nothing.
class KXPortavoUpdate final {
public:
    explicit KXPortavoUpdate(UpdateSettings settings);

    /// Whether the version that the root's child `versionElement` holds is newer than the program.
    /// Throws std::out_of_range when it has fewer than four parts, as a missing one does.
    [[nodiscard]] bool checkPossibleUpdate(const QString& versionElement,
                                           const std::stop_token& stop = {}) const;

    /// Address of the newer version's installer; nothing when there is no newer version, no address
    /// or none that can be fetched, and none that is open where the document was secure. Throws
    /// like `checkPossibleUpdate`.
    [[nodiscard]] std::optional<QUrl> newerInstaller(const std::stop_token& stop = {}) const;

    /// The rule of VersionComparison.h.
    [[nodiscard]] static bool isUpdateAvailable(const QString& local, const QString& server);

    /// Where the document is, percent-escaped.
    [[nodiscard]] QUrl documentUrl() const;

private:
    struct Fetched {
        ServerDocument document;
        QUrl url; ///< that answered
    };

    [[nodiscard]] Fetched fetchDocument(const QString& versionElement,
                                        const std::stop_token& stop) const;

    const UpdateSettings settings_;
};
