#pragma once

class QTableView;

/// The height of a row in the view's font and style: what the style gives a row of a table, or what
/// the tallest thing in a cell needs, which is mostly the list that opens in it. In logical pixels.
/// Main thread.
[[nodiscard]] int rowHeightOf(const QTableView& view);

/// The least height of a header that holds a check box.
[[nodiscard]] int headerHeightOf(const QTableView& view);
