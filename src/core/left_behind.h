#pragma once
// What a deck holds and the format that it is written to has no place for: counted while its timesteps
// are written, told once when the deck is done. May be called from worker threads.

#include <QtGlobal>
#include <string>

namespace NBrenmark {

/// Adds to what stays behind; an amount of 0 is nothing.
/// \param what  in the plural, with its place: "charges of particles"
void noteLeftBehind(const std::string& what, quint64 amount);

/// Writes what was noted as one line to the log, and forgets it. Nothing noted, nothing said.
void tellLeftBehind(const char* title);

} // namespace NBrenmark
