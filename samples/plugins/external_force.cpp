// An external force of the interface version 2.4.0: wind along x that accelerates particles, by a number that the user
// writes into a file beside the library.
#include <brenmark/plugin/external_force_2_3.h>

#include <cstring>
#include <fstream>

using namespace NBrenmark;

namespace {

class CWind final : public NApiPbf::IPluginExternalForce_2_3
{
public:
    void getPreferenceFileName(char* name) override { std::strncpy(name, "wind.txt", NApiCore::fileNameSize - 1); }
    bool isThreadSafe() override { return true; }
    bool usesCustomProperties() override { return false; }

    // Without the file there is a light wind; a file without a number is the user's mistake.
    bool setup(NApiCore::IApiManager_1_0* /*apiManager*/, const char* preferenceFile, char* errorText) override
    {
        std::ifstream file(preferenceFile);
        if (!file.is_open() || file >> acceleration)
            return true;
        std::strncpy(errorText, "wind.txt holds no number.", NApiCore::errorTextSize - 1);
        return false;
    }
    bool starting(NApiCore::IApiManager_1_0* /*apiManager*/) override { return true; }
    void stopping(NApiCore::IApiManager_1_0* /*apiManager*/) override {}
    void setCustomPropertyData(NApiCore::ICustomPropertyDataApi_1_0* /*simulationData*/,
                               NApiCore::IParticleManagerApi_1_0* /*particles*/,
                               NApiCore::IGeometryManagerApi_1_0* /*geometry*/) override
    {}

    NApiCore::EResult externalForce(double /*timeStep*/, const NApiPbf::SParticle& particle,
                                    NApiPbf::SParticleForces& forces) override
    {
        forces.force[0] += particle.mass * acceleration;
        return NApiCore::eOk;
    }

    unsigned int getNumberOfRequiredProperties(unsigned int /*ownerType*/) override { return 0; }
    bool getDetailsForProperty(unsigned int /*index*/, unsigned int /*ownerType*/, char* /*name*/,
                               unsigned int& /*dataType*/, unsigned int& /*numberOfElements*/,
                               unsigned int& /*unitType*/, double* /*initialValues*/) override
    {
        return false;
    }

private:
    double acceleration = 0.1; // m/s^2
};

} // namespace

BRENMARK_PLUGIN_EXPORT unsigned int GETEFINTERFACEVERSION() { return NApiCore::interfaceVersion(2, 4, 0); }

BRENMARK_PLUGIN_EXPORT NApiPbf::IPluginExternalForce_2_3* GETPBFINSTANCE() { return new CWind; }

BRENMARK_PLUGIN_EXPORT void RELEASEPBFINSTANCE(NApiPbf::IPluginExternalForce_2_3* instance) { delete instance; }
