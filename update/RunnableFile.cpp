#include "update/RunnableFile.h"

#include <QMimeDatabase>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

/// Types of which the system may run whatever is of them.
constexpr std::array runnableTypes{"application/x-executable",   "application/x-desktop",
                                   "application/x-shellscript",  "application/java-archive",
                                   "application/x-java-archive", "application/x-java-jnlp-file",
                                   "application/vnd.appimage",   "application/x-ms-shortcut",
                                   "application/x-msdownload",   "application/x-ms-dos-executable"};

/// What the list of file types may lack.
constexpr std::array runnableSuffixes{".sh",  ".run", ".appimage", ".jar", ".desktop",
                                      ".exe", ".bat", ".bin",      ".py",  ".pl"};

bool isRunnable(const QMimeType& type) {
    return std::ranges::any_of(
        runnableTypes, [&](const char* name) { return type.inherits(QLatin1StringView(name)); });
}

bool beginsRunnable(const QByteArray& beginning) {
    QByteArray text = beginning.first(std::min<qsizetype>(beginning.size(), runnableFileBeginning));
    if (text.startsWith("\xef\xbb\xbf"))
        text = text.sliced(3);
    if (text.startsWith("PK"))
        return text.contains("META-INF/"); // as an archive of Java does
    text = text.trimmed();
    return text.startsWith("#!") ||
           text.startsWith("\x7f"
                           "ELF") ||
           text.startsWith("MZ") || text.contains("[Desktop Entry]") ||
           text.contains("[KDE Desktop Entry]");
}

} // namespace

bool isRunnableFile(const QString& name, const QByteArray& beginning) {
    const auto hasSuffix = [&](const char* suffix) {
        return name.endsWith(QLatin1StringView(suffix), Qt::CaseInsensitive);
    };
    if (std::ranges::any_of(runnableSuffixes, hasSuffix) || beginsRunnable(beginning))
        return true;
    const QMimeDatabase types;
    const auto byName = types.mimeTypesForFileName(name);
    return std::ranges::any_of(byName, isRunnable) || isRunnable(types.mimeTypeForData(beginning));
}
