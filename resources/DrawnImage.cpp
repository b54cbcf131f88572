#include "resources/DrawnImage.h"

#include <QImage>
#include <QString>

namespace {

constexpr auto densities = {"", "@2x", "@3x"};

QImage drawing(const QString& name, const char* density) {
    // An image, unlike a pixmap, is read from exactly the file that is named.
    QImage image(QStringLiteral(":/images/%1%2.png").arg(name, QLatin1StringView(density)));
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace

QIcon drawnImage(const QString& name) {
    QIcon icon;
    for (const char* const density : densities)
        icon.addPixmap(QPixmap::fromImage(drawing(name, density)));
    return icon;
}

QPixmap drawnPixmap(const QString& name, int size, qreal devicePixelRatio) {
    const int pixels = qRound(size * devicePixelRatio);
    QImage image;
    for (const char* const density : densities) {
        image = drawing(name, density);
        if (image.width() >= pixels)
            break;
    }
    image = image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    image.setDevicePixelRatio(devicePixelRatio);
    return QPixmap::fromImage(image);
}
