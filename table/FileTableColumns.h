#pragma once

#include <QModelIndex>
#include <QString>

/// Columns of the list, from left to right.
enum class TableColumn { Check, Name, Duration, Audio, Res, Cmb, Progress, Im };

inline constexpr int tableColumnCount = 8;

/// Of a cell; and where a column stands, for what counts columns.
[[nodiscard]] inline TableColumn columnOf(const QModelIndex& index) {
    return static_cast<TableColumn>(index.column());
}

[[nodiscard]] inline int section(TableColumn column) {
    return static_cast<int>(column);
}

/// The identifiers by which the columns are told apart.
namespace column {
inline const QString check = QStringLiteral("check");
inline const QString name = QStringLiteral("name");
inline const QString duration = QStringLiteral("duration");
inline const QString audio = QStringLiteral("audio");
inline const QString res = QStringLiteral("res");
inline const QString cmb = QStringLiteral("cmb");
inline const QString progress = QStringLiteral("progress");
inline const QString im = QStringLiteral("im");
} // namespace column

[[nodiscard]] QString identifierOf(TableColumn column);
