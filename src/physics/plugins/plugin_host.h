#pragma once
// What a plug-in may call back, as the wrappers need it: the objects that answer know the open deck, which physics
// doesn't.

#include "physics/contact.h"

#include <brenmark/plugin/api.h>
#include <brenmark/plugin/custom_properties.h>

#include <memory>

namespace NBrenmark {

/// The items of one contact, each of which has a view of its own.
enum EPluginView : quint32
{
    eFirstView = 0,
    eSecondView = 1,
    eContactView = 2,
    ePluginViewCount = 3
};

class IPluginHost
{
public:
    virtual ~IPluginHost() = default;
    /// A new interface object; null for an identifier or version that the host doesn't have.
    virtual std::unique_ptr<NApiCore::IApi> createApi(quint32 identifier, quint32 major, quint32 minor) = 0;
    /// The custom properties of the simulation at the current timestep; null without an open deck.
    virtual std::unique_ptr<NApiCore::ICustomPropertyDataApi_1_0> simulationProperties() = 0;
    /// The custom properties of an item, valid until this thread asks for the same view again; null for an item without
    /// any. Takes no memory, for a force law asks for each contact.
    virtual NApiCore::ICustomPropertyDataApi_1_0* view(EPluginView view, const SPropertyItem& item) = 0;
};

} // namespace NBrenmark
