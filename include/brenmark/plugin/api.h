#pragma once
// The root of the interfaces by which a plug-in reaches the simulation, and the manager that gives them out. A plug-in
// of generation 2 gets a manager at setup and asks it for what it needs, by identifier and version. It may hold on to
// what it gets until it is stopped or released, and gives it back by releaseApi.
//
// None of these operations throws: what can't be done gives null or false.

namespace NBrenmark::NApiCore {

/// What a request names. An interface answers when the major version is its own and the minor one at most its own.
enum EApi : unsigned int
{
    eApiManager = 0,           ///< IApiManager_1_0
    eFieldManager = 1,         ///< IFieldManagerApi_1_0
    eField = 2,                ///< IFieldApi_1_0, from a field manager alone
    eContactProperties = 4,    ///< ICustomPropertyManagerApi_1_0
    eGeometryProperties = 5,   ///< the same
    eParticleProperties = 6,   ///< the same
    eSimulationProperties = 7, ///< the same
    ePropertyData = 8,         ///< ICustomPropertyDataApi_1_0, from the host alone
    eParticleManager = 9,      ///< IParticleManagerApi_1_0, 1.1 and 1.2
    eGeometryManager = 10,     ///< IGeometryManagerApi_1_0 and 1.1
    eSimulationManager = 11    ///< ISimulationManagerApi_1_0 and 1.1
};

class IApi
{
public:
    virtual ~IApi() = default;
    /// What the host has, which may be later than what was asked for.
    virtual void getVersion(unsigned int& major, unsigned int& minor) const = 0;
    /// An EApi.
    virtual unsigned int getIdentifier() const = 0;
    /// Whether there is something to work on: a deck is open, and a timestep of it is loaded.
    virtual bool isAvailable() const = 0;
};

class IApiManager_1_0 : public IApi
{
public:
    /// A new object of an interface, which the caller gives back by releaseApi; null if the host doesn't have it.
    /// Cast it to the interface asked for: static_cast<IParticleManagerApi_1_0*>(api).
    virtual IApi* getApi(unsigned int identifier, unsigned int major, unsigned int minor) = 0;
    /// Takes an object back. Nothing happens for null and for the manager itself.
    virtual void releaseApi(IApi* api) = 0;
};

} // namespace NBrenmark::NApiCore
