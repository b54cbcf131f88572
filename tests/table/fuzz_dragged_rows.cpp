#include "table/DraggedRows.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

/// The first byte is the number of rows of the list, the others are what another program offers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const int rowCount = data[0];
    const QByteArray archive(reinterpret_cast<const char*>(data) + 1,
                             static_cast<qsizetype>(size) - 1);
    const auto rows = unarchiveRows(archive, rowCount);
    if (!rows)
        return 0;
    int least = 0;
    for (const int row : *rows) {
        require(row >= least && row < rowCount);
        least = row + 1;
    }
    // What is taken is what this program writes, to the last byte.
    require(archiveRows(*rows) == archive);
    return 0;
}
