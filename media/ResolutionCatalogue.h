#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The output sizes that are offered: a list for each of the six known sizes of a source, which
/// a resolution id selects. Immutable, any thread; owned by the controller.
class ResolutionCatalogue final {
public:
    /// Id of the shortest list, for a source of no known size when nothing better is known.
    static constexpr int smallestId = 5;

    ResolutionCatalogue();

    /// Only an exact match of both gives an id.
    [[nodiscard]] static std::optional<int> resolutionId(int width, int height);

    /// The sizes for an id; none for an unknown one.
    [[nodiscard]] QStringList items(int id) const;

    /// The first size for an id, which is the source's own; that of the last list for an unknown
    /// id.
    [[nodiscard]] QString getDefaultResolution(int id) const;

    [[nodiscard]] const QStringList& resolutionListZero() const { return resolutionListZero_; }
    [[nodiscard]] const QStringList& resolutionListOne() const { return resolutionListOne_; }
    [[nodiscard]] const QStringList& resolutionListTwo() const { return resolutionListTwo_; }
    [[nodiscard]] const QStringList& resolutionListThree() const { return resolutionListThree_; }
    [[nodiscard]] const QStringList& resolutionListFour() const { return resolutionListFour_; }
    [[nodiscard]] const QStringList& resolutionListFive() const { return resolutionListFive_; }

private:
    QStringList resolutionListZero_;
    QStringList resolutionListOne_;
    QStringList resolutionListTwo_;
    QStringList resolutionListThree_;
    QStringList resolutionListFour_;
    QStringList resolutionListFive_;
};
