// The blocks of custom properties: the definitions of one owner.
#include "core/cause.h"
#include "core/log.h"
#include "core/shortened.h"
#include "core/versioned_stream.h"
#include "io/settings/entry_forms.h"
#include "properties/custom_property_manager.h"
#include "visitors/settings_streams.h"

#include <algorithm>
#include <exception>
#include <memory>

namespace NBrenmark {

/// A name of one letter, three numbers, and no element.
static constexpr qint64 leastPropertyBytes = (4 + 2) + 3 * 4;

namespace {

struct SStoredProperty
{
    QString name;
    qint32 dataType = eDoubleProperty;
    qint32 elements = 0;        // for each item, as stored
    qint32 unitsType = 0;       // code of the quantity, not of a unit
    std::vector<double> values; ///< one for each element

    bool isKnown() const { return dataType == eDoubleProperty || dataType == eBooleanProperty; }
};

} // namespace

static void valueForm(IEntryForm& f, const SStoredProperty& property, double& value)
{
    if (property.dataType != eBooleanProperty) {
        f.f64("value", value);
        return;
    }
    qint32 flag = value != 0.0; // a yes or no takes four bytes, a number eight
    f.i32("value", flag);       // any other number than 0 is a yes
    value = flag != 0 ? 1.0 : 0.0;
}

/// Of a property of an unknown type no values: how wide would they be?
static void propertyForm(IEntryForm& f, SStoredProperty& property)
{
    f.text("name", property.name);
    f.i32("dataType", property.dataType);
    f.i32("elements", property.elements);   // for each particle, contact or triangle; below 0 counts as the most
    f.i32("unitsType", property.unitsType); // code of the quantity, not of a unit
    if (!property.isKnown())
        return;
    const auto elements = std::min(static_cast<unsigned int>(property.elements), CCustomPropertyMetaData::mostElements);
    property.values.resize(elements);
    if (f.since(23, 0, 0)) { // before, one value serves all elements
        for (double& value : property.values)
            valueForm(f, property, value);
        return;
    }
    double ofAll = 0.0;
    f.f64("value", ofAll); // eight bytes of a yes or no as well
    property.values.assign(elements, ofAll);
}

/// One property of the payload, or null with the reason.
static std::unique_ptr<CCustomPropertyMetaData> readProperty(CVersionedStream& stream, QString& reason)
{
    SStoredProperty property;
    try {
        CInEntryForm f(stream);
        propertyForm(f, property);
    }
    catch (const std::exception& error) {
        if (!meansDamage(error))
            throw;
        reason = QStringLiteral("the block ends in a property");
        return nullptr;
    }
    if (!property.isKnown()) {
        reason = QStringLiteral("property \"%1\" is of the unknown data type %2")
                     .arg(property.name.left(80))
                     .arg(property.dataType);
        return nullptr;
    }
    return std::make_unique<CCustomPropertyMetaData>(property.name.toStdString(),
                                                     static_cast<unsigned int>(property.dataType),
                                                     static_cast<unsigned int>(property.values.size()),
                                                     static_cast<unsigned int>(property.unitsType), property.values);
}

bool NSettingsFamily::write(CVersionedStream& stream, CCustomPropertyManager& manager)
{
    stream << qint32(manager.lastFinalisedPropertyIndex) << qint32(manager.propertyCount()); // -1: all are drafts
    COutEntryForm f(stream);
    for (unsigned int index = 0; index < manager.propertyCount(); ++index) {
        const CCustomPropertyMetaData& metaData = *manager.property(index);
        SStoredProperty property{QString::fromStdString(metaData.name),
                                 qint32(metaData.dataType),
                                 qint32(metaData.numberOfElements),
                                 qint32(metaData.unitsType),
                                 {}};
        for (unsigned int element = 0; element < metaData.numberOfElements; ++element)
            property.values.push_back(metaData.initialValue(element));
        propertyForm(f, property);
    }
    if (stream.status() != QDataStream::Ok)
        return false;
    manager.setModified(false);
    return true;
}

bool NSettingsFamily::read(CVersionedStream& stream, CCustomPropertyManager& manager)
{
    const auto refuse = [&manager](const QString& reason) {
        // Whoever reads the block reports the loss.
        report(eRemark, NLogTitle::settings, manager.name + " not read: " + reason.toStdString() + ".");
        manager.clear(true); // half a list would give values to the wrong properties
        return false;
    };

    qint32 lastFinalised = -1; // number of the last property of which decks hold values
    qint32 count = 0;
    stream >> lastFinalised >> count;
    if (stream.status() != QDataStream::Ok)
        return refuse("the block ends before the number of properties");
    const qint64 bytesLeft = stream.bytesLeft();
    if (count < 0 || count > bytesLeft / leastPropertyBytes)
        return refuse(QStringLiteral("%1 properties announced, %2 bytes follow").arg(count).arg(bytesLeft));

    for (qint32 index = 0; index < count; ++index) {
        QString reason;
        std::unique_ptr<CCustomPropertyMetaData> metaData = readProperty(stream, reason);
        if (metaData == nullptr)
            return refuse(reason);
        if (!manager.addProperty(metaData))
            return refuse(QStringLiteral("the property name \"%1\" %2")
                              .arg(QString::fromStdString(shortened(metaData->name)),
                                   CCustomPropertyManager::isValidName(metaData->name)
                                       ? QStringLiteral("is there twice")
                                       : QStringLiteral("isn't valid")));
    }

    const int finalisedInSequence = std::clamp<int>(lastFinalised, -1, static_cast<int>(manager.propertyCount()) - 1);
    if (finalisedInSequence != lastFinalised)
        report(eRepaired, NLogTitle::settings,
               manager.name + ": last finalized property " + std::to_string(lastFinalised) + " of " +
                   std::to_string(manager.propertyCount()) + " taken as " + std::to_string(finalisedInSequence) + ".",
               1, manager.name);
    manager.lastFinalisedPropertyIndex = finalisedInSequence; // a greater one would name values that no property has
    manager.setModified(false);
    if (manager.lastFinalisedPropertyIndex != -1)
        manager.notifyChanged(0);
    return true;
}

} // namespace NBrenmark
