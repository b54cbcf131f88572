#pragma once

#include <QHash>
#include <QObject>
#include <QTimer>

class Announcer;
class FileTableModel;

/// Has screen readers say the new status of a movie, once for each change and never for a
/// percentage. What comes and goes at once is not said at all. Main thread; owned by
/// main().
class RowAnnouncements final : public QObject {
    Q_OBJECT

public:
    RowAnnouncements(const FileTableModel& model, Announcer& announcer);
    Q_DISABLE_COPY_MOVE(RowAnnouncements)

    /// Whether a change has not been looked at yet: it is given a moment to go again.
    [[nodiscard]] bool isWaiting() const { return pause_.isActive(); }

private:
    void noteChange(int firstRow, int lastRow);
    void look();
    [[nodiscard]] QString statusAt(int row) const;

    const FileTableModel& model_;
    Announcer& announcer_;
    QHash<int, QString> known_; ///< status by the row's id
    int firstChanged_ = -1;
    int lastChanged_ = -1;
    QTimer pause_;
};
