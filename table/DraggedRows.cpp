#include "table/DraggedRows.h"

#include <QDataStream>
#include <QIODevice>

namespace {

constexpr quint32 mark = 0x52535257; // "RSRW"
constexpr qsizetype headLength = 2 * sizeof(quint32);
constexpr qsizetype rowLength = sizeof(qint32);

} // namespace

QByteArray archiveRows(const std::vector<int>& rows) {
    QByteArray archive;
    QDataStream stream(&archive, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << mark << static_cast<quint32>(rows.size());
    for (const int row : rows)
        stream << static_cast<qint32>(row);
    return archive;
}

std::optional<std::vector<int>> unarchiveRows(const QByteArray& archive, int rowCount) {
    QDataStream stream(archive);
    stream.setVersion(QDataStream::Qt_6_0);
    quint32 foundMark = 0;
    quint32 length = 0;
    stream >> foundMark >> length;
    // The length is believed only where it fits what came, before anything is allocated for it.
    if (stream.status() != QDataStream::Ok || foundMark != mark ||
        archive.size() != headLength + rowLength * static_cast<qsizetype>(length))
        return std::nullopt;
    std::vector<int> rows;
    rows.reserve(length);
    for (quint32 i = 0; i < length; ++i) {
        qint32 row = 0;
        stream >> row;
        const int least = rows.empty() ? 0 : rows.back() + 1;
        if (row < least || row >= rowCount)
            return std::nullopt;
        rows.push_back(row);
    }
    return rows;
}
