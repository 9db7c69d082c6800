#pragma once
// In place of the runtime of OpenMP, which the compiler of the fuzzers comes without: what is read here is read by one
// thread at a time.

inline int omp_get_thread_num() { return 0; }
inline int omp_get_max_threads() { return 1; }
inline void omp_set_num_threads(int) {}
