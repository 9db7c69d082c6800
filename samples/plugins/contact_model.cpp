// A contact model of the interface version 2.5.0: liquid between two particles pulls them together with a constant
// force while they touch. It remembers the longest overlap of each contact.
#include <brenmark/plugin/contact_model_2_4.h>

#include <cmath>
#include <cstring>

using namespace NBrenmark;

namespace {

constexpr double surfaceTension = 0.072; // N/m, of water
constexpr double pi = 3.14159265358979323846;
constexpr const char* longestOverlap = "Longest Overlap"; // letters, blanks, hyphens and round brackets alone

class CLiquidBridge final : public NApiCm::IPluginContactModel_2_4
{
public:
    // No file of preferences.
    void getPreferenceFileName(char* /*name*/) override {}
    // Nothing is kept between calls.
    bool isThreadSafe() override { return true; }
    bool usesCustomProperties() override { return true; }

    bool setup(NApiCore::IApiManager_1_0* /*apiManager*/, const char* /*preferenceFile*/, char* /*errorText*/) override
    {
        return true;
    }
    bool starting(NApiCore::IApiManager_1_0* /*apiManager*/, unsigned int /*threadCount*/) override { return true; }
    void stopping(NApiCore::IApiManager_1_0* /*apiManager*/) override {}
    void setCustomPropertyData(NApiCore::ICustomPropertyDataApi_1_0* /*simulationData*/,
                               NApiCore::IParticleManagerApi_1_0* /*particles*/,
                               NApiCore::IGeometryManagerApi_1_0* /*geometry*/) override
    {}

    NApiCore::EResult calculateForce(double /*time*/, double /*timeStep*/, NApiCm::SContact& contact,
                                     NApiCm::SContactForces& forces) override
    {
        if (contact.normalOverlap <= 0.0)
            return NApiCore::eOk;
        // From the first element towards the second, 2 pi gamma R.
        double direction[3], length = 0.0;
        for (int i = 0; i < 3; ++i) {
            direction[i] = contact.second.position[i] - contact.first.position[i];
            length += direction[i] * direction[i];
        }
        length = std::sqrt(length);
        if (length == 0.0)
            return NApiCore::eRecoverable; // two particles in one place
        const double force = 2.0 * pi * surfaceTension * contact.first.physicalRadius;
        for (int i = 0; i < 3; ++i)
            forces.normalForce[i] += force * direction[i] / length;

        if (contact.properties != nullptr) {
            const double* const before = contact.properties->getValue(longestOverlap);
            double* const change = contact.properties->getStagedValue(longestOverlap);
            if (before != nullptr && change != nullptr && *before < contact.normalOverlap)
                *change += contact.normalOverlap - *before;
        }
        return NApiCore::eOk;
    }

    unsigned int getNumberOfRequiredProperties(unsigned int ownerType) override
    {
        return ownerType == NApiCore::eContacts ? 1 : 0;
    }
    bool getDetailsForProperty(unsigned int index, unsigned int ownerType, char* name, unsigned int& dataType,
                               unsigned int& numberOfElements, unsigned int& unitType, double* initialValues) override
    {
        if (ownerType != NApiCore::eContacts || index > 0)
            return false;
        std::strncpy(name, longestOverlap, NApiCore::propertyNameSize - 1);
        dataType = NApiCore::eDouble;
        numberOfElements = 1;
        unitType = NApiCore::eLength;
        initialValues[0] = 0.0;
        return true;
    }
};

} // namespace

BRENMARK_PLUGIN_EXPORT unsigned int GETCMINTERFACEVERSION() { return NApiCore::interfaceVersion(2, 5, 0); }

BRENMARK_PLUGIN_EXPORT NApiCm::IPluginContactModel_2_4* GETCMINSTANCE() { return new CLiquidBridge; }

BRENMARK_PLUGIN_EXPORT void RELEASECMINSTANCE(NApiCm::IPluginContactModel_2_4* instance) { delete instance; }
