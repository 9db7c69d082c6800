// Definitions in sequence: stored values are found by position.
#include "properties/custom_property_manager.h"

#include "visitors/settings_streams.h"

#include <QtGlobal>

#include <algorithm>
#include <exception>

namespace NBrenmark {

/// Runs body under the one lock of all managers' listeners. No exception may leave a critical
/// section, so that one waits until the section is left.
template <class TBody>
static void underListenerLock(const TBody& body)
{
    std::exception_ptr failure;
#pragma omp critical(brenmarkPropertyListeners)
    {
        try {
            body();
        }
        catch (...) {
            failure = std::current_exception();
        }
    }
    if (failure)
        std::rethrow_exception(failure);
}

CCustomPropertyManager::CCustomPropertyManager(const std::string& name, unsigned int managerType)
    : name(name), managerType(managerType)
{}

CCustomPropertyManager::~CCustomPropertyManager()
{
    // What still listens holds values of definitions that go now.
    Q_ASSERT(listeners.empty());
}

bool CCustomPropertyManager::addProperty(std::unique_ptr<CCustomPropertyMetaData>& metaData)
{
    if (metaData == nullptr || !isValidName(metaData->name) || indexOf(metaData->name) != notFound)
        return false;
    metaData->referenceCount = 0;
    properties.push_back(std::move(metaData));
    setModified(true);
    underListenerLock([this] {
        for (IPropertyListener* listener : listeners)
            listener->propertyAdded(*this);
    });
    return true;
}

bool CCustomPropertyManager::isValidName(const std::string& name)
{
    // By hand: a pattern's classes of letters change with the locale, and files move between hosts.
    const auto isAllowed = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '(' || c == ')' || c == ' ' || c == '-';
    };
    return !name.empty() && std::all_of(name.begin(), name.end(), isAllowed);
}

unsigned int CCustomPropertyManager::indexOf(const std::string& name) const
{
    for (unsigned int index = 0; index < propertyCount(); ++index)
        if (properties[index]->name == name)
            return index;
    return notFound;
}

const CCustomPropertyMetaData* CCustomPropertyManager::property(const std::string& name) const
{
    return property(indexOf(name));
}

const CCustomPropertyMetaData* CCustomPropertyManager::property(unsigned int index) const
{
    return index < propertyCount() ? properties[index].get() : nullptr;
}

unsigned int CCustomPropertyManager::finalizedCount() const
{
    return lastFinalisedPropertyIndex < 0
               ? 0
               : std::min(static_cast<unsigned int>(lastFinalisedPropertyIndex) + 1, propertyCount());
}

void CCustomPropertyManager::addReference(const std::string& name)
{
    const unsigned int index = indexOf(name);
    if (index == notFound)
        return;
    ++properties[index]->referenceCount;
    setModified(true);
}

void CCustomPropertyManager::releaseReference(const std::string& name)
{
    const unsigned int index = indexOf(name);
    if (index == notFound)
        return;
    if (properties[index]->referenceCount > 0)
        --properties[index]->referenceCount;
    setModified(true);
}

void CCustomPropertyManager::addListener(IPropertyListener* listener)
{
    underListenerLock([&] { listeners.insert(listener); });
}

void CCustomPropertyManager::removeListener(IPropertyListener* listener)
{
    underListenerLock([&] {
        if (listeners.count(listener) > 0 && finalizedCount() > 0)
            listener->managerChanged(*this, 0);
        listeners.erase(listener);
    });
}

void CCustomPropertyManager::notifyChanged(int value)
{
    underListenerLock([&] {
        for (IPropertyListener* listener : listeners)
            listener->managerChanged(*this, value);
    });
}

void CCustomPropertyManager::clear(bool notify)
{
    // Back to no finalized property first, so that the listeners drop their values while the
    // definitions of those are still there.
    lastFinalisedPropertyIndex = -1;
    notifyChanged(0);
    properties.clear();
    setModified(notify);
}

bool CCustomPropertyManager::write(CVersionedStream& stream, IProgressController*)
{
    return NSettingsFamily::write(stream, *this);
}

bool CCustomPropertyManager::read(CVersionedStream& stream, IProgressController*)
{
    return NSettingsFamily::read(stream, *this);
}

} // namespace NBrenmark
