#pragma once
// A contact as plug-ins see it, out of one as the solver has it, and back.

#include "physics/contact.h"
#include "physics/plugins/plugin_host.h"

#include <brenmark/plugin/contact.h>

namespace NBrenmark::NApiCm {

struct SPluginContact
{
    /// \param host  gives the views of custom properties; null for none
    SPluginContact(const NBrenmark::SContact& contact, IPluginHost* host);
    /// Hands back what a model may change: the forces, both velocities and the tangential overlap.
    void giveBack(NBrenmark::SContact& contact) const;

    SContact contact{};
    SContactForces forces{};
};

} // namespace NBrenmark::NApiCm
