#pragma once

#include <QtGlobal>

#include <pthread.h>

/// While this object lives no thread can be made in this program: each is to have a stack that is
/// larger than any address space. Any thread; one at a time.
class NoMoreThreads final {
public:
    NoMoreThreads() {
        ::pthread_attr_init(&before_);
        ::pthread_getattr_default_np(&before_);
        pthread_attr_t endless;
        ::pthread_attr_init(&endless);
        ::pthread_attr_setstacksize(&endless, size_t{1} << 47);
        if (::pthread_setattr_default_np(&endless) != 0)
            qFatal("the size of a thread's stack cannot be set");
        ::pthread_attr_destroy(&endless);
    }
    ~NoMoreThreads() {
        ::pthread_setattr_default_np(&before_);
        ::pthread_attr_destroy(&before_);
    }
    Q_DISABLE_COPY_MOVE(NoMoreThreads)

private:
    pthread_attr_t before_ = {};
};
