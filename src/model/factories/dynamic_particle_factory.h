#pragma once
// A factory that creates particles over time, at a rate.

#include "model/factories/particle_factory.h"

namespace NBrenmark {

class CDynamicParticleFactory : public CParticleFactory
{
public:
    static constexpr const char* word = "dynamic";

    QString typeWord() const override { return word; }
    QString displayName() const override { return QStringLiteral("Dynamic factory"); }
    std::unique_ptr<CParticleFactory> clone() const override;
    bool isComplete() const override;
    bool isMassCreation() const override { return massCreation; }
    bool isMassGeneration() const override { return massGeneration; }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    /// Starts a new rate: nothing has been created by it yet. Every read of a definition ends with it;
    /// the timestep then brings the counts.
    /// \param time  of the change, s
    void changeCreationRate(double rate, double time);

    double creationTime = 1e-12;  ///< of the first particle, s
    double rateChangeTime = 0.0;  ///< s
    bool unlimited = false;       ///< never complete
    quint32 numToCreate = 1000;   ///< particles
    bool massCreation = false;    ///< massToCreate is the goal, not numToCreate
    double massToCreate = 100.0;  ///< kg
    bool massGeneration = false;  ///< creationRate is in kg/s, not in particles for each second
    double creationRate = 5000.0; ///< 1/s or kg/s
    quint32 createdSinceRateChange = 0;
};

} // namespace NBrenmark
