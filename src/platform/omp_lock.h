#pragma once
// A lock of the OpenMP runtime, for what several threads of a parallel loop may not do at once.

#include <omp.h>

namespace NBrenmark {

class COmpLock
{
public:
    COmpLock() { omp_init_lock(&handle); }
    ~COmpLock() { omp_destroy_lock(&handle); }
    COmpLock(const COmpLock&) = delete;
    COmpLock& operator=(const COmpLock&) = delete;

    void lock() { omp_set_lock(&handle); }
    void unlock() { omp_unset_lock(&handle); }

private:
    omp_lock_t handle;
};

} // namespace NBrenmark
