#pragma once
// An open deck as text, part by part: what dump prints and verify compares.

#include "io/text/text_output.h"

#include <string>

namespace NBrenmark {

class CSimulation;

/// What is beside the timesteps: format and count, settings, configuration, companion.
void deckText(const CSimulation& deck, ITextSink& sink, bool fullArrays);
/// The model in force at the timestep loaded last. \param root  what its paths begin with
void modelText(const CSimulation& deck, ITextSink& sink, const std::string& root, bool fullArrays);
/// The timestep loaded last, with what the index says of it.
void timestepText(const CSimulation& deck, ITextSink& sink, const std::string& root, bool fullArrays);

/// "creator" for the model that a deck begins with, "creator@3" for one that is in force from timestep 3 on.
std::string modelRoot(quint32 firstTimestep);
/// "timestep/3".
std::string timestepRoot(quint32 number);

} // namespace NBrenmark
