#pragma once
// What every host object holds on to: the way to the open deck, which may be another one at the next call, or none.

#include <QtGlobal>

#include <functional>

namespace NBrenmark {

class CCreatorData;
class CSimulation;
class CTimestepData;

namespace NApiCore {

class CHostContext
{
public:
    using Source = std::function<CSimulation*()>;

    explicit CHostContext(Source source) : source(std::move(source)) {}

    /// The simulation if it has data: a deck is open, and a timestep of it is loaded or being loaded. Null otherwise.
    CSimulation* simulation() const;
    /// Of the current timestep; null without data.
    CTimestepData* timestep() const;
    CCreatorData* creator() const;

private:
    Source source;
};

/// The host's side of every interface object, which plug-ins don't see.
class IBaseApi
{
public:
    virtual ~IBaseApi() = default;
    /// \param context     not owned; null is refused
    /// \param identifier  that was asked for, an EApi
    virtual bool init(const CHostContext* context, quint32 identifier) = 0;
};

/// The same of objects that aren't made by their identifier: they are bound by an operation of their own.
class ISubApi
{
public:
    virtual ~ISubApi() = default;
};

/// The base of the host objects: context, identifier, and what follows from them. TApi is the interface's latest
/// version.
template <class TApi, quint32 latestMinor>
class CHostApi : public IBaseApi, public TApi
{
public:
    static constexpr quint32 major = 1;
    static constexpr quint32 minor = latestMinor;

    bool init(const CHostContext* hostContext, quint32 asked) override
    {
        context = hostContext;
        identifier = asked;
        return context != nullptr;
    }
    void getVersion(unsigned int& outMajor, unsigned int& outMinor) const override
    {
        outMajor = major;
        outMinor = minor;
    }
    unsigned int getIdentifier() const override { return identifier; }
    bool isAvailable() const override { return context != nullptr && context->simulation() != nullptr; }

protected:
    const CHostContext* context = nullptr; ///< not owned
    quint32 identifier = 0;
};

} // namespace NApiCore
} // namespace NBrenmark
