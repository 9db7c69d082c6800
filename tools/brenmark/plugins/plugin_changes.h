#pragma once
// What a conversion that binds plug-ins makes otherwise than one that doesn't: definitions of the properties that their
// models need, and the origin of a model that the deck left open. No library is loaded to compare two decks, so the
// source alone doesn't show either.

#include "brenmark/text_diff.h"

namespace NBrenmark {

/// Whether a model names a plug-in of any kind. \param model  its text
bool namesPlugins(const TextLines& model);

/// Takes such differences out of a list. \return them, each as a change that is meant
/// \param converted  the text of the new deck beside its timesteps
std::vector<SModelChange> takePluginChanges(std::vector<SDifference>& differences, const TextLines& converted);

} // namespace NBrenmark
