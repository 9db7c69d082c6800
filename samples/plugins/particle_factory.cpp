// A particle factory of the interface version 2.1.0: a belt that drops a particle of the type "Ball" ten times a
// second.
#include <brenmark/plugin/particle_factory_2_1.h>

#include <cstring>

using namespace NBrenmark;

namespace {

class CConveyor final : public NApiFactory::IPluginParticleFactory_2_1
{
public:
    void getPreferenceFileName(char* /*name*/) override {}
    bool isThreadSafe() override { return false; } // it counts
    bool usesCustomProperties() override { return false; }
    bool setup(NApiCore::IApiManager_1_0* /*apiManager*/, const char* /*preferenceFile*/, char* /*errorText*/) override
    {
        return true;
    }
    bool starting(NApiCore::IApiManager_1_0* /*apiManager*/) override
    {
        dropped = 0;
        return true;
    }
    void stopping(NApiCore::IApiManager_1_0* /*apiManager*/) override {}

    NApiCore::EResult createParticle(double time, NApiFactory::SNewParticle& particle, bool& created) override
    {
        constexpr double interval = 0.1; // s
        created = time >= dropped * interval;
        if (!created)
            return NApiCore::eOk;
        ++dropped;
        std::strncpy(particle.typeName, "Ball", NApiFactory::typeNameSize - 1);
        particle.position[2] = 0.5; // m
        particle.velocity[0] = 1.0; // m/s
        return NApiCore::eOk;
    }

    unsigned int getNumberOfRequiredProperties(unsigned int /*ownerType*/) override { return 0; }
    bool getDetailsForProperty(unsigned int /*index*/, unsigned int /*ownerType*/, char* /*name*/,
                               unsigned int& /*dataType*/, unsigned int& /*numberOfElements*/,
                               unsigned int& /*unitType*/) override
    {
        return false;
    }

private:
    unsigned int dropped = 0;
};

} // namespace

BRENMARK_PLUGIN_EXPORT unsigned int GETFACTINTERFACEVERSION() { return NApiCore::interfaceVersion(2, 1, 0); }

BRENMARK_PLUGIN_EXPORT NApiFactory::IPluginParticleFactory_2_1* GETFACTORYINSTANCE() { return new CConveyor; }

BRENMARK_PLUGIN_EXPORT void RELEASEFACTORYINSTANCE(NApiFactory::IPluginParticleFactory_2_1* instance)
{
    delete instance;
}
