#pragma once
// What a deck holds and the format that it is written to has no place for: counted while its timesteps
// are written, reported once when the deck is done. May be called from worker threads.

#include "core/log_titles.h"

#include <QtGlobal>
#include <string>

namespace NBrenmark {

/// Adds to what stays behind; an amount of 0 is nothing.
/// \param what  in the plural, with its place: "charges of particles"
void noteLeftBehind(const std::string& what, quint64 amount);

/// Reports each kind of thing that was noted, with its amount, and forgets it. Nothing noted, nothing said.
void reportLeftBehind(const SLogTitle& title);

} // namespace NBrenmark
