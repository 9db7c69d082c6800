#pragma once
// The custom properties that a plug-in needs, by owner. A library is asked once: what is released when its model goes
// must be what was taken when it came.

#include "physics/plugins/instance_calls.h"
#include "physics/plugins/plugin_errors.h"
#include "physics/required_property.h"

#include <array>
#include <functional>
#include <optional>

namespace NBrenmark {

class CPluginProperties
{
public:
    /// New definitions for an owner, at most 4096 of them.
    /// \param count  how many there are
    /// \param ask    fills in one; false ends the list
    RequiredProperties of(unsigned int ownerType, const std::function<unsigned int()>& count,
                          const std::function<bool(unsigned int, SPluginProperty&)>& ask, CPluginErrors& errors);
    void clear() { known = {}; }

private:
    std::array<std::optional<std::vector<CCustomPropertyMetaData>>, 4> known;
};

} // namespace NBrenmark
