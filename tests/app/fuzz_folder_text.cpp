#include "app/FolderText.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

/// The content of a folder file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto folder = folderInText(content);
    if (!folder)
        return 0;
    require(!folder->isEmpty());
    require(!folder->contains(QChar::Null));
    // Nothing is dropped or replaced: what was read is written back byte for byte.
    require(folder->toUtf8() == content);
    return 0;
}
