#pragma once
// A process that gets no further thread while one of these lives.

#include <pthread.h>

namespace NBrenmark {

class CNoThreads
{
public:
    CNoThreads()
    {
        pthread_getattr_default_np(&before);
        pthread_attr_t none;
        pthread_attr_init(&none);
        pthread_attr_setstacksize(&none, size_t(1) << 46); // no machine has room for such a stack
        pthread_setattr_default_np(&none);
        pthread_attr_destroy(&none);
    }
    ~CNoThreads() { pthread_setattr_default_np(&before); }
    CNoThreads(const CNoThreads&) = delete;
    CNoThreads& operator=(const CNoThreads&) = delete;

private:
    pthread_attr_t before;
};

} // namespace NBrenmark
