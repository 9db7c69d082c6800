#pragma once
// Binds particle factories of customers' libraries.

#include "physics/plugins/plugin_library.h"

#include <QString>

#include <memory>

namespace NBrenmark {

class CCustomPropertyManager;
class CPluginParticleFactoryList;
class IPluginParticleFactoryWrapper;

namespace NApiFactory {

/// The factory of a library, or null, with the reason logged, if it can't be bound. Null as well, and nothing loaded,
/// while nothing is to be bound.
/// \param libraryName  as the deck has it: the base name of the file
/// \param name         of the factory
/// \param list         that it is for; not owned
std::unique_ptr<IPluginParticleFactoryWrapper> bindParticleFactory(const QString& libraryName, const QString& name,
                                                                   CPluginParticleFactoryList* list);
/// The same of a loaded library.
std::unique_ptr<IPluginParticleFactoryWrapper> bindParticleFactory(SLoadedLibrary loaded, const QString& name,
                                                                   CPluginParticleFactoryList* list);

/// Gives the factories of a list the custom properties of particles, for which each has a parameter.
/// \param properties  not owned, must outlive the factories; may be null
void connectCustomProperties(const CPluginParticleFactoryList& list, CCustomPropertyManager* properties);

} // namespace NApiFactory
} // namespace NBrenmark
