#pragma once
// Whether a deck's texts and names have their place in this family, found out before a deck is touched: a name that is
// cut may be another one's, a slash makes two groups of one, and of two equal names the second can't be made.

namespace NBrenmark {

class CSimulationData;
struct SSaveOptions;

/// Runs the writer's own forms over a model or a timestep, on a writer that has no file.
/// \throws unstorable_error  that gives the first text or name that has no place
void checkStorable(CSimulationData& data, const SSaveOptions& options);

} // namespace NBrenmark
