#pragma once
// The energy balance of a timestep, J.

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

/// What came and went since the start.
class CTimestepEnergy
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    double kinetic = 0.0;
    double potential = 0.0;
    double createdParticles = 0.0;
    double destroyedParticles = 0.0;
    double external = 0.0;
    double lostThroughContacts = 0.0;
    double lostThroughCapping = 0.0;
};

class CSystemEnergy
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    void reset() { *this = CSystemEnergy(); }

    CTimestepEnergy cumulative;
    double total = 0.0;
    double potential = 0.0;
    double kinetic = 0.0;
};

} // namespace NBrenmark
