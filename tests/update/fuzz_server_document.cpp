#include "update/HttpHead.h"
#include "update/SafeFileName.h"
#include "update/ServerDocument.h"
#include "update/VersionComparison.h"

#include <QUrl>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

/// All that the update server decides: the head of its answer, its document, the version in it and
/// the installer's name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const ServerDocument document = parseServerDocument(bytes);
    if (!document.error.isEmpty() && (document.version || document.url))
        std::abort();
    try {
        (void)isUpdateAvailable(QStringLiteral("1.0.0.0"), document.version.value_or(QString()));
    } catch (const std::out_of_range&) {
    }
    HttpHead head;
    for (const QByteArray& line : bytes.split('\n'))
        head.addLine(line + '\n');
    if (head.isComplete() && (head.isTooLarge() || head.status() < 200 || head.status() > 999))
        std::abort();
    const QString name = safeFileName(
        suggestedFileName(bytes, QUrl(document.url.value_or(QString()), QUrl::TolerantMode)));
    if (name.isEmpty() || name.startsWith(u'.') || name.contains(u'/') || name.contains(QChar(0)) ||
        name.toUtf8().size() > 255 || numberedFileName(name, 1).toUtf8().size() > 255)
        std::abort();
    return 0;
}
