#pragma once
// What the physics of a deck asks of the deck that owns it, which it doesn't know otherwise.

#include <string>
#include <vector>

namespace NBrenmark {

class IPhysicsOwner
{
public:
    virtual ~IPhysicsOwner() = default;
    /// A model or a force has come, gone or changed: what is stored is no longer the whole of it.
    virtual void physicsChanged() = 0;
    /// The smallest and greatest radius of the particle types, m.
    /// \param physical  of what touches, else of what is drawn
    /// \return false without a particle type; min and max then mean nothing
    virtual bool radiusRange(double& min, double& max, bool physical) const = 0;
    /// The names of all materials.
    virtual std::vector<std::string> materialNames() const = 0;
};

} // namespace NBrenmark
