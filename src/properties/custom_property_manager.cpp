// Definitions in sequence: stored values are found by position. Here too is the payload of their settings block.
#include "properties/custom_property_manager.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/version_history.h"
#include "core/versioned_stream.h"

#include <QIODevice>
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

// ---------------------------------------------------------------- the payload of a settings block

/// A name of one letter, three numbers, and no element.
constexpr qint64 leastPropertyBytes = (4 + 2) + 3 * 4;

bool CCustomPropertyManager::write(CVersionedStream& stream, IProgressController*)
{
    stream << qint32(lastFinalisedPropertyIndex) << qint32(propertyCount());
    for (const std::unique_ptr<CCustomPropertyMetaData>& metaData : properties) {
        stream << QString::fromStdString(metaData->name) << qint32(metaData->dataType)
               << qint32(metaData->numberOfElements) << qint32(metaData->unitsType);
        for (unsigned int element = 0; element < metaData->numberOfElements; ++element) {
            if (metaData->dataType == eBooleanProperty)
                stream << qint32(metaData->initialValue(element) != 0.0);
            else
                stream << metaData->initialValue(element);
        }
    }
    if (stream.status() != QDataStream::Ok)
        return false;
    setModified(false);
    return true;
}

static std::vector<double> readInitialValues(CVersionedStream& stream, unsigned int dataType, unsigned int elements)
{
    double value = 0.0;
    if (stream.fileVersion() < NFileVersion::propertyElements) {
        stream >> value;
        return std::vector<double>(elements, value);
    }
    std::vector<double> values;
    for (unsigned int element = 0; element < elements; ++element) {
        if (dataType == eBooleanProperty) {
            qint32 flag = 0;
            stream >> flag;
            value = flag != 0 ? 1.0 : 0.0;
        }
        else {
            stream >> value;
        }
        values.push_back(value);
    }
    return values;
}

/// One property of the payload, or null with the reason.
static std::unique_ptr<CCustomPropertyMetaData> readProperty(CVersionedStream& stream, QString& reason)
{
    QString name;
    qint32 dataType = 0;
    qint32 elements = 0;
    qint32 unitsType = 0;
    stream >> name >> dataType >> elements >> unitsType;
    if (dataType != eDoubleProperty && dataType != eBooleanProperty) { // how wide are its values?
        reason = QStringLiteral("property \"%1\" is of the unknown data type %2").arg(name.left(80)).arg(dataType);
        return nullptr;
    }
    const unsigned int elementCount =
        std::min(static_cast<unsigned int>(elements), CCustomPropertyMetaData::mostElements);
    const std::vector<double> values = readInitialValues(stream, static_cast<unsigned int>(dataType), elementCount);
    if (stream.status() != QDataStream::Ok) {
        reason = QStringLiteral("the block ends in a property");
        return nullptr;
    }
    return std::make_unique<CCustomPropertyMetaData>(name.toStdString(), static_cast<unsigned int>(dataType),
                                                     elementCount, static_cast<unsigned int>(unitsType), values);
}

bool CCustomPropertyManager::read(CVersionedStream& stream, IProgressController*)
{
    const auto refuse = [this](const QString& reason) {
        // Whoever reads the block reports the loss.
        report(eRemark, NLogTitle::settings, name + " not read: " + reason.toStdString() + ".");
        clear(true);
        return false;
    };

    qint32 lastFinalised = -1;
    qint32 count = 0;
    stream >> lastFinalised >> count;
    if (stream.status() != QDataStream::Ok)
        return refuse("the block ends before the number of properties");
    const qint64 bytesLeft = stream.device() != nullptr ? stream.device()->bytesAvailable() : 0;
    if (count < 0 || count > bytesLeft / leastPropertyBytes)
        return refuse(QStringLiteral("%1 properties announced, %2 bytes follow").arg(count).arg(bytesLeft));

    for (qint32 index = 0; index < count; ++index) {
        QString reason;
        std::unique_ptr<CCustomPropertyMetaData> metaData = readProperty(stream, reason);
        if (metaData == nullptr)
            return refuse(reason);
        if (!addProperty(metaData))
            return refuse(QStringLiteral("the property name \"%1\" %2")
                              .arg(QString::fromStdString(shortened(metaData->name)),
                                   isValidName(metaData->name) ? QStringLiteral("is there twice")
                                                               : QStringLiteral("isn't valid")));
    }

    const int finalisedInSequence = std::clamp<int>(lastFinalised, -1, static_cast<int>(propertyCount()) - 1);
    if (finalisedInSequence != lastFinalised)
        report(eRepaired, NLogTitle::settings,
               name + ": last finalized property " + std::to_string(lastFinalised) + " of " +
                   std::to_string(propertyCount()) + " taken as " + std::to_string(finalisedInSequence) + ".",
               1, name);
    lastFinalisedPropertyIndex = finalisedInSequence;
    setModified(false);
    if (lastFinalisedPropertyIndex != -1)
        notifyChanged(0);
    return true;
}

} // namespace NBrenmark
