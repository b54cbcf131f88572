#include "resources/ApplicationIcon.h"

#include <QPixmapCache>
#include <QSize>
#include <QString>

#include <array>

namespace {

constexpr std::array smallSizes{16, 22, 24, 32, 48, 64};
constexpr std::array largeSizes{128, 256};

QString applicationDrawing(int size) {
    return QStringLiteral(":/icons/hicolor/%1x%1/apps/reelshift.png").arg(size);
}

template <typename Sizes> void addSizes(QIcon& icon, const Sizes& sizes) {
    for (const int size : sizes)
        icon.addFile(applicationDrawing(size), QSize(size, size));
}

} // namespace

QIcon smallApplicationIcon() {
    QIcon icon;
    addSizes(icon, smallSizes);
    return icon;
}

QIcon applicationIcon() {
    QIcon icon = smallApplicationIcon();
    addSizes(icon, largeSizes);
    return icon;
}

QPixmap applicationPicture(int side, qreal devicePixelRatio) {
    const int pixels = qRound(side * devicePixelRatio);
    const QString key = QStringLiteral("reelshift-application-%1").arg(pixels);
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        const int drawn = pixels <= largeSizes.front() ? largeSizes.front() : largeSizes.back();
        picture = QPixmap(applicationDrawing(drawn))
                      .scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QPixmapCache::insert(key, picture);
    }
    picture.setDevicePixelRatio(devicePixelRatio);
    return picture;
}
