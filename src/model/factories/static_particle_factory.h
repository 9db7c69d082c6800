#pragma once
// A factory that fills its section once.

#include "model/factories/particle_factory.h"

namespace NBrenmark {

class CStaticParticleFactory : public CParticleFactory
{
public:
    static constexpr const char* word = "static";

    QString typeWord() const override { return word; }
    QString displayName() const override { return QStringLiteral("Static factory"); }
    std::unique_ptr<CParticleFactory> clone() const override;
    bool isComplete() const override { return completed; }
    bool isMassCreation() const override { return massCreation; }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    bool completed = false;
    double creationTime = 1e-12; ///< s
    bool fillShape = true;       ///< as many as the shape takes, whatever the goal
    quint32 numToCreate = 1000;  ///< particles
    bool massCreation = false;   ///< massToCreate is the goal, not numToCreate
    double massToCreate = 0.0;   ///< kg
};

} // namespace NBrenmark
