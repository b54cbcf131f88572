#include "app/UpdateAddress.h"

#include "app/Version.h"

QString updateBaseUrl() {
    return QStringLiteral(REELSHIFT_UPDATE_BASE_URL);
}
