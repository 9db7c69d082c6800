#pragma once
// How many threads a parallel loop gets.

namespace NBrenmark {

/// What the clause num_threads of a parallel loop asks for, at least 1. The runtime of OpenMP ends the process where a
/// thread of a team isn't to be had, so they are tried here before, once for each thread that runs loops: its team
/// stays with it.
int loopThreads();

} // namespace NBrenmark
