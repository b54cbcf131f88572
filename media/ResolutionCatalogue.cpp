#include "media/ResolutionCatalogue.h"

namespace {

QStringList sizes(QLatin1StringView list) {
    return QString(list).split(u';');
}

struct Size {
    int width;
    int height;

    [[nodiscard]] bool isEmpty() const { return width < 2 || height < 2; }
    [[nodiscard]] Size half() const { return even(width / 2, height / 2); }
    [[nodiscard]] QString text() const {
        return QString::number(width) + u'x' + QString::number(height);
    }
    [[nodiscard]] bool fitsLevel51() const {
        constexpr qint64 mostMacroblocks = 36'864;
        constexpr qint64 side = 16;
        return ((width + side - 1) / side) * ((height + side - 1) / side) <= mostMacroblocks;
    }

    static Size even(int width, int height) { return {width - width % 2, height - height % 2}; }
};

} // namespace

ResolutionCatalogue::ResolutionCatalogue()
    : resolutionListZero_(sizes(QLatin1StringView("3840x2160;1920x1080;960x540"))),
      resolutionListOne_(sizes(QLatin1StringView("4096x2160;2048x1080;1024x540"))),
      resolutionListTwo_(sizes(QLatin1StringView("2560x1440;1280x720"))),
      resolutionListThree_(sizes(QLatin1StringView("1920x1080;960x540"))),
      resolutionListFour_(sizes(QLatin1StringView("1280x720;640x360"))),
      resolutionListFive_(sizes(QLatin1StringView("640x480"))) {}

std::optional<int> ResolutionCatalogue::resolutionId(int width, int height) {
    struct SourceSize {
        int width;
        int height;
    };
    constexpr SourceSize known[] = {{3840, 2160}, {4096, 2160}, {2560, 1440},
                                    {1920, 1080}, {1280, 720},  {640, 480}};
    int id = 0;
    for (const SourceSize& size : known) {
        if (size.width == width && size.height == height)
            return id;
        ++id;
    }
    return std::nullopt;
}

QStringList ResolutionCatalogue::sizesOf(int width, int height) {
    Size largest = Size::even(width, height);
    while (!largest.fitsLevel51())
        largest = largest.half();
    QStringList offered;
    for (const Size& each : {largest, largest.half()}) {
        if (!each.isEmpty())
            offered << each.text();
    }
    return offered;
}

QStringList ResolutionCatalogue::items(int id) const {
    switch (id) {
    case 0:
        return resolutionListZero_;
    case 1:
        return resolutionListOne_;
    case 2:
        return resolutionListTwo_;
    case 3:
        return resolutionListThree_;
    case 4:
        return resolutionListFour_;
    case 5:
        return resolutionListFive_;
    default:
        return {};
    }
}

QString ResolutionCatalogue::getDefaultResolution(int id) const {
    const QStringList offered = items(id);
    return offered.isEmpty() ? resolutionListFive_.first() : offered.first();
}
