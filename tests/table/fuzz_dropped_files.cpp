#include "table/DroppedFiles.h"

#include <QMimeData>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

/// The list of addresses that another program offers for a drop.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QMimeData offered;
    offered.setData(QStringLiteral("text/uri-list"),
                    QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    const QList<QUrl> addresses = offered.urls();
    const QStringList files = droppedFiles(addresses);
    require(files.size() <= addresses.size());
    for (const QString& file : files) {
        require(file.startsWith(u'/'));
        require(!file.contains(QChar::Null));
    }
    return 0;
}
