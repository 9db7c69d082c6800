#pragma once
// In place of the runtime of OpenMP, which the compiler of the fuzzers comes without: what is read here is read by one
// thread at a time.

inline int omp_get_thread_num() { return 0; }
inline int omp_get_max_threads() { return 1; }
inline void omp_set_num_threads(int) {}

using omp_lock_t = int;
inline void omp_init_lock(omp_lock_t*) {}
inline void omp_destroy_lock(omp_lock_t*) {}
inline void omp_set_lock(omp_lock_t*) {}
inline void omp_unset_lock(omp_lock_t*) {}
