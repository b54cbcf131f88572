#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

/// Type of the data that rows are dragged with inside the table.
inline const QString draggedRowsType = QStringLiteral("MyPrivateTableViewDataType");

/// The row numbers, ascending, as data of that type.
[[nodiscard]] QByteArray archiveRows(const std::vector<int>& rows);

/// The row numbers of such data, nothing where it is not whole or names a row that a list of
/// `rowCount` rows does not have. Any program may offer data under the type's name.
[[nodiscard]] std::optional<std::vector<int>> unarchiveRows(const QByteArray& archive,
                                                            int rowCount);
