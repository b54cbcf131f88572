// The update server that a test plays on this machine.

#include "app/UpdateAddress.h"

QString updateBaseUrl() {
    return qEnvironmentVariable("REELSHIFT_LOOPBACK_URL");
}
