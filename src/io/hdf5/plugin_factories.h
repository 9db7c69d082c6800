#pragma once
// Plug-in factories are stored with the creator model; decks before 30.0.5 hold them in their timesteps.

namespace NBrenmark {

class CHdf5FormReader;
class CPluginParticleFactoryList;

/// Reads the list from the group "PluginFactories/" of the form's location.
void readPluginFactories(CHdf5FormReader& in, CPluginParticleFactoryList& factories);

} // namespace NBrenmark
