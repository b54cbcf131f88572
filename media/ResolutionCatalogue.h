#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The output sizes that are offered: a list for each of the six known sizes of a source, which
/// a resolution id selects, and for a source of any other size a list that is made of its own.
/// Immutable, any thread; owned by main().
class ResolutionCatalogue final {
public:
    /// Id of a source of no known size, whose list is `sizesOf` it.
    static constexpr int ownListId = -1;

    ResolutionCatalogue();

    /// Only an exact match of both gives an id.
    [[nodiscard]] static std::optional<int> resolutionId(int width, int height);

    /// The sizes of a source of any size (pixels, from 0 up): its own and half of it, in even
    /// numbers; one that H.264 of level 5.1 cannot hold begins with its first half that fits.
    /// Nothing for a source too thin to have an even size.
    [[nodiscard]] static QStringList sizesOf(int width, int height);

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
