#include "resources/DrawnImage.h"

#include <QImage>
#include <QPixmap>
#include <QString>

QIcon drawnImage(const QString& name) {
    QIcon icon;
    for (const char* const density : {"", "@2x", "@3x"}) {
        // An image, unlike a pixmap, is read from exactly the file that is named.
        QImage drawing(QStringLiteral(":/images/%1%2.png").arg(name, QLatin1String(density)));
        drawing.setDevicePixelRatio(1);
        icon.addPixmap(QPixmap::fromImage(drawing));
    }
    return icon;
}
