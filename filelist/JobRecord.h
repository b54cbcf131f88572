#pragma once

#include <QString>
#include <QVariant>

#include <memory>
#include <utility>
#include <vector>

/// Keys of a job record.
namespace key {
inline const QString id = QStringLiteral("id");                         ///< int
inline const QString name = QStringLiteral("name");                     ///< file name
inline const QString srcpath = QStringLiteral("srcpath");               ///< full path
inline const QString path = QStringLiteral("path");                     ///< output path
inline const QString check = QStringLiteral("check");                   ///< int, 0 or 1
inline const QString audio = QStringLiteral("audio");                   ///< "AAC" or "None"
inline const QString video = QStringLiteral("video");                   ///< "HEVC" or "None"
inline const QString duration = QStringLiteral("duration");             ///< HH:MM:SS.xx or "None"
inline const QString profile = QStringLiteral("profile");               ///< internal profile name
inline const QString profileForCol = QStringLiteral("profileForCol");   ///< shown profile
inline const QString cmb = QStringLiteral("cmb");                       ///< shown profile
inline const QString status = QStringLiteral("status");                 ///< a word of StatusWords.h
inline const QString progress = QStringLiteral("progress");             ///< shown status
inline const QString image = QStringLiteral("image");                   ///< image name
inline const QString converted = QStringLiteral("converted");           ///< a word
inline const QString conversionstat = QStringLiteral("conversionstat"); ///< a run-state word
inline const QString resolution = QStringLiteral("resolution");         ///< WIDTHxHEIGHT
inline const QString resolutionID = QStringLiteral("resolutionID");     ///< int, 0 to 5; or -1
inline const QString ownSizes = QStringLiteral("ownSizes");             ///< list, where that is -1
inline const QString progressValue = QStringLiteral("progressValue");   ///< "37 %"
} // namespace key

/// One movie of the list: a string-keyed record that keeps its keys in the order in which they
/// came. Shared by reference between the list, the table and the run; main thread.
class JobRecord final {
public:
    /// As large as it ever gets: a vector that grows would take room for 32 entries.
    JobRecord() { entries_.reserve(mostKeys); }

    [[nodiscard]] bool contains(const QString& key) const { return find(key) != nullptr; }
    /// An invalid value where the key is absent.
    [[nodiscard]] QVariant value(const QString& key) const;
    [[nodiscard]] QString text(const QString& key) const { return value(key).toString(); }
    [[nodiscard]] int number(const QString& key) const { return value(key).toInt(); }
    [[nodiscard]] int id() const { return number(key::id); }
    [[nodiscard]] std::vector<QString> keys() const;

    void set(const QString& key, const QVariant& value);

private:
    static constexpr size_t mostKeys = 20;

    [[nodiscard]] const QVariant* find(const QString& key) const;

    std::vector<std::pair<QString, QVariant>> entries_;
};

using JobRecordPtr = std::shared_ptr<JobRecord>;
