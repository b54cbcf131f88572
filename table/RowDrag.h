#pragma once

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class ActionGate;
class AddFiles;
class FileList;
class ListWindow;
class QMimeData;
struct SharedState;

/// What is dragged to the list and from it: rows that get another place, and movies of other
/// programs. A drop is answered at once and its work starts from the event loop, through the
/// gate: the program that offers the movies waits for the answer. Main thread; owned by
/// main().
class RowDrag final : public QObject {
    Q_OBJECT

public:
    struct Parts {
        FileList& files;
        SharedState& state;
        ActionGate& gate;
        ListWindow& window;
        AddFiles& addFiles;
    };
    /// What a drop is taken as: the first of these that is offered.
    enum class Kind { Rows, Files, Text, Other };

    explicit RowDrag(Parts parts) : parts_(std::move(parts)) {}
    Q_DISABLE_COPY_MOVE(RowDrag)

    [[nodiscard]] static Kind kindOf(const QMimeData& offered);
    /// Paths of the offered files of this machine, in the order in which they are offered.
    [[nodiscard]] static QStringList filePaths(const QMimeData& offered);
    /// What the rows, ascending, are dragged with; nothing but the private type.
    [[nodiscard]] static std::unique_ptr<QMimeData>
    writeRowsWithIndexes(const std::vector<int>& rows);
    /// Copy for whatever is dragged over the table, wherever and whenever. Ignore for types that
    /// the table does not know and where no copy is offered: the toolkit would turn the answer
    /// into a move, and who offers a movie would delete it.
    [[nodiscard]] static Qt::DropAction validateDrop(Kind kind, Qt::DropActions offered);
    /// Whether a drop would do something to the list now.
    [[nodiscard]] bool hasEffect(Kind kind) const;

    /// Takes a drop before row `row`. The answer is true for rows and text; kept: false for
    /// movies, though they are added.
    bool acceptDrop(const QMimeData& offered, int row);

private:
    [[nodiscard]] bool isRefused() const;
    void later(std::function<void()> work);
    void reorder(const std::vector<int>& rows, int row);

    const Parts parts_;
};
