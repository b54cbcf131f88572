#pragma once

#include <QtGlobal>

#include <unistd.h>

/// Lets nobody's rights count where the tests are run by root, who may do everything.
class AsNobody final {
public:
    AsNobody() {
        if (wasRoot_ && ::seteuid(nobody) != 0)
            qFatal("root cannot be nobody");
    }
    ~AsNobody() {
        if (wasRoot_ && ::seteuid(0) != 0)
            qFatal("nobody cannot be root again");
    }
    Q_DISABLE_COPY_MOVE(AsNobody)

private:
    static constexpr uid_t nobody = 65534;

    const bool wasRoot_ = ::geteuid() == 0;
};
