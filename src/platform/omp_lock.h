#pragma once
// A lock for parallel loops, made and given back with the object that holds it. Works with
// std::lock_guard.

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
